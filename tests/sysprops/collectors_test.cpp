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

// An empty answer makes its call fail.
struct Host {
    std::string machine = "Power Macintosh", node = "alpha.example.org", name = "alpha", official;
};
static Host host;

extern "C" int uname(utsname* out) __THROW {
    std::strcpy(out->machine, host.machine.c_str());
    std::strcpy(out->nodename, host.node.c_str());
    return host.node.empty() ? -1 : 0;
}

extern "C" int gethostname(char* out, size_t size) __THROW {
    std::memset(out, 'h', size);  // as of a name that does not fit
    if (host.name.size() < size) {
        std::strcpy(out, host.name.c_str());
    }
    return host.name.empty() ? -1 : 0;
}

extern "C" hostent* gethostbyname(const char*) {
    static hostent entry;
    entry.h_name = host.official.data();
    return host.official.empty() ? nullptr : &entry;
}

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

class Collectors : public ::testing::Test {
protected:
    void SetUp() override {
        script() = {};
        host = {};
    }

    ISysProps properties;
};

TEST(ClosestFloor, TakesTheHighestPointStrictlyBelow) {
    const struct {
        uint64_t value, upper, lower;
        uint32_t steps;
        uint64_t expected;
    } cases[] = {
        {55, 100, 0, 20, 50}, {5, 100, 0, 20, 5}, {250, 100, 0, 20, 100}, {57, 100, 60, 0, 57},
        {57, 100, 7, 0, 7},   {5, 0, 0, 20, 5},   {12, 30, 10, 20, 11},   {9, 30, 10, 4, 10},
    };
    for (const auto& [value, upper, lower, steps, expected] : cases) {
        EXPECT_EQ(get_closest_floor<uint64_t>(value, upper, lower, steps), expected);
    }
    EXPECT_EQ(get_closest_floor<uint64_t>(57, 99, 0, 20), 56U) << "the step is truncated to 4";
    EXPECT_DOUBLE_EQ(get_closest_floor<double>(57, 99, 0, 20), 54.45);
    EXPECT_DOUBLE_EQ(get_closest_floor<double>(55, 100, 0, 20), 50);
    EXPECT_DOUBLE_EQ(get_closest_floor<double>(3.5, 100, 0, 20), 3.5);
    EXPECT_EQ(get_closest_floor<uint64_t>(UINT64_MAX, UINT64_MAX, 0, 20), UINT64_MAX / 20 * 20);
}

// Every code below 300 that has a name, and the name; then the names of i486, i586, i5ii, i5iv, i5pr, ixxx.
std::string names(bool (*convert)(long, char*)) {
    char name[16];
    std::string all;
    EXPECT_FALSE(convert(2, nullptr));
    for (long code = -1; code < 300; ++code) {
        all += convert(code, name) ? std::to_string(code) + ":" + name + " " : "";
    }
    for (const long code :
         {0x69343836, 0x69353836, 0x69356969, 0x69356976, 0x69357072, 0x69787878}) {
        all += convert(code, name) ? name : "-";
    }
    return all;
}

TEST(GestaltNames, NameTheKnownCodesAndNoOthers) {
    EXPECT_EQ(names(ConvertGestaltSysArchToString), "1:MC680x0 2:PowerPC 10:Intel ------");
    EXPECT_EQ(names(ConvertGestaltCPUTypeToString),
              "0:68000 1:68010 2:68020 3:68030 4:68040 257:601 259:603 260:604 262:603e 263:603ev "
              "264:750 265:604e 266:604ev 268:G4 272:G47450 "
              "486PentiumPentiumIIPentium 4PentiumProX86");
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
        {{}, {5000000000, {}, 268}, {}, L"G4, N/A, 5000 MHz, -1"},
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
        {{1000000, {{4, 10000}}}, L"40000 of 1000000"},
        {{{}, {{57, 10000}}}, L"570000 of N/A"},
        {{1000000, {}}, L"N/A of 1000000"},
        // More than 32 bits, and a product of two that fit them.
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
    for (const auto& [lang, expected] :
         {std::pair("ja_JP.UTF-8", L"0411"), {"en_GB", L"0409"}, {"ja_JP@en_UK", L"0809"}}) {
        setenv("LANG", lang, 1);
        EXPECT_TRUE(properties.GetMiscInformation(info));
        EXPECT_EQ(info.wstrDefaultLangID, expected);
    }
    unsetenv("LANG");
    // Nobody calls tzset here: the collector has to, or it reports the zone of the start.
    setenv("TZ", "XYZ-3QRS", 1);
    const time_t before = time(nullptr);
    EXPECT_TRUE(properties.GetMiscInformation(info));
    const time_t after = time(nullptr);
    EXPECT_EQ(info.wstrDefaultLangID + info.wstrTimeZone, L"0409XYZ");
    tm local = {};
    const std::string text = sysprops_wide_to_ansi(info.wstrLastUpdate);
    ASSERT_NE(strptime(text.c_str(), "%m/%d/%Y %H:%M:%S", &local), nullptr) << text;
    EXPECT_EQ(text.size(), 19U);
    local.tm_isdst = -1;
    EXPECT_GE(mktime(&local), before);
    EXPECT_LE(mktime(&local), after);
}

TEST_F(Collectors, HostNames) {
    std::string name;
    EXPECT_TRUE(getComputerName(name));
    EXPECT_EQ(name, "alpha");
    EXPECT_EQ(getFqdnAddress(), L"alpha");
    script().domain_name = script().nis_domain = "";
    EXPECT_EQ(getFqdnAddress(), L"alpha.");
    EXPECT_EQ(getDomainName(), L"UnKnownDomain");
    script().domain_name = "example.nis";
    EXPECT_EQ(getFqdnAddress(), L"alpha.example.nis");
    host.official = "alpha.example.org";
    EXPECT_EQ(getFqdnAddress(), L"alpha.example.org");
    script() = {};
    host = {"", "", std::string(3000, 'h'), ""};
    EXPECT_EQ(getFqdnAddress(), std::wstring(2047, L'h')) << "cut to the buffer, with an end";

    host.name = "";
    EXPECT_FALSE(getComputerName(name));
    EXPECT_EQ(name, "alpha");
    NetworkInformation info;
    info.wstrComputerName = info.wstrIPXAddress = info.wstrIPHostName = L"before";
    EXPECT_EQ(properties.GetNetworkInformation(info), 0);
    EXPECT_EQ(info.wstrComputerName + info.wstrIPHostName + info.wstrIPXAddress, L"N/AN/AN/A");
}

// Version, third number, build and edition, or what only the identity leaves.
std::wstring os_facts() {
    OSInformation info;
    const bool found = ISysProps().GetOSInformation(info);
    EXPECT_EQ(info.wstrPlatformID + info.wstrOSType + info.wstrOSOEMId,
              L"MACMac OS XApple Macintosh");
    EXPECT_EQ(info.wstrOSBitMode == L"N/A", !found);
    return info.wstrOSVersion + L' ' + info.wstrOSCsdVersion + L' ' + info.wstrOSBuildNum + L' ' +
           info.wstrOSPlatform;
}

using Strings = std::map<std::string, std::string, std::less<>>;
const char* const any_file = "/etc/passwd";  // what it says is scripted

TEST_F(Collectors, SplitTheVersion) {
    script().system_version_file = any_file;
    const std::pair<std::optional<Strings>, const wchar_t*> cases[] = {
        {{{{"ProductVersion", "10.5"}, {"ProductBuildVersion", "9A5"}}},
         L"10.5 N/A 9A5 Workstation"},
        {{{{"ProductVersion", "10.4.11.7"}}}, L"10.4.11 11 10.4.11.7 Workstation"},
        {{{{"ProductVersion", "10"}}}, L"10. N/A 10 Workstation"},
        {{{{"ProductVersion", ""}}}, L". N/A  Workstation"},
        {{{{"ProductVersion", ".10..5."}}}, L"10.5 N/A .10..5. Workstation"},
        {{{{"ProductBuildVersion", "8S165"}}}, L"N/A N/A N/A N/A"},
        {{}, L"N/A N/A N/A N/A"},
    };
    for (const auto& [strings, expected] : cases) {
        script().property_list = strings;
        EXPECT_EQ(os_facts(), expected);
    }
    script().property_list = Strings{{"ProductVersion", "10.5"}};
    script().server_version_file = any_file;
    EXPECT_EQ(os_facts(), L"10.5 N/A 10.5 Server");
}

TEST_F(Collectors, ReadNoOtherThanAProperVersionFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(truncate(folder.write("large", "<").c_str(), (off_t{64} << 20) + 1), 0);
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);  // which would block
    folder.write("empty");
    folder.write("zero", std::string("\0<plist/>", 9));
    script().property_list = Strings{{"ProductVersion", "10.5"}};
    for (const char* const name : {"empty", "zero", "large", "pipe", "none"}) {
        script().system_version_file = folder / name;
        EXPECT_EQ(os_facts(), L"N/A N/A N/A N/A") << name;
        EXPECT_TRUE(script().asked.empty()) << "parsed " << name;
    }
}

TEST_F(Collectors, WordSize) {
    const char* const mac = "Power Macintosh";
    const struct {
        const char* machine;
        const char* output;  // null: the shell does not start
        const wchar_t* expected;
    } cases[] = {
        {"x86_64", "0", L"1"}, {"i386", "1", L"0"},   {mac, "   1\n", L"1"},
        {mac, "", L"0"},       {mac, nullptr, L"-1"}, {mac, "    1", L"0"},  // four bytes are read
    };
    script().system_version_file = any_file;
    script().property_list = Strings{{"ProductVersion", "10.4.11"}};
    for (const auto& [machine, output, expected] : cases) {
        host.machine = machine;
        script().run_command =
            [answer = output](const std::string& command) -> std::optional<std::string> {
            EXPECT_EQ(command, "sysctl hw | grep 64bit | awk '{ print $2 }'");
            return answer == nullptr ? std::nullopt : std::optional<std::string>(answer);
        };
        OSInformation info;
        EXPECT_TRUE(properties.GetOSInformation(info));
        EXPECT_EQ(info.wstrOSBitMode, expected) << machine;
    }
}

}  // namespace
}  // namespace velora_com::qel::sysprops
