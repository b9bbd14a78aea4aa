// Calls of Win32 that have no counterpart here, each with its fixed answer.
#include "vlrcomn/file.h"

int oruSetFileAttributes(const char*, uint32_t) {
    return 1;
}

int oruGetFileVersionInfo(const char*, uint32_t, uint32_t, void*) {
    return 0;
}

int oruVerQueryValue(const void*, const char*, void**, uint32_t*) {
    return 0;
}
