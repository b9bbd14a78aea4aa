#include <sys/types.h>
// After sys/types.h, as older systems need it.
#include <sys/sysctl.h>
#include <unistd.h>

#include "platform/platform.h"

namespace velora_com::qel::platform {

namespace {

constexpr size_t stated_length = 2048;

}  // namespace

std::optional<std::string> nis_domain() {
    // Twice the length that is stated: the text always ends inside.
    char name[2 * stated_length] = {};
    int path[] = {CTL_KERN, KERN_NISDOMAINNAME};
    size_t size = stated_length;
    if (sysctl(path, 2, name, &size, nullptr, 0) == -1) {
        return std::nullopt;
    }
    return std::string(name);
}

std::optional<std::string> domain_name() {
    char name[stated_length + 1] = {};
    if (getdomainname(name, stated_length) == -1) {
        return std::nullopt;
    }
    return std::string(name);
}

}  // namespace velora_com::qel::platform
