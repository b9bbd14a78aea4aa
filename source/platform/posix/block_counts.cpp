#include "platform/posix/block_counts.h"

#include <algorithm>
#include <limits>

namespace velora_com::qel::platform {

namespace {

// What a file system says that cannot count its blocks.
constexpr uint64_t unknown_count = std::numeric_limits<uint64_t>::max();

}  // namespace

void set_block_counts(MountedFileSystem& file_system, uint64_t block_size, uint64_t blocks,
                      uint64_t free_blocks) {
    if (blocks == unknown_count) {
        return;
    }
    constexpr uint64_t most = std::numeric_limits<int32_t>::max();
    constexpr uint64_t largest_block = uint64_t{1} << 20;
    while (std::max(blocks, free_blocks) > most && block_size <= largest_block / 2) {
        block_size *= 2;
        blocks /= 2;
        free_blocks /= 2;
    }
    file_system.block_size = static_cast<int32_t>(std::min(block_size, most));
    file_system.blocks = static_cast<int32_t>(std::min(blocks, most));
    file_system.free_blocks = static_cast<int32_t>(std::min(free_blocks, most));
}

}  // namespace velora_com::qel::platform
