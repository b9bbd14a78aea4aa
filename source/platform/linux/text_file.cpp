#include "platform/linux/text_file.h"

#include <fcntl.h>
#include <unistd.h>

#include "support/interrupted.h"
#include "support/owners.h"

namespace velora_com::qel::platform {

using support::retry_interrupted;

std::optional<std::string> read_text_file(const char* path) {
    const support::CancellationOff no_cancellation;
    const support::FileDescriptor file(
        retry_interrupted([&] { return ::open(path, O_RDONLY | O_CLOEXEC); }));
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    char block[4096];
    for (;;) {
        const ssize_t received =
            retry_interrupted([&] { return ::read(file.get(), block, sizeof block); });
        if (received < 0) {
            return std::nullopt;
        }
        if (received == 0) {
            return text;
        }
        text.append(block, static_cast<size_t>(received));
    }
}

}  // namespace velora_com::qel::platform
