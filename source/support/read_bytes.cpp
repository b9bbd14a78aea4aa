#include "support/read_bytes.h"

#include <unistd.h>

#include <algorithm>

#include "support/interrupted.h"

namespace velora_com::qel::support {

bool read_bytes(int descriptor, std::string& bytes, size_t most) {
    char block[4096];
    while (bytes.size() < most) {
        const size_t wanted = std::min(sizeof block, most - bytes.size());
        const ssize_t received =
            retry_interrupted([&] { return ::read(descriptor, block, wanted); });
        if (received <= 0) {
            return received == 0;
        }
        bytes.append(block, static_cast<size_t>(received));
    }
    return true;
}

}  // namespace velora_com::qel::support
