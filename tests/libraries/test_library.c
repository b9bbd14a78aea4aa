/* A library to be loaded by the tests, which tells the test program of its calls. The kinds are chosen by
 * definitions of the build. */
#include <stddef.h>
#include <stdio.h>

#include "vlrcomn/dynamic_library.h"

#ifndef ANSWER
#define ANSWER 1
#endif

int in_every_library(void);
int DllMain(void* module, uint32_t reason, void* reserved);
int loadString(void* module, uint32_t id, void* buffer, int size);

/* Defined by the test program. */
__attribute__((weak)) void library_entered(void* module, uint32_t reason, void* reserved);
__attribute__((weak)) void library_constructed(uint32_t reason);

int in_every_library(void) {
    return 42;
}

#ifdef __ELF__
__asm__(".globl symbol_without_address\nsymbol_without_address = 0\n");
#endif

#ifdef WITH_ENTRY_POINT
int DllMain(void* module, uint32_t reason, void* reserved) {
    if (library_entered != NULL) {
        library_entered(module, reason, reserved);
    }
    return ANSWER;
}
#endif

#ifdef WITH_CONSTRUCTOR
__attribute__((constructor)) static void constructed(void) {
    if (library_constructed != NULL) {
        library_constructed(ORU_PROCESS_ATTACH);
    }
}

__attribute__((destructor)) static void destroyed(void) {
    if (library_constructed != NULL) {
        library_constructed(ORU_PROCESS_DETACH);
    }
}
#endif

#ifdef WITH_STRINGS
int loadString(void* module, uint32_t id, void* buffer, int size) {
    return snprintf((char*)buffer, (size_t)size, "%s %u", module != NULL ? "text" : "",
                    (unsigned)id);
}
#endif
