#include <memory>
#include <new>

#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"

uint32_t orCreateFile(const char* name, uint32_t access, uint32_t share_mode, uint32_t disposition,
                      uint32_t flags, orFile** file) {
    if (file == nullptr) {
        return ORU_FAILURE;
    }
    *file = nullptr;
    std::unique_ptr<orFile> object(new (std::nothrow) orFile{});
    std::unique_ptr<orFileOperations> operations(new (std::nothrow) orFileOperations{});
    if (!object || !operations) {
        return ORU_FAILURE;
    }
    object->handle =
        oruCreateFileAW(name, access, share_mode, nullptr, disposition, flags, nullptr);
    if (object->handle == nullptr) {
        return ORU_FAILURE;
    }
    *operations = {orCloseFile, orReadFile, orWriteFile, orGetFileSize};
    object->operations = operations.release();
    *file = object.release();
    return ORU_SUCCESS;
}

uint32_t orReadFile(orFile* file, void* buffer, uint32_t count, uint32_t* bytes_read) {
    const bool read = file != nullptr &&
                      oruReadFile(file->handle, buffer, count, bytes_read, nullptr) == 1 &&
                      *bytes_read > 0;
    return read ? ORU_SUCCESS : ORU_FAILURE;
}

uint32_t orWriteFile(orFile* file, const void* buffer, uint32_t count, uint32_t* bytes_written) {
    const bool written =
        file != nullptr && oruWriteFile(file->handle, buffer, count, bytes_written, nullptr) == 1;
    return written ? ORU_SUCCESS : ORU_FAILURE;
}

uint32_t orGetFileSize(orFile* file, uint32_t* size) {
    if (file == nullptr || size == nullptr) {
        return ORU_FAILURE;
    }
    *size = oruGetFileSize(file->handle, nullptr);
    return *size != ORU_INVALID_SIZE ? ORU_SUCCESS : ORU_FAILURE;
}

uint32_t orCloseFile(orFile* file) {
    if (file == nullptr) {
        return ORU_SUCCESS;
    }
    const std::unique_ptr<orFile> object(file);
    const std::unique_ptr<orFileOperations> operations(file->operations);
    return oruCloseHandle(file->handle) == 1 ? ORU_SUCCESS : ORU_FAILURE;
}
