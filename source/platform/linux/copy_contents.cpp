#include <unistd.h>

#include <cerrno>

#include "platform/platform.h"
#include "platform/posix/copy_by_blocks.h"

namespace velora_com::qel::platform {

// The kernel copies as much as it can. It answers 0 at the end, but also at once for files without a
// stated size; it refuses some pairs of file systems and appending destinations. Plain reading and
// writing carries on from there, and meets a true fault again.
bool copy_contents(int source, int destination) {
    constexpr size_t most = size_t{1} << 30;
    bool copied_something = false;
    ssize_t copied;
    do {
        copied = copy_file_range(source, nullptr, destination, nullptr, most, 0);
        copied_something |= copied > 0;
    } while (copied > 0 || (copied < 0 && errno == EINTR));
    return (copied == 0 && copied_something) || copy_by_blocks(source, destination);
}

}  // namespace velora_com::qel::platform
