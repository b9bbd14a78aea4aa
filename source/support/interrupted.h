// Repeats a system call that a signal interrupted.
#pragma once

#include <cerrno>

namespace velora_com::qel::support {

template <typename Call>
auto retry_interrupted(Call call) -> decltype(call()) {
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR) {
            return result;
        }
    }
}

}  // namespace velora_com::qel::support
