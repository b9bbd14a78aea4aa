// Cache lines that a contender shares with nothing else, so that threads meet only where the workload says so.
#pragma once

// Two lines: processors fetch a line's neighbour with it.
template <typename Contender>
struct alignas(128) OwnLines : Contender {
    using Contender::Contender;
};
