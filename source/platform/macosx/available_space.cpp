#include <sys/param.h>
// After sys/param.h, as older systems need it.
#include <sys/mount.h>

#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<AvailableSpace> available_space(const char* path) {
    struct statfs answer;
    if (statfs(path, &answer) != 0) {
        return std::nullopt;
    }
    return AvailableSpace{static_cast<uint64_t>(answer.f_bavail),
                          static_cast<uint64_t>(answer.f_bsize)};
}

}  // namespace velora_com::qel::platform
