#include <cerrno>

#include "vlrcomn/handle.h"

uint32_t oruGetLastError(void) {
    switch (errno) {
        case 0:
            return ORU_ERROR_SUCCESS;
        case ENOENT:
        case EIO:
        case ENXIO:
        case ENOLCK:
            return ORU_ERROR_HANDLE_EOF;
        case ESRCH:
        case EINTR:
        case EBADF:
        case ENODEV:
            return ORU_ERROR_MOD_NOT_FOUND;
        case E2BIG:
        case ENOMEM:
        case ENFILE:
        case EMFILE:
        case EFBIG:
        case ENOSPC:
        case EMLINK:
            return ORU_ERROR_NO_MORE_ITEMS;
        case EDEADLK:
        case EBUSY:
        case ETXTBSY:
        case EAGAIN:
            return ORU_ERROR_IO_PENDING;
        case EACCES:
            return ORU_ERROR_ACCESS_DENIED;
        case EINVAL:
        case ENOTTY:
            return ORU_ERROR_BADKEY;
        case EROFS:
            return ORU_ERROR_WRITE_PROTECT;
        default:
            return ORU_ERROR_GENERAL;
    }
}
