#include "platform/platform.h"
#include "platform/posix/copy_by_blocks.h"

namespace velora_com::qel::platform {

// The home system has no call that copies between two descriptors.
bool copy_contents(int source, int destination) {
    return copy_by_blocks(source, destination);
}

}  // namespace velora_com::qel::platform
