// GUIDs: the generator on a scripted clock, the exported functions, the text form.
#include <dirent.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "portability/guid_generator.h"
#include "support/owners.h"
#include "vlrcomn/guid.h"

using namespace velora_com::qel;

namespace {

std::string text_of(const GUID& guid) {
    char text[ORU_GUID_TEXT_SIZE];
    return oruUuidToStringA(&guid, text);
}

// What the clock reads, one after the other; past the end it moves on by a microsecond each time. A
// counter stands in for rand().
std::vector<timeval> readings;
size_t next_reading;
int next_random, random_step;

timeval scripted_clock() {
    if (next_reading < readings.size()) {
        return readings[next_reading++];
    }
    readings.back().tv_usec++;
    return readings.back();
}

int scripted_random() {
    return next_random += random_step;
}

class GuidGeneratorTest : public testing::Test {
protected:
    GuidGeneratorTest() {
        next_reading = 0;
        next_random = 0x1200;
        random_step = 1;
    }
    // The first reading starts it, the others make GUIDs.
    portability::GuidGenerator generator_{scripted_clock, scripted_random};
};

TEST_F(GuidGeneratorTest, HoldsTimeSequenceAndNode) {
    readings = {{1167609599, 499999}, {1167609599, 500000}};
    const GUID guid = generator_.make();
    const uint64_t time = UINT64_C(1167609599) * 10000000 + 5000000 + UINT64_C(0x01B21DD213814000);
    EXPECT_EQ(guid.Data1, static_cast<uint32_t>(time));
    EXPECT_EQ(guid.Data2, static_cast<uint16_t>(time >> 32));
    EXPECT_EQ(guid.Data3, static_cast<uint16_t>(time >> 48) | 0x1000);
    // Six random values make the node; two more, cut to 13 bits, the sequence.
    const uint8_t expected[8] = {0x80 | 0x07, 0x08, 0x81, 0x02, 0x03, 0x04, 0x05, 0x06};
    EXPECT_EQ(std::memcmp(guid.Data4, expected, sizeof expected), 0) << text_of(guid);
}

TEST_F(GuidGeneratorTest, TenShareAMicrosecond) {
    // One reading starts, eleven read the same microsecond; the eleventh GUID needs the next one.
    readings.assign(12, {1000, 7});
    std::vector<uint32_t> low;
    for (int i = 0; i < 12; ++i) {
        low.push_back(generator_.make().Data1);
    }
    for (size_t i = 1; i < low.size(); ++i) {
        EXPECT_EQ(low[i] - low[0], i == 11 ? 20U : i) << i;
    }
    EXPECT_EQ(next_reading, 12U) << "the clock was read again for the eleventh";
}

TEST_F(GuidGeneratorTest, ClockGoneBackChangesTheSequence) {
    next_random = 0xFFFF;
    random_step = 0;
    readings = {{1000, 5}, {1000, 5}, {999, 900000}, {999, 900000}};
    const GUID first = generator_.make();
    const GUID back = generator_.make();
    const GUID same = generator_.make();
    EXPECT_EQ(first.Data4[0] << 8 | first.Data4[1], 0x9FFF);
    EXPECT_EQ(back.Data4[0] << 8 | back.Data4[1], 0x8000) << "thirteen bits, one more";
    EXPECT_EQ(first.Data1 - back.Data1, 1000050U);
    EXPECT_EQ(same.Data1, back.Data1 + 1) << "the adjustment started anew";
    EXPECT_EQ(same.Data4[1], back.Data4[1]);
}

TEST(GuidText, IsTheSameOnEveryHost) {
    const GUID guid = {0x0B4E28BA, 0x2FA1, 0x01D2, {0x88, 0x3F, 0, 0x16, 0xD3, 0xCC, 0xA4, 0x27}};
    char text[ORU_GUID_TEXT_SIZE + 1];
    std::memset(text, '#', sizeof text);
    EXPECT_EQ(oruUuidToStringA(&guid, text), text);
    EXPECT_STREQ(text, "0b4e28ba-2fa1-01d2-883f-0016d3cca427");
    EXPECT_EQ(text[ORU_GUID_TEXT_SIZE], '#');
    EXPECT_EQ(oruUuidToStringA(&guid, nullptr), nullptr);
    EXPECT_EQ(oruUuidToStringA(nullptr, text), nullptr);
    EXPECT_EQ(oruCoCreateGuid(nullptr), nullptr);
}

TEST(GuidThreads, NeverGetEqualGuids) {
    constexpr size_t per_thread = 5000;
    std::vector<std::vector<std::string>> made(4);
    std::vector<std::thread> threads;
    for (auto& mine : made) {
        threads.emplace_back([&mine] {
            for (size_t i = 0; i < per_thread; ++i) {
                GUID guid;
                oruCoCreateGuid(&guid);
                mine.push_back(text_of(guid));
            }
        });
    }
    std::set<std::string> all;
    for (size_t i = 0; i < threads.size(); ++i) {
        threads[i].join();
        all.insert(made[i].begin(), made[i].end());
    }
    EXPECT_EQ(all.size(), made.size() * per_thread);
}

size_t open_descriptors() {
    const support::Directory folder(opendir("/proc/self/fd"));
    size_t count = 0;
    while (folder && readdir(folder.get()) != nullptr) {
        ++count;
    }
    return count;
}

// The name makes GoogleTest run it before any other test has made a GUID.
TEST(GuidDeathTest, FirstCallDrawsFromRandAndLeaksNothing) {
    const auto first_call = [] {
        std::srand(4711);
        const GUID expected = portability::GuidGenerator(scripted_clock, std::rand).make();
        std::srand(4711);
        const size_t before = open_descriptors();
        errno = ENOTTY;
        GUID guid;
        oruCoCreateGuid(&guid);
        const bool good = errno == ENOTTY && open_descriptors() == before &&
                          std::memcmp(guid.Data4, expected.Data4, sizeof guid.Data4) == 0;
        std::_Exit(good ? 0 : 1);
    };
    readings = {{1000, 0}};
    EXPECT_EXIT(first_call(), testing::ExitedWithCode(0), "");
}

}  // namespace
