// The collectors against machines that the test describes. The calls by which they name this host are
// answered here in the place of the C library's.
#include <gtest/gtest.h>
#include <netdb.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "support/scripted_platform.h"
#include "support/temporary_folder.h"
#include "vlrcomn/system_properties.h"

#if !defined(__THROW)  // as glibc declares these calls
#define __THROW
#endif

static const char* machine = "Power Macintosh";

extern "C" int uname(utsname* out) __THROW {
    std::strcpy(out->machine, machine);
    std::strcpy(out->nodename, "alpha.example.org");
    return 0;
}

extern "C" int gethostname(char* out, size_t size) __THROW {
    std::memset(out, 'h', size);
    return 0;
}

extern "C" hostent* gethostbyname(const char*) {
    return nullptr;
}

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

class Collectors : public ::testing::Test {
protected:
    Collectors() { script() = {}; }

    ISysProps properties;
};

TEST(ClosestFloor, TakesTheHighestPointStrictlyBelow) {
    EXPECT_EQ(get_closest_floor<uint64_t>(55, 100, 0, 20), 50U);
    EXPECT_EQ(get_closest_floor<uint64_t>(5, 100, 0, 20), 5U);
    EXPECT_EQ(get_closest_floor<uint64_t>(57, 99, 0, 20), 56U) << "the step is truncated to 4";
    EXPECT_DOUBLE_EQ(get_closest_floor<double>(57, 100, 7, 0), 7);
}

TEST_F(Collectors, ProcessorFacts) {
    const struct {
        std::optional<int32_t> count;
        platform::ProcessorFacts facts;
        std::optional<std::string> model;
        const wchar_t* expected;  // type, count, speed, portable
    } cases[] = {
        {2, {1332999999, 2, 268}, "PowerBook5,6", L"PowerPC G4, 2, 1332 MHz, 1"},
        {1, {999999, 2, 999}, "PowerMac3,1", L"PowerPC, 1, 0 MHz, 0"},
        {{}, {5000000000, 10, 0x69356976}, {}, L"Intel Pentium 4, N/A, 5000 MHz, -1"},
        {4, {UINT64_MAX, {}, {}}, "iBook", L", 4, 2147483647 MHz, "},
    };
    for (const auto& [count, facts, model, expected] : cases) {
        script().processor_count = count;
        script().processor_facts = facts;
        script().hardware_model = model;
        CPUInformation info;
        EXPECT_EQ(properties.GetCPUInformation(info), facts.architecture || facts.type);
        EXPECT_EQ(info.wstrCPUType + L", " + info.wstrNumOfCPU + L", " + info.wstrCPUSpeed + L", " +
                      info.wstrIsPortable,
                  expected);
    }
}

TEST_F(Collectors, MemoryFacts) {
    const std::pair<platform::MemoryFacts, const wchar_t*> cases[] = {
        {{1000000, {}}, L"N/A of 1000000"},
        // More than 32 bits, and a product of two that fit them, in steps of a twentieth.
        {{uint64_t{1} << 40, {{4000000, 65536}}}, L"219902325552 of 1099511627776"},
    };
    for (const auto& [facts, expected] : cases) {
        script().memory_facts = facts;
        MemoryInformation info;
        EXPECT_EQ(properties.GetMemoryInformation(info), facts.free.has_value());
        EXPECT_EQ(info.wstrFreeMemory + L" of " + info.wstrTotalPhysicalMemory, expected);
    }
}

TEST_F(Collectors, DisksAreSummedExactlyAndReportedInSteps) {
    script().mounted_file_systems = {
        {"/", 4096, 25600, 14669, true},      // 100 MB, 57.3 MB free
        {"/small", 512, 20480, 614, true},    // 10 MB, 0.3 MB free: exact below a step
        {"/net", 4096, 25600, 25600, false},  // a network file system
        {"/proc", 4096, 0, 0, true},          // no blocks
        {"/odd", 0, 100, 100, true},          // no block size
        {"/", 4096, 25600, 25600, true},      // mounted over: counted, not listed
        {"/large", 2097152, 2147483647, 1073741823, true},
    };
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // its comma, where it is installed, must not show
    DiskInformation info;
    EXPECT_TRUE(properties.GetDiskInformation(info));
    std::setlocale(LC_NUMERIC, "C");
    const decltype(info.mapFileSystems) expected = {
        {L"/", {L"100.00", L"55.00"}},
        {L"/small", {L"10.00", L"0.30"}},
        {L"/large", {L"4294967294.00", L"1932735282.30"}},
    };
    EXPECT_EQ(info.mapFileSystems, expected);
    EXPECT_EQ(info.wstrFreeDiskSpace + L" of " + info.wstrTotalDiskSpace + L" in " +
                  info.wstrNumFileSystems,
              L"2147483752.00 of 4294967504.00 in 4");
}

TEST_F(Collectors, LanguageZoneAndTimeAreThoseOfNow) {
    MiscInformation info;
    for (const auto& [lang, expected] : {std::pair("ja_JP@en_UK", L"0809"), {"en_GB", L"0409"}}) {
        setenv("LANG", lang, 1);
        EXPECT_TRUE(properties.GetMiscInformation(info));
        EXPECT_EQ(info.wstrDefaultLangID, expected);
    }
    // Nobody calls tzset here: the collector has to, or it reports the zone of the start.
    setenv("TZ", "XYZ-3QRS", 1);
    const time_t before = time(nullptr);
    EXPECT_TRUE(properties.GetMiscInformation(info));
    EXPECT_EQ(info.wstrTimeZone, L"XYZ");
    tm local = {};
    const std::string text = sysprops_wide_to_ansi(info.wstrLastUpdate);
    ASSERT_NE(strptime(text.c_str(), "%m/%d/%Y %H:%M:%S", &local), nullptr) << text;
    EXPECT_EQ(text.size(), 19U);
    local.tm_isdst = -1;
    EXPECT_GE(mktime(&local), before);
    EXPECT_LE(mktime(&local), time(nullptr));
}

TEST_F(Collectors, HostNames) {
    std::string name;
    EXPECT_TRUE(getComputerName(name));
    EXPECT_EQ(name, "alpha");
    const std::wstring cut(2047, L'h');  // to the buffer, with an end
    EXPECT_EQ(getFqdnAddress(), cut);
    script().domain_name = "";
    EXPECT_EQ(getFqdnAddress(), cut + L'.') << "not known to the resolver";
    EXPECT_EQ(getDomainName(), L"UnKnownDomain");
}

struct VersionFile : Collectors {
    VersionFile() { script().system_version_file = "/etc/passwd"; }  // what it says is scripted

    // Version, third number, build and edition, or what only the identity leaves.
    std::wstring facts() {
        OSInformation info;
        const bool found = properties.GetOSInformation(info);
        EXPECT_EQ(info.wstrPlatformID + info.wstrOSType + info.wstrOSOEMId,
                  L"MACMac OS XApple Macintosh");
        EXPECT_EQ(info.wstrOSBitMode == L"N/A", !found);
        return info.wstrOSVersion + L' ' + info.wstrOSCsdVersion + L' ' + info.wstrOSBuildNum +
               L' ' + info.wstrOSPlatform;
    }
};

TEST_F(VersionFile, IsSplit) {
    const std::pair<decltype(script().property_list), const wchar_t*> cases[] = {
        {{{{"ProductVersion", "10.5"}, {"ProductBuildVersion", "9A5"}}},
         L"10.5 N/A 9A5 Workstation"},
        {{{{"ProductVersion", "10.4.11.7"}}}, L"10.4.11 11 10.4.11.7 Workstation"},
        {{{{"ProductVersion", "10"}}}, L"10. N/A 10 Workstation"},
        {{{{"ProductVersion", ".10..5."}}}, L"10.5 N/A .10..5. Workstation"},
        {{}, L"N/A N/A N/A N/A"},
    };
    for (const auto& [strings, expected] : cases) {
        script().property_list = strings;
        EXPECT_EQ(facts(), expected);
    }
}

TEST_F(VersionFile, IsReadWhenProper) {
    const TemporaryFolder folder;
    ASSERT_EQ(truncate(folder.write("large", "<").c_str(), (off_t{64} << 20) + 1), 0);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);  // which would block
    folder.write("zero", std::string("\0<plist/>", 9));
    for (const char* const name : {"zero", "large", "pipe", "none"}) {
        script().system_version_file = folder / name;
        EXPECT_EQ(facts(), L"N/A N/A N/A N/A") << name;
        EXPECT_TRUE(script().asked.empty()) << "parsed " << name;
    }
}

TEST_F(VersionFile, BringsTheWordSizeAlong) {
    const struct {
        const char* machine;
        std::optional<std::string> output;
        const wchar_t* expected;
    } cases[] = {
        {"x86_64", "0", L"1"}, {"i386", "1", L"0"}, {"Power Macintosh", "   1\n", L"1"},
        {"ppc64", "", L"0"},   {"ppc", {}, L"-1"},  {"ppc", "    1", L"0"},  // four bytes are read
    };
    script().property_list = {{{"ProductVersion", "10.4.11"}}};
    for (const auto& each : cases) {
        machine = each.machine;
        script().run_command = [&](const std::string& command) {
            EXPECT_EQ(command, "sysctl hw | grep 64bit | awk '{ print $2 }'");
            return each.output;
        };
        OSInformation info;
        EXPECT_TRUE(properties.GetOSInformation(info));
        EXPECT_EQ(info.wstrOSBitMode, each.expected) << each.machine;
    }
}

}  // namespace
}  // namespace velora_com::qel::sysprops
