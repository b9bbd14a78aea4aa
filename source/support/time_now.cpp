#include "support/time_now.h"

#include "support/owners.h"

namespace velora_com::qel::support {

namespace {

// localtime_r may open a zone file, which a cancelled thread would leave open.
std::optional<std::tm> now(decltype(&localtime_r) break_down) {
    const CancellationOff no_cancellation;
    const time_t seconds = std::time(nullptr);
    std::tm time = {};
    if (break_down(&seconds, &time) == nullptr) {
        return std::nullopt;
    }
    return time;
}

}  // namespace

std::optional<std::tm> gmt_now() {
    return now(gmtime_r);
}

std::optional<std::tm> local_time_now() {
    return now(localtime_r);
}

}  // namespace velora_com::qel::support
