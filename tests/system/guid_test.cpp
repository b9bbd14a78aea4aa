#include "vlrcomn/guid.h"
#include "support/test.h"
#include "system/guid_generator.h"

using velora_com::qel::system::GuidGenerator;

static std::string text_of(const GUID& guid) {
    char text[ORU_GUID_TEXT_SIZE];
    return oruUuidToStringA(&guid, text);
}

// Reads the same `repeats` times, then moves on by a microsecond each time.
static timeval now;
static int repeats;

static timeval scripted_clock() {
    now.tv_usec += repeats-- > 0 ? 0 : 1;
    return now;
}

// Six bytes for the node, then the high byte and the low one of the sequence.
static int scripted_random() {
    static const int numbers[] = {7, 8, 0x181, 2, 3, 4, 0x5F, 0x1FF};
    static size_t next = 0;
    return numbers[next++ % 8];
}

TEST(GuidGenerator, NumbersGuidsOfAMicrosecondAndOfAClockGoneBack) {
    GuidGenerator generator(scripted_clock, scripted_random);
    // One reading starts it, eleven read the same microsecond; the eleventh GUID needs the next one.
    now = {1167609599, 500000};
    repeats = 12;
    const uint32_t first = 0x05A674C0;
    for (const uint32_t step : {0U, 1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 9U, 10U, 20U}) {
        const GUID guid = generator.make();
        EXPECT_EQ(guid.Data1, first + step);
        EXPECT_EQ(text_of(guid).substr(8), "-992b-11db-9fff-870881020304");
    }
    now = {1167609598, 500000};
    repeats = 2;
    EXPECT_EQ(text_of(generator.make()), "050dde40-992b-11db-8000-870881020304")
        << "one more, in thirteen bits";
    EXPECT_EQ(text_of(generator.make()), "050dde41-992b-11db-8000-870881020304");
}

TEST(Guid, ThreadsNeverGetEqualOnesAndNullsNone) {
    std::vector<GUID> made(20000);
    together(4, [&](int number) {
        const auto begin = made.begin() + number * 5000;
        std::for_each(begin, begin + 5000, [](GUID& guid) { oruCoCreateGuid(&guid); });
    });
    char text[ORU_GUID_TEXT_SIZE];
    EXPECT_TRUE(!oruCoCreateGuid(nullptr) && !oruUuidToStringA(nullptr, text));
    EXPECT_EQ(oruUuidToStringA(made.data(), nullptr), nullptr);
    std::set<std::string> all;
    std::transform(made.begin(), made.end(), std::inserter(all, all.end()), text_of);
    EXPECT_EQ(all.size(), made.size());
}
