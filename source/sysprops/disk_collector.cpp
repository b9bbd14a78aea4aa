#include <cstdint>
#include <cstdio>

#include "platform/platform.h"
#include "support/boundary.h"
#include "sysprops/rounding.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

constexpr double bytes_per_megabyte = 1048576.0;

// Megabytes with two decimals behind a point, whatever locale the process has chosen: the report's
// readers know no other.
std::wstring megabytes_text(double megabytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%0.2f", megabytes);
    std::string digits = text;
    const size_t point = digits.find_first_not_of("-0123456789");
    digits.replace(point, digits.size() - 2 - point, ".");
    return std::wstring(digits.begin(), digits.end());
}

}  // namespace

bool ISysProps::GetDiskInformation(DiskInformation& info) {
    return support::or_failure(false, [&] {
        double total_sum = 0;
        double free_sum = 0;
        int32_t counted = 0;
        for (const platform::MountedFileSystem& mounted : platform::mounted_file_systems()) {
            if (!mounted.local || mounted.block_size == 0 || mounted.blocks == 0) {
                continue;
            }
            const double blocks_per_megabyte = bytes_per_megabyte / mounted.block_size;
            const double total = mounted.blocks / blocks_per_megabyte;
            const double free = mounted.free_blocks / blocks_per_megabyte;
            total_sum += total;
            free_sum += free;
            info.mapFileSystems.emplace(
                sysprops_ansi_to_wide(mounted.mount_point),
                std::pair(megabytes_text(total), megabytes_text(coarsened(free, total))));
            ++counted;
        }
        info.wstrNumFileSystems = std::to_wstring(counted);
        info.wstrTotalDiskSpace = megabytes_text(total_sum);
        info.wstrFreeDiskSpace = megabytes_text(coarsened(free_sum, total_sum));
        return true;
    });
}

}  // namespace velora_com::qel::sysprops
