// File-system sizes in the 31 bits that the collectors count in.
#pragma once

#include <cstdint>

#include "platform/platform.h"

namespace velora_com::qel::platform {

// Sets the block size and the counts of `file_system`. Counts that do not fit are expressed in larger
// blocks, up to 1 MiB, and cut at the end of their range from there (2 PiB) on. A count of blocks with all
// bits set stands for "unknown": nothing is set then.
void set_block_counts(MountedFileSystem& file_system, uint64_t block_size, uint64_t blocks,
                      uint64_t free_blocks);

}  // namespace velora_com::qel::platform
