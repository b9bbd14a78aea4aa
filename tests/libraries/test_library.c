/* A library to be loaded by the tests, which tells the test program of its calls. */
#include <stdio.h>

#include "vlrcomn/dynamic_library.h"

int DllMain(void* module, uint32_t reason, void* reserved);
int loadString(void* module, uint32_t id, void* buffer, int size);

/* Defined by the test program; the constructor and the destructor name no module. */
__attribute__((weak)) int library_called(void* module, uint32_t reason, void* reserved);
int DllMain(void* module, uint32_t reason, void* reserved) {
    return library_called(module, reason, reserved);
}

__attribute__((constructor)) static void constructed(void) {
    library_called(NULL, ORU_PROCESS_ATTACH, NULL);
}

__attribute__((destructor)) static void destroyed(void) {
    library_called(NULL, ORU_PROCESS_DETACH, NULL);
}

int loadString(void* module, uint32_t id, void* buffer, int size) {
    return snprintf((char*)buffer, (size_t)size, "%s %u", module != NULL ? "text" : "",
                    (unsigned)id);
}
