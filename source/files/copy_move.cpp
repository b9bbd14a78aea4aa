#include <cerrno>
#include <cstdio>

#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"

int oruCopyFile(const char* existing_name, const char* new_name, int fail_if_exists) {
    return orumcomn_copy_file(existing_name, new_name, fail_if_exists == 1 ? 0 : 1) ? 1 : 0;
}

int oruMoveFile(const char* existing_name, const char* new_name) {
    if (existing_name == nullptr || new_name == nullptr) {
        errno = EINVAL;
        return 0;
    }
    return std::rename(existing_name, new_name) == 0 ? 1 : 0;
}
