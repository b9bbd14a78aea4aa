#include "platform/platform.h"

namespace velora_com::qel::platform {

const char* native_wide_encoding() {
    return "WCHAR_T";
}

}  // namespace velora_com::qel::platform
