// The part of copy_contents that every system has.
#pragma once

namespace velora_com::qel::platform {

// Copies from the current position of `source` to its end to the current position of `destination`,
// a block at a time. False with errno set when a read or write fails.
bool copy_by_blocks(int source, int destination);

}  // namespace velora_com::qel::platform
