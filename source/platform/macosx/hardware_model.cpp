#include <sys/types.h>
// After sys/types.h, as older systems need it.
#include <sys/sysctl.h>

#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<std::string> hardware_model() {
    char model[256] = {};
    size_t size = sizeof model;
    if (sysctlbyname("hw.model", model, &size, nullptr, 0) != 0) {
        return std::nullopt;
    }
    model[sizeof model - 1] = '\0';
    return std::string(model);
}

}  // namespace velora_com::qel::platform
