#include <sys/statvfs.h>

#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<AvailableSpace> available_space(const char* path) {
    struct statvfs answer;
    if (statvfs(path, &answer) != 0) {
        return std::nullopt;
    }
    return AvailableSpace{answer.f_bavail, answer.f_frsize};
}

}  // namespace velora_com::qel::platform
