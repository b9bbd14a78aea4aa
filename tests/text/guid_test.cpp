// GUIDs: the generator on a scripted clock, threads, the text form.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "portability/guid_generator.h"
#include "vlrcomn/guid.h"

using velora_com::qel::portability::GuidGenerator;

namespace {

std::string text_of(const GUID& guid) {
    char text[ORU_GUID_TEXT_SIZE];
    return oruUuidToStringA(&guid, text);
}

// What the clock reads, one after the other; past the end it moves on by a microsecond each time.
std::vector<timeval> readings;
size_t next_reading = 0;

timeval scripted_clock() {
    if (next_reading < readings.size()) {
        return readings[next_reading++];
    }
    readings.back().tv_usec++;
    return readings.back();
}

// Six bytes for the node, then the high byte and the low one of the sequence.
int scripted_random() {
    static const int numbers[] = {7, 8, 0x181, 2, 3, 4, 0x5F, 0x1FF};
    static size_t next = 0;
    return numbers[next++ % 8];
}

// The text of the GUID made `steps` of 100 ns after the first reading.
std::string expected_text(int64_t steps, unsigned sequence) {
    const uint64_t first = UINT64_C(1167609599) * 10000000 + 5000000;
    const uint64_t time = first + UINT64_C(0x01B21DD213814000) + static_cast<uint64_t>(steps);
    char text[64];
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%04x-870881020304",
                  static_cast<unsigned>(time & 0xFFFFFFFF),
                  static_cast<unsigned>(time >> 32 & 0xFFFF),
                  static_cast<unsigned>(time >> 48 | 0x1000), sequence);
    return text;
}

TEST(GuidGenerator, NumbersGuidsOfAMicrosecondAndOfAClockGoneBack) {
    GuidGenerator generator(scripted_clock, scripted_random);
    // One reading starts it, eleven read the same microsecond; the eleventh GUID needs the next one.
    readings.assign(12, {1167609599, 500000});
    for (const int steps : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 20}) {
        EXPECT_EQ(text_of(generator.make()), expected_text(steps, 0x9FFF)) << steps;
    }
    readings.assign(14, {1167609598, 500000});
    for (const int steps : {0, 1}) {
        EXPECT_EQ(text_of(generator.make()), expected_text(steps - 10000000, 0x8000))
            << "thirteen bits, one more; the adjustment starts anew";
    }
}

TEST(GuidText, IsTheSameOnEveryHost) {
    const GUID guid = {0x0B4E28BA, 0x2FA1, 0x01D2, {0x88, 0x3F, 0, 0x16, 0xD3, 0xCC, 0xA4, 0x27}};
    char text[ORU_GUID_TEXT_SIZE + 1];
    std::memset(text, '#', sizeof text);
    EXPECT_EQ(oruUuidToStringA(&guid, text), text);
    EXPECT_STREQ(text, "0b4e28ba-2fa1-01d2-883f-0016d3cca427");
    EXPECT_EQ(text[ORU_GUID_TEXT_SIZE], '#');
    EXPECT_EQ(oruUuidToStringA(nullptr, text), nullptr);
    EXPECT_EQ(oruCoCreateGuid(nullptr), nullptr);
}

TEST(GuidThreads, NeverGetEqualGuids) {
    std::vector<GUID> made(20000);
    std::vector<std::thread> threads;
    for (size_t part = 0; part < 4; ++part) {
        threads.emplace_back([mine = &made[5000 * part]] {
            for (size_t i = 0; i < 5000; ++i) {
                oruCoCreateGuid(mine + i);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<std::string> all;
    std::transform(made.begin(), made.end(), std::inserter(all, all.end()), text_of);
    EXPECT_EQ(all.size(), made.size());
}

}  // namespace
