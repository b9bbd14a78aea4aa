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
