// The home system's paths, asked for on every system: elsewhere the files are normally not there.
#include "platform/platform.h"

namespace velora_com::qel::platform {

const char* system_version_file() {
    return "/System/Library/CoreServices/SystemVersion.plist";
}
const char* server_version_file() {
    return "/System/Library/CoreServices/ServerVersion.plist";
}

}  // namespace velora_com::qel::platform
