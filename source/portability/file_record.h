// The file behind a handle.
#pragma once

#include "portability/handle_object.h"

namespace velora_com::qel::portability {

// Null for a handle that is no file.
inline FileRecord* file_of(oruHandle handle) noexcept {
    return is_kind(handle, ORU_KIND_FILE) ? static_cast<FileRecord*>(handle->pData) : nullptr;
}

}  // namespace velora_com::qel::portability
