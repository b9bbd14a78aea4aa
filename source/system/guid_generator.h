// The state from which time-based GUIDs are made.
#pragma once

#include <sys/time.h>

#include <array>
#include <cstdint>

#include "vlrcomn/guid.h"

namespace velora_com::qel::system {

// Makes version 1 GUIDs after RFC 4122, sections 4.2 and 4.5. Not locked: the owner serialises calls.
// Clock and random numbers come from outside, so that tests can script them.
class GuidGenerator {
public:
    using Clock = timeval (*)();
    using Random = int (*)();

    constexpr GuidGenerator(Clock clock, Random random) noexcept : clock_(clock), random_(random) {}

    // False until the first GUID.
    bool started() const noexcept { return started_; }

    GUID make() noexcept;

private:
    void start() noexcept;
    void advance() noexcept;

    Clock clock_;
    Random random_;
    timeval last_ = {};       // the reading that the last GUID was made from
    int32_t adjustment_ = 0;  // GUIDs made from that reading before
    uint16_t sequence_ = 0;   // tells apart the times before and after the clock went back
    bool started_ = false;
    std::array<uint8_t, 6> node_ = {};
};

}  // namespace velora_com::qel::system
