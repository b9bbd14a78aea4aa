#include "vlrcomn/types.h"

/* What the entry point fills in; a test sets it through the loader. */
VLRCOMN_API uint16_t plugin_version[4] = {1, 2, 3, 4};

#ifndef PLUGIN_SILENT
VLRCOMN_API int SVPLUGIN_GetVersion(uint16_t* first, uint16_t* second, uint16_t* third,
                                    uint16_t* fourth);

int SVPLUGIN_GetVersion(uint16_t* first, uint16_t* second, uint16_t* third, uint16_t* fourth) {
    *first = plugin_version[0];
    *second = plugin_version[1];
    *third = plugin_version[2];
    *fourth = plugin_version[3];
#ifdef PLUGIN_FAILING
    return -1;
#else
    return 0;
#endif
}
#endif
