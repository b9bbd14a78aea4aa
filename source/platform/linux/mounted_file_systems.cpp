#include "platform/linux/mount_table.h"
#include "platform/linux/text_file.h"
#include "support/owners.h"

namespace velora_com::qel::platform {

std::vector<MountedFileSystem> mounted_file_systems() {
    const support::CancellationOff no_cancellation;
    const auto text = read_text_file("/proc/self/mountinfo");
    return text ? file_systems_of(parse_mount_table(*text), statvfs)
                : std::vector<MountedFileSystem>();
}

}  // namespace velora_com::qel::platform
