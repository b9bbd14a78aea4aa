#include "platform/platform.h"

namespace velora_com::qel::platform {

const char* native_wide_encoding() {
    return "UCS-4-INTERNAL";
}

}  // namespace velora_com::qel::platform
