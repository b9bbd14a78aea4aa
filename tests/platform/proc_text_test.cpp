// Recorded texts of /proc/cpuinfo and /proc/meminfo of several systems.
#include "platform/linux/cpu_info.h"

#include <gmock/gmock.h>

#include "platform/linux/memory_info.h"

namespace velora_com::qel::platform {
namespace {

constexpr std::optional<int32_t> unknown;
constexpr std::optional<uint64_t> no_clock;
constexpr int32_t ixxx = 0x69787878;

const struct {
    const char* description;
    const char* text;
    std::optional<int32_t> architecture;
    std::optional<int32_t> type;
    std::optional<uint64_t> clock_hz;
} cases[] = {
    {"PC with two processors, the second faster",
     "processor\t: 0\nvendor_id\t: GenuineIntel\ncpu family\t: 6\ncpu MHz\t\t: 1596.000\n\n"
     "processor\t: 1\nvendor_id\t: GenuineIntel\ncpu family\t: 6\ncpu MHz\t\t: 2128.001\n",
     10, ixxx, 2'128'001'000},
    {"PowerBook5,6",
     "cpu\t\t: 7447A, altivec supported\nclock\t\t: 1666.666000MHz\n"
     "revision\t: 0.5 (pvr 8003 0105)\nmodel\t\t: PowerBook5,6\nmachine\t\t: PowerBook5,6\n",
     2, 272, 1'666'666'000},
    {"745/755, which is no 7450", "cpu\t\t: 745/755\n", 2, 264, no_clock},
    {"604ev, which is no 604e", "cpu\t\t: 604ev\n", 2, 266, no_clock},
    {"PowerPC without a code", "cpu\t: PPC970FX\nrevision\t: 3.0 (pvr 003c 0300)\n", 2, unknown,
     no_clock},
    {"SuperH", "cpu family\t: sh4\ncpu type\t: SH7091\n", unknown, unknown, no_clock},
    {"PA-RISC", "cpu family\t: PA-RISC 2.0\ncpu\t\t: PA8700\ncpu MHz\t\t: 750.000000\n", unknown,
     unknown, 750'000'000},
    {"no values", "cpu MHz\t:\nvendor_id\t:\ncpu family\t:\ncpu\t:\nclock\nrevision", unknown,
     unknown, no_clock},
    {"odd clocks", "cpu MHz\t: unknown\nclock\t: 7.123456789MHz\ncpu MHz\t: 5.\n", unknown, unknown,
     7'123'456},
    {"clock past 32 bits", "cpu MHz\t: 99999999999\n", unknown, unknown, no_clock},
};

TEST(CpuInfo, RecordedTexts) {
    for (const auto& c : cases) {
        SCOPED_TRACE(c.description);
        const ProcessorFacts info = parse_cpu_info(c.text);
        EXPECT_EQ(info.architecture, c.architecture);
        EXPECT_EQ(info.type, c.type);
        EXPECT_EQ(info.clock_hz, c.clock_hz);
    }
}

TEST(MemoryInfo, FiguresAreFoundByTheirWholeLabel) {
    constexpr const char* text =
        "        total:    used:    free:\n"  // kernels before 2.6 began so
        "MemTotal:       24684092 kB\nSwapFree:              5 kB\nHighMemFree:           7 kB\n"
        "MemFree:              9 kB\nCached:\nBuffers: x kB\nMapped:        3";
    const std::pair<const char*, std::optional<uint64_t>> figures[] = {
        {"MemTotal:", uint64_t{24684092} * 1024},
        {"MemFree:", 9 * 1024},
        {"Cached:", std::nullopt},
        {"Buffers:", std::nullopt},
        {"MemAvailable:", std::nullopt},
    };
    for (const auto& [label, bytes] : figures) {
        EXPECT_EQ(memory_figure(text, label), bytes) << label;
        EXPECT_EQ(memory_figure("", label), std::nullopt);
    }
}

}  // namespace
}  // namespace velora_com::qel::platform
