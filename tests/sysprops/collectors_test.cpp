// The collectors against machines that the test describes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <ctime>

#include "support/scripted_platform.h"
#include "sysprops/scripted_host.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

class Collectors : public ::testing::Test {
protected:
    void SetUp() override {
        script() = {};
        scripted_host() = {};
    }

    ISysProps properties;
};

TEST(ClosestFloor, TakesTheHighestPointStrictlyBelow) {
    const struct {
        double value, upper, lower;
        uint32_t steps;
        double expected;
    } cases[] = {
        {57, 100, 0, 20, 55},   {55, 100, 0, 20, 50}, {3, 100, 0, 20, 3},  {5, 100, 0, 20, 5},
        {250, 100, 0, 20, 100}, {57, 100, 60, 0, 57}, {57, 100, 7, 0, 7},  {0, 0, 0, 20, 0},
        {5, 0, 0, 20, 5},       {12, 30, 10, 20, 11}, {10, 30, 10, 4, 10}, {9, 30, 10, 4, 10},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        EXPECT_DOUBLE_EQ(get_closest_floor<double>(c.value, c.upper, c.lower, c.steps), c.expected);
        EXPECT_EQ(get_closest_floor<uint64_t>(static_cast<uint64_t>(c.value),
                                              static_cast<uint64_t>(c.upper),
                                              static_cast<uint64_t>(c.lower), c.steps),
                  static_cast<uint64_t>(c.expected));
    }
    EXPECT_EQ(get_closest_floor<uint64_t>(57, 99, 0, 20), 56U) << "the step is truncated to 4";
    EXPECT_DOUBLE_EQ(get_closest_floor<double>(57, 99, 0, 20), 54.45);
    const uint64_t huge = UINT64_MAX;
    EXPECT_EQ(get_closest_floor<uint64_t>(huge, huge, 0, 20), huge / 20 * 20);
}

TEST(GestaltNames, NameTheKnownCodesAndNoOthers) {
    const struct {
        bool (*convert)(long, char*);
        long code;
        const char* name;  // null for an unknown code
    } cases[] = {
        {ConvertGestaltSysArchToString, 1, "MC680x0"},
        {ConvertGestaltSysArchToString, 2, "PowerPC"},
        {ConvertGestaltSysArchToString, 10, "Intel"},
        {ConvertGestaltSysArchToString, 3, nullptr},
        {ConvertGestaltSysArchToString, -1, nullptr},
        {ConvertGestaltCPUTypeToString, 0, "68000"},
        {ConvertGestaltCPUTypeToString, 4, "68040"},
        {ConvertGestaltCPUTypeToString, 5, nullptr},
        {ConvertGestaltCPUTypeToString, 257, "601"},
        {ConvertGestaltCPUTypeToString, 258, nullptr},
        {ConvertGestaltCPUTypeToString, 263, "603ev"},
        {ConvertGestaltCPUTypeToString, 266, "604ev"},
        {ConvertGestaltCPUTypeToString, 268, "G4"},
        {ConvertGestaltCPUTypeToString, 272, "G47450"},
        {ConvertGestaltCPUTypeToString, 0x69343836, "486"},
        {ConvertGestaltCPUTypeToString, 0x69353836, "Pentium"},
        {ConvertGestaltCPUTypeToString, 0x69356969, "PentiumII"},
        {ConvertGestaltCPUTypeToString, 0x69356976, "Pentium 4"},
        {ConvertGestaltCPUTypeToString, 0x69357072, "PentiumPro"},
        {ConvertGestaltCPUTypeToString, 0x69787878, "X86"},
        {ConvertGestaltCPUTypeToString, 0x78787869, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.code);
        char name[16] = "untouched";
        EXPECT_EQ(c.convert(c.code, name), c.name != nullptr);
        EXPECT_STREQ(name, c.name != nullptr ? c.name : "untouched");
        EXPECT_FALSE(c.convert(c.code, nullptr));
    }
}

TEST_F(Collectors, ProcessorFacts) {
    const struct {
        std::optional<int32_t> count, architecture, type;
        std::optional<uint64_t> clock;
        std::optional<std::string> model;
        bool result;
        const wchar_t *type_text, *count_text, *speed, *portable;
    } cases[] = {
        {2, 2, 268, 1332999999, "PowerBook5,6", true, L"PowerPC G4", L"2", L"1332 MHz", L"1"},
        {1, 2, 999, 999999, "PowerMac3,1", true, L"PowerPC", L"1", L"0 MHz", L"0"},
        {1, {}, 268, {}, {}, true, L"G4", L"1", L"0 MHz", L"-1"},
        {{}, 10, 0x69787878, 5000000000, "MACBOOK", true, L"Intel X86", L"N/A", L"5000 MHz", L"1"},
        {4, {}, {}, UINT64_MAX, "iBook", false, L"", L"4", L"2147483647 MHz", L""},
        {4, 77, 77, 0, "iBook", false, L"", L"4", L"0 MHz", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        script() = {};
        script().processor_count = c.count;
        script().processor_facts.architecture = c.architecture;
        script().processor_facts.type = c.type;
        script().processor_facts.clock_hz = c.clock;
        script().hardware_model = c.model;
        CPUInformation info;
        EXPECT_EQ(properties.GetCPUInformation(info), c.result);
        EXPECT_EQ(info.wstrCPUType, c.type_text);
        EXPECT_EQ(info.wstrNumOfCPU, c.count_text);
        EXPECT_EQ(info.wstrCPUSpeed, c.speed);
        EXPECT_EQ(info.wstrIsPortable, c.portable);
        EXPECT_EQ(info.wstrCPUSerialNumber, L"N/A");
    }
}

TEST_F(Collectors, PortableFlagIsClearedAlsoOnFailure) {
    bool portable = true;
    EXPECT_FALSE(IsPortableComputer(portable));
    EXPECT_FALSE(portable);
}

TEST_F(Collectors, MemoryFacts) {
    const struct {
        std::optional<uint64_t> total;
        std::optional<platform::FreePages> pages;
        bool result;
        const wchar_t *total_text, *free_text;
    } cases[] = {
        {1000000, {{57, 10000}}, true, L"1000000", L"550000"},
        {1000000, {{4, 10000}}, true, L"1000000", L"40000"},
        {{}, {{57, 10000}}, true, L"N/A", L"570000"},
        {1000000, {}, false, L"1000000", L"N/A"},
        // More than 32 bits, and a product of two that fit them.
        {uint64_t{1} << 40, {{4000000, 65536}}, true, L"1099511627776", L"219902325552"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        script() = {};
        script().memory_facts.installed = c.total;
        script().memory_facts.free = c.pages;
        MemoryInformation info;
        EXPECT_EQ(properties.GetMemoryInformation(info), c.result);
        EXPECT_EQ(info.wstrTotalPhysicalMemory, c.total_text);
        EXPECT_EQ(info.wstrFreeMemory, c.free_text);
    }
}

TEST_F(Collectors, DisksAreSummedExactlyAndReportedInSteps) {
    script().mounted_file_systems = {
        {"/", 4096, 25600, 14669, true},              // 100 MB, 57.3 MB free
        {"/Volumes/\"A B\"", 512, 20480, 614, true},  // 10 MB, 0.3 MB free: exact below a step
        {"/net", 4096, 25600, 25600, false},          // a network file system
        {"/proc", 4096, 0, 0, true},                  // no blocks
        {"/odd", 0, 100, 100, true},                  // no block size
        {"/", 4096, 25600, 25600, true},              // mounted over: counted, not listed
        {"/large", 2097152, 2147483647, 1073741823, true},
    };
    DiskInformation info;
    EXPECT_TRUE(properties.GetDiskInformation(info));
    const std::map<std::wstring, std::pair<std::wstring, std::wstring>> expected = {
        {L"/", {L"100.00", L"55.00"}},
        {L"/Volumes/\"A B\"", {L"10.00", L"0.30"}},
        {L"/large", {L"4294967294.00", L"1932735282.30"}},
    };
    EXPECT_EQ(info.mapFileSystems, expected);
    EXPECT_EQ(info.wstrNumFileSystems, L"4");
    EXPECT_EQ(info.wstrTotalDiskSpace, L"4294967504.00");
    EXPECT_EQ(info.wstrFreeDiskSpace, L"2147483752.00");
}

TEST_F(Collectors, NoFileSystemIsNoFailure) {
    DiskInformation info;
    EXPECT_TRUE(properties.GetDiskInformation(info));
    EXPECT_EQ(info.wstrNumFileSystems, L"0");
    EXPECT_EQ(info.wstrTotalDiskSpace, L"0.00");
    EXPECT_EQ(info.wstrFreeDiskSpace, L"0.00");
}

TEST_F(Collectors, NumbersDoNotFollowTheLocale) {
    const char* const chosen = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    if (chosen == nullptr) {
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed";
    }
    script().mounted_file_systems = {{"/", 4096, 25600, 14669, true}};
    DiskInformation info;
    properties.GetDiskInformation(info);
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(info.wstrTotalDiskSpace, L"100.00");
}

TEST_F(Collectors, LanguageFollowsLang) {
    const struct {
        const char* lang;
        const wchar_t* expected;
    } cases[] = {
        {nullptr, L"0409"},       {"", L"0409"},      {"ja_JP.UTF-8", L"0411"},
        {"en_UK.UTF-8", L"0809"}, {"en_GB", L"0409"}, {"ja_JP@en_UK", L"0809"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.lang == nullptr ? "unset" : c.lang);
        if (c.lang == nullptr) {
            unsetenv("LANG");
        } else {
            setenv("LANG", c.lang, 1);
        }
        MiscInformation info;
        EXPECT_TRUE(properties.GetMiscInformation(info));
        EXPECT_EQ(info.wstrDefaultLangID, c.expected);
    }
}

TEST_F(Collectors, ZoneAndTimeAreThoseOfNow) {
    // Nobody calls tzset here: the collector has to, or it reports the zone of the start.
    setenv("TZ", "XYZ-3QRS", 1);
    const time_t before = time(nullptr);
    MiscInformation info;
    EXPECT_TRUE(properties.GetMiscInformation(info));
    const time_t after = time(nullptr);
    EXPECT_EQ(info.wstrTimeZone, L"XYZ");
    tm local = {};
    const std::string text = sysprops_wide_to_ansi(info.wstrLastUpdate);
    ASSERT_NE(strptime(text.c_str(), "%m/%d/%Y %H:%M:%S", &local), nullptr) << text;
    EXPECT_EQ(text.size(), 19U);
    local.tm_isdst = -1;
    EXPECT_GE(mktime(&local), before);
    EXPECT_LE(mktime(&local), after);
}

TEST_F(Collectors, HostNames) {
    const struct {
        const char *node, *expected;
    } nodes[] = {{"alpha.example.org", "alpha"}, {"alpha", "alpha"}, {".org", ""}, {"", ""}};
    for (const auto& c : nodes) {
        scripted_host().node = c.node;
        std::string name = "before";
        EXPECT_TRUE(getComputerName(name));
        EXPECT_EQ(name, c.expected);
    }
    scripted_host().uname_fails = true;
    std::string name = "before";
    EXPECT_FALSE(getComputerName(name));
    EXPECT_EQ(name, "before");

    EXPECT_EQ(getDomainName(), L"UnKnownDomain");
    script().nis_domain = "";
    EXPECT_EQ(getDomainName(), L"UnKnownDomain");
    script().nis_domain = "example.nis";
    EXPECT_EQ(getDomainName(), L"example.nis");
}

TEST_F(Collectors, QualifiedHostName) {
    const struct {
        std::optional<std::string> host, official, domain;
        const wchar_t* expected;
    } cases[] = {
        {"alpha", "alpha.example.org", "nis", L"alpha.example.org"},
        {"alpha", {}, "example.nis", L"alpha.example.nis"},
        {"alpha", {}, "", L"alpha."},
        {"alpha", {}, {}, L"alpha"},
        {{}, "alpha.example.org", "nis", L"N/A"},
        // As long as the buffer: still a text with an end.
        {std::string(3000, 'h'), {}, {}, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        scripted_host().host_name = c.host;
        scripted_host().official_name = c.official;
        script().domain_name = c.domain;
        EXPECT_EQ(getFqdnAddress(), c.expected ? c.expected : std::wstring(2047, L'h'));
    }
}

TEST_F(Collectors, NamesOfTheNetworkRecord) {
    scripted_host().uname_fails = true;
    scripted_host().host_name.reset();
    NetworkInformation info;
    info.wstrComputerName = info.wstrIPXAddress = info.wstrIPHostName = L"before";
    properties.GetNetworkInformation(info);
    EXPECT_EQ(info.wstrComputerName, L"N/A");
    EXPECT_EQ(info.wstrIPHostName, L"N/A");
    EXPECT_EQ(info.wstrIPXAddress, L"N/A");
    EXPECT_EQ(info.wstrDomainName, L"UnKnownDomain");
}

}  // namespace
}  // namespace velora_com::qel::sysprops
