#include "platform/linux/text_file.h"

#include <fcntl.h>

#include "support/interrupted.h"
#include "support/owners.h"
#include "support/read_bytes.h"

namespace velora_com::qel::platform {

std::optional<std::string> read_text_file(const char* path) {
    const support::CancellationOff no_cancellation;
    const support::FileDescriptor file(
        support::retry_interrupted([&] { return ::open(path, O_RDONLY | O_CLOEXEC); }));
    if (!file) {
        return std::nullopt;
    }
    std::string text;
    if (!support::read_bytes(file.get(), text, text.max_size())) {
        return std::nullopt;
    }
    return text;
}

}  // namespace velora_com::qel::platform
