#include <stdint.h>
#include <stdlib.h>

#ifdef PLUGIN_GOOD
__attribute__((visibility("default"))) int SVPLUGIN_GetVersion(uint16_t* major, uint16_t* minor,
                                                               uint16_t* third, uint16_t* fourth) {
    *major = 0xfffe;
    *minor = 2;
    *third = 30;
    *fourth = 65535;
    return getenv("PLUGIN_FAILS") != NULL ? -1 : 0;
}
#endif
