#include <sys/param.h>
// After sys/param.h, as older systems need it.
#include <sys/mount.h>

#include <algorithm>
#include <iterator>

#include "platform/platform.h"
#include "platform/posix/block_counts.h"

namespace velora_com::qel::platform {

std::vector<MountedFileSystem> mounted_file_systems() {
    const int count = getfsstat(nullptr, 0, MNT_WAIT);
    if (count <= 0) {
        return {};
    }
    std::vector<struct statfs> records(static_cast<size_t>(count));
    const int filled = getfsstat(
        records.data(), static_cast<int>(records.size() * sizeof(struct statfs)), MNT_WAIT);
    // What is mounted between the two calls is left out; what goes away is not there to be read.
    records.resize(static_cast<size_t>(std::clamp(filled, 0, count)));

    std::vector<MountedFileSystem> result;
    for (const struct statfs& record : records) {
        const auto* const name_end =
            std::find(std::begin(record.f_mntonname), std::end(record.f_mntonname), '\0');
        MountedFileSystem file_system{{std::begin(record.f_mntonname), name_end}, 0, 0, 0, false};
        if ((record.f_flags & MNT_LOCAL) != 0) {
            file_system.local = true;
            set_block_counts(file_system, static_cast<uint64_t>(record.f_bsize),
                             static_cast<uint64_t>(record.f_blocks),
                             static_cast<uint64_t>(record.f_bfree));
        }
        result.push_back(std::move(file_system));
    }
    return result;
}

}  // namespace velora_com::qel::platform
