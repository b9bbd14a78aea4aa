#include "platform/posix/copy_by_blocks.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>

#include "support/interrupted.h"

namespace velora_com::qel::platform {

namespace {

using support::retry_interrupted;

// Large enough that the calls cost little beside the copying, small enough for the processor's
// caches.
constexpr size_t block_bytes = size_t{64} * 1024;

bool write_all(int destination, const char* bytes, size_t count) {
    while (count > 0) {
        const ssize_t written =
            retry_interrupted([&] { return ::write(destination, bytes, count); });
        if (written < 0) {
            return false;
        }
        if (written == 0) {
            errno = EIO;  // a device that takes nothing would hold the loop for ever
            return false;
        }
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return true;
}

}  // namespace

bool copy_by_blocks(int source, int destination) {
    char block[block_bytes];
    for (;;) {
        const ssize_t received =
            retry_interrupted([&] { return ::read(source, block, sizeof block); });
        if (received <= 0) {
            return received == 0;
        }
        if (!write_all(destination, block, static_cast<size_t>(received))) {
            return false;
        }
    }
}

}  // namespace velora_com::qel::platform
