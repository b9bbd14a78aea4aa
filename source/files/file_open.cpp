#include <fcntl.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <optional>

#include "support/open_file.h"
#include "sync/error_word.h"
#include "sync/file_record.h"
#include "sync/handle_object.h"
#include "vlrcomn/file.h"

using namespace velora_com::qel::sync;
namespace support = velora_com::qel::support;

namespace {

std::optional<int> access_flags(uint32_t access) {
    switch (access) {
        case ORU_ACCESS_READ:
            return O_RDONLY;
        case ORU_ACCESS_WRITE:
            return O_WRONLY;
        case ORU_ACCESS_READ_WRITE:
            return O_RDWR;
        default:
            return std::nullopt;
    }
}

std::optional<int> creation_flags(uint32_t disposition) {
    switch (disposition) {
        case ORU_CREATE_NEW:
            return O_CREAT | O_EXCL;
        case ORU_CREATE_ALWAYS:
            return O_CREAT | O_TRUNC;
        case ORU_OPEN_EXISTING:
            return 0;
        case ORU_OPEN_ALWAYS:
            return O_CREAT;
        default:
            return std::nullopt;
    }
}

// Whether closing is to delete the file.
std::optional<bool> delete_on_close(uint32_t flags) {
    switch (flags) {
        case 0:
        case ORU_ATTRIBUTE_NORMAL:
            return false;
        case ORU_DELETE_ON_CLOSE:
            return true;
        default:
            return std::nullopt;
    }
}

}  // namespace

oruHandle oruCreateFileAW(const char* name, uint32_t access, uint32_t, void*, uint32_t disposition,
                          uint32_t flags, oruHandle) {
    const auto access_mode = access_flags(access);
    const auto creation = creation_flags(disposition);
    const auto temporary = delete_on_close(flags);
    if (name == nullptr || !access_mode || !creation || !temporary) {
        note_error(EINVAL);
        return nullptr;
    }
    const size_t length = std::strlen(name);
    if (*temporary && length >= sizeof FileRecord::path) {
        note_error(EINVAL);  // closing would delete what bears the beginning of the name
        return nullptr;
    }
    support::FileDescriptor descriptor = support::open_file(name, *access_mode | *creation, 0660);
    if (!descriptor) {
        return nullptr;
    }
    std::unique_ptr<FileRecord> file(new (std::nothrow) FileRecord{});
    if (!file) {
        note_error(ENOMEM);
        return nullptr;
    }
    HandleRecordOwner handle = make_handle_record(ORU_KIND_FILE);
    if (!handle) {
        return nullptr;
    }
    std::memcpy(file->path, name, std::min(length, sizeof file->path));
    file->delete_on_close = *temporary ? 1 : 0;
    file->descriptor = descriptor.release();
    handle->pData = file.release();
    return handle.release();
}
