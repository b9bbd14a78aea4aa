#include "system/guid_generator.h"

#include <algorithm>
#include <tuple>

namespace velora_com::qel::system {

static_assert(sizeof(GUID) == 16, "the agent stores GUIDs as they lie in memory");

namespace {

// 100 ns steps from 1582-10-15, where GUID time begins, to 1970-01-01.
constexpr uint64_t steps_before_1970 = UINT64_C(0x01B21DD213814000);
constexpr uint64_t steps_per_second = 10000000;
constexpr uint64_t steps_per_microsecond = 10;

// The steps within a microsecond that the clock does not tell apart number the GUIDs made in it.
constexpr int32_t max_adjustment = steps_per_microsecond - 1;

constexpr uint16_t sequence_mask = 0x1FFF;
constexpr uint8_t multicast_bit = 0x80;  // the node is not the address of any hardware
constexpr unsigned version_bits = 0x1000;
constexpr unsigned variant_bits = 0x80;

auto in_order(const timeval& time) noexcept {
    return std::make_tuple(time.tv_sec, time.tv_usec);
}

}  // namespace

void GuidGenerator::start() noexcept {
    for (uint8_t& byte : node_) {
        byte = static_cast<uint8_t>(random_());
    }
    node_[0] |= multicast_bit;
    const unsigned high = static_cast<unsigned>(random_());
    const unsigned low = static_cast<unsigned>(random_());
    sequence_ = static_cast<uint16_t>((high * 256 + (low & 0xFFU)) & sequence_mask);
    last_ = clock_();
    --last_.tv_sec;
    started_ = true;
}

void GuidGenerator::advance() noexcept {
    timeval now = clock_();
    while (in_order(now) == in_order(last_) && adjustment_ == max_adjustment) {
        now = clock_();
    }
    if (in_order(now) == in_order(last_)) {
        ++adjustment_;
        return;
    }
    if (in_order(now) < in_order(last_)) {
        sequence_ = (sequence_ + 1) & sequence_mask;
    }
    adjustment_ = 0;
    last_ = now;
}

GUID GuidGenerator::make() noexcept {
    if (!started_) {
        start();
    }
    advance();
    const uint64_t time = static_cast<uint64_t>(last_.tv_sec) * steps_per_second +
                          static_cast<uint64_t>(last_.tv_usec) * steps_per_microsecond +
                          static_cast<uint64_t>(adjustment_) + steps_before_1970;
    GUID guid = {};
    guid.Data1 = static_cast<uint32_t>(time);
    guid.Data2 = static_cast<uint16_t>(time >> 32);
    guid.Data3 = static_cast<uint16_t>(time >> 48 | version_bits);
    guid.Data4[0] = static_cast<uint8_t>(sequence_ >> 8 | variant_bits);
    guid.Data4[1] = static_cast<uint8_t>(sequence_);
    std::copy(node_.begin(), node_.end(), guid.Data4 + 2);
    return guid;
}

}  // namespace velora_com::qel::system
