#include <mntent.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <memory>
#include <set>

#include "platform/linux/mount_table.h"
#include "platform/platform.h"
#include "platform/posix/block_counts.h"
#include "support/owners.h"

namespace velora_com::qel::platform {

std::vector<MountedFileSystem> mounted_file_systems() {
    const support::CancellationOff no_cancellation;
    using MountTable = std::unique_ptr<FILE, support::Releaser<&::endmntent>>;
    const MountTable file(setmntent("/proc/self/mounts", "re"));
    if (!file) {
        return {};
    }
    const std::vector<MountEntry> table = read_mount_table(file.get());
    std::vector<MountedFileSystem> result;
    std::set<dev_t> devices;
    for (const MountEntry& entry : table) {
        MountedFileSystem file_system{entry.mount_point, 0, 0, 0, true};
        if (may_wait(entry.type) || lies_in_waiting_mount(table, entry.mount_point)) {
            file_system.local = false;
            result.push_back(file_system);
            continue;
        }
        // A second mount of the same file system, or one hidden by a later mount, adds no space.
        struct stat root;
        if (stat(entry.mount_point.c_str(), &root) != 0 || !devices.insert(root.st_dev).second) {
            continue;
        }
        struct statvfs answer;
        if (statvfs(entry.mount_point.c_str(), &answer) == 0) {
            set_block_counts(file_system, answer.f_frsize, answer.f_blocks, answer.f_bfree);
            result.push_back(file_system);
        }
    }
    return result;
}

}  // namespace velora_com::qel::platform
