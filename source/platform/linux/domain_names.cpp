#include <unistd.h>

#include <cstring>

#include "platform/platform.h"

namespace velora_com::qel::platform {

// Linux keeps one domain name for both questions and says "(none)" while it is unset.
std::optional<std::string> domain_name() {
    char name[256] = {};
    if (getdomainname(name, sizeof name - 1) != 0) {
        return std::nullopt;
    }
    return std::strcmp(name, "(none)") == 0 ? std::string() : std::string(name);
}

std::optional<std::string> nis_domain() {
    return domain_name();
}

}  // namespace velora_com::qel::platform
