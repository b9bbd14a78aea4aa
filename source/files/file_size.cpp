#include <sys/stat.h>

#include "vlrcomn/file_system.h"

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
