// A value of fixed size from the kernel's two-level names.
#pragma once

#include <sys/types.h>
// After sys/types.h, as older systems need it.
#include <sys/sysctl.h>

#include <cstddef>
#include <optional>

namespace velora_com::qel::platform {

// Nothing when the kernel refuses or its value has another size.
template <typename Value>
std::optional<Value> sysctl_value(int group, int name) {
    int path[] = {group, name};
    Value value{};
    size_t size = sizeof value;
    if (sysctl(path, 2, &value, &size, nullptr, 0) != 0 || size != sizeof value) {
        return std::nullopt;
    }
    return value;
}

}  // namespace velora_com::qel::platform
