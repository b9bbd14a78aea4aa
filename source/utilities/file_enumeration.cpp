#include <sys/stat.h>

#include "vlrcomn/file_system.h"

intptr_t orumcomn_findfirstA(const char* pattern, oruFindData* data) {
    const intptr_t search = oruFindFirstDirEnt(pattern, data);
    return search != ORU_INVALID_SEARCH ? search : 0;
}

bool orumcomn_findnextA(intptr_t enumeration, oruFindData* data) {
    return oruFindNextDirEnt(enumeration, data) == 1;
}

int orumcomn_findclose(intptr_t enumeration) {
    return oruFindCloseDirEnt(enumeration);
}

uint32_t orumcomn_get_file_sizeA(const char* path, uint32_t* size) {
    if (size == nullptr) {
        return ORU_FAILURE;
    }
    *size = 0;
    struct stat status;
    if (path == nullptr || ::stat(path, &status) != 0) {
        return ORU_FAILURE;
    }
    *size = static_cast<uint32_t>(status.st_size);
    return ORU_SUCCESS;
}
