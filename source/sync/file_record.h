// The file behind a handle. It stands here rather than with the files, since closing a handle frees it.
#pragma once

#include <cstdint>

#include "support/fixed_text.h"
#include "sync/handle_object.h"

namespace velora_com::qel::sync {

struct FileRecord {
    int32_t descriptor;
    int32_t delete_on_close;  // 1 removes `path` when the handle is closed
    int32_t end_of_file;      // 1 after a read that returned no bytes
    // As opened; without a terminator when the name is too long.
    char path[support::fixed_text_size];
};

// Null for a handle that is no file.
inline FileRecord* file_of(oruHandle handle) noexcept {
    return is_kind(handle, ORU_KIND_FILE) ? static_cast<FileRecord*>(handle->pData) : nullptr;
}

}  // namespace velora_com::qel::sync
