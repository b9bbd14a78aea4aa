// The collectors on machines that the test describes; it answers for the C library, too.
#include <netdb.h>
#include <sys/socket.h>
#include <sys/utsname.h>

#include "support/scripted_platform.h"
#include "support/test.h"
#include "sysprops/address_choice.h"
#include "vlrcomn/system_properties.h"

static const char* machine = "Power Macintosh";  // empty when it cannot be asked

extern "C" int uname(utsname* out) __THROW {
    std::strcpy(out->machine, machine);
    std::strcpy(out->nodename, "alpha.example.org");
    return *machine != '\0' ? 0 : -1;
}

extern "C" int gethostname(char* out, size_t size) __THROW {
    return std::memset(out, 'h', size), *machine != '\0' ? 0 : -1;
}

extern "C" hostent* gethostbyname(const char*) {
    return nullptr;
}

// The C library takes a lock here, which a cancelled thread must not keep.
static int cancellation_of_time;

extern "C" tm* localtime_r(const time_t* now, tm* out) __THROW {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancellation_of_time);
    int ignored;
    pthread_setcancelstate(cancellation_of_time, &ignored);
    *out = *localtime(now);
    return *machine != '\0' ? out : nullptr;
}

using namespace velora_com::qel;
using namespace velora_com::qel::sysprops;
using platform::script;

// The MAC address is the index, subnets are "s" with the place in the list.
static void add(NetInterfaceList& list, unsigned int index, std::vector<std::string> addresses) {
    NetInterface& interface = list.getNetInterface(index);
    interface.setOption(NETINTERFACE_MACADDRESS, std::to_string(index));
    for (size_t i = 0; i < addresses.size(); ++i) {
        const bool ipv6 = addresses[i].find(':') != std::string::npos;
        IPAddress address;
        address.setOption(IP_ADDRESS, addresses[i]);
        address.setOption(IP_FAMILY, static_cast<unsigned int>(ipv6 ? AF_INET6 : AF_INET));
        address.setOption(IP_SUBNETADDR, "s" + std::to_string(i));
        interface.setOption(NETINTERFACE_IPADDRESS, address);
    }
}

// The machine's network, if it has one.
int velora_com::qel::getNetInterfacesList(NetInterfaceList& list) {
    add(list, 1, {"192.0.2.1"});
    return script().processor_count ? 1 : 0;
}

struct Collectors : ::testing::Test {
    Collectors() { script() = {}; }

    ISysProps properties;
};

TEST_F(Collectors, ReportWhatIsKnownInSteps) {
    EXPECT_EQ(get_closest_floor<uint64_t>(55, 100, 0, 20), 50U);
    EXPECT_EQ(get_closest_floor<uint64_t>(57, 99, 0, 20), 56U) << "the step is truncated to 4";
    EXPECT_DOUBLE_EQ(get_closest_floor<double>(57, 100, 7, 0), 7);
    const struct {
        platform::ProcessorFacts facts;
        std::optional<std::string> model;
        platform::MemoryFacts memory;
        const wchar_t* expected;  // type, speed, portable, free memory
    } cases[] = {
        {{999999, 2, 999}, "PowerMac3,1", {1000000, {}}, L"PowerPC|0 MHz|0|N/A"},
        {{5000000000, 10, 0x69356976}, {}, {{}, {{3, 7}}}, L"Intel Pentium 4|5000 MHz|-1|21"},
        {{UINT64_MAX, {}, 272}, "iBook", {100, {{5, 1}}}, L"G47450|2147483647 MHz|1|5"},
    };
    for (const auto& [facts, model, memory, expected] : cases) {
        script().processor_facts = facts;
        script().hardware_model = model;
        script().memory_facts = memory;
        CPUInformation cpu;
        MemoryInformation ram;
        EXPECT_TRUE(properties.GetCPUInformation(cpu));
        EXPECT_EQ(properties.GetMemoryInformation(ram), memory.free.has_value());
        cpu.wstrCPUType += L'|' + cpu.wstrCPUSpeed + L'|' + cpu.wstrIsPortable;
        EXPECT_EQ(cpu.wstrCPUType + L'|' + ram.wstrFreeMemory, expected);
    }
}

TEST_F(Collectors, EveryCodeOfAProcessorHasItsName) {
    std::string names;
    for (long code = -1; code <= 300; ++code) {
        char name[16] = "";
        names += ConvertGestaltCPUTypeToString(code, name) ? std::to_string(code) + name + ' ' : "";
        names += ConvertGestaltSysArchToString(code, name) ? std::to_string(code) + name + ' ' : "";
    }
    EXPECT_EQ(names,
              "068000 168010 1MC680x0 268020 2PowerPC 368030 468040 10Intel 257601 259603 260604 "
              "262603e 263603ev 264750 265604e 266604ev 268G4 272G47450 ");
}

TEST_F(Collectors, LanguageAndTimeAreThoseOfNow) {
    MiscInformation info;
    const time_t before = time(nullptr);
    for (const auto& [lang, expected] : {std::pair("ja_JP@en_UK", L"0809"), {"en_GB", L"0409"}}) {
        setenv("LANG", lang, 1);
        EXPECT_TRUE(properties.GetMiscInformation(info));
        EXPECT_EQ(info.wstrDefaultLangID, expected);
    }
    EXPECT_EQ(cancellation_of_time, PTHREAD_CANCEL_DISABLE);
    tm local = {};
    const std::string text = sysprops_wide_to_ansi(info.wstrLastUpdate);
    ASSERT_NE(strptime(text.c_str(), "%m/%d/%Y %H:%M:%S", &local), nullptr) << text;
    EXPECT_EQ(text.size(), 19U);
    local.tm_isdst = -1;
    const time_t told = mktime(&local);
    EXPECT_TRUE(before <= told && told <= time(nullptr)) << text;
}

TEST_F(Collectors, WhatCannotBeAskedIsLeftOut) {
    const char* const before = std::exchange(machine, "");
    MiscInformation misc;
    NetworkInformation network;
    EXPECT_TRUE(properties.GetMiscInformation(misc) && !properties.GetNetworkInformation(network));
    machine = before;
    network.wstrComputerName += misc.wstrLastUpdate + network.wstrIPHostName;
    EXPECT_EQ(network.wstrComputerName, L"N/AN/AN/A");
}

struct VersionFile : Collectors {
    // Version, third number, build, edition and word size, as far as the file was read.
    std::wstring facts() {
        OSInformation info;
        const bool read = properties.GetOSInformation(info);
        EXPECT_EQ(read, info.wstrOSBitMode != L"N/A");
        return info.wstrOSVersion + L' ' + info.wstrOSCsdVersion + L' ' + info.wstrOSBuildNum +
               L' ' + info.wstrOSPlatform + L' ' + info.wstrOSBitMode;
    }
};

TEST_F(VersionFile, IsSplitAndBringsTheWordSizeAlong) {
    script().system_version_file = "/etc/passwd";  // what it says is scripted
    const struct {
        const char *version, *machine, *output;
        const wchar_t* expected;
    } cases[] = {{"10.5", "x86_64", "0", L"10.5 N/A 10.5 Workstation 1"},
                 {"10.4.11.7", "i386", "1", L"10.4.11 11 10.4.11.7 Workstation 0"},
                 {"10", "ppc", "   1\n", L"10. N/A 10 Workstation 1"},
                 {".10..5.", "ppc", "    1", L"10.5 N/A .10..5. Workstation 0"}};
    EXPECT_EQ(facts(), L"N/A N/A N/A N/A N/A");
    for (const auto& [version, name, output, expected] : cases) {
        machine = name;
        script().property_list = {{{"ProductVersion", version}}};
        script().run_command = [text = output](const std::string& command) {
            EXPECT_EQ(command, "sysctl hw | grep 64bit | awk '{ print $2 }'");
            return text;
        };
        EXPECT_EQ(facts(), expected);
    }
}

TEST_F(VersionFile, IsReadWhenProper) {
    const TemporaryFolder folder;
    ASSERT_EQ(truncate(folder.write("large", "<").c_str(), (off_t{64} << 20) + 1), 0);
    folder.write("zero", std::string("\0<plist/>", 9));
    script().system_version_file = "/sys/kernel/uevent_seqnum";  // shorter than its size says
    EXPECT_EQ(facts(), L"N/A N/A N/A N/A N/A");
    script().asked.clear();
    for (const char* const name : {"zero", "large", "none"}) {
        script().system_version_file = folder / name;
        EXPECT_EQ(facts(), L"N/A N/A N/A N/A N/A") << name;
        EXPECT_TRUE(script().asked.empty()) << "parsed " << name;
    }
}

TEST(AddressChoice, FollowsTheLastKnownAddress) {
    NetInterfaceList both(false), ipv6(false);
    add(both, 7, {"fd00:0:0:0:0:0:0:7", "10.1.2.3", "10.1.2.3"});
    add(both, 4, {"fe80:0:0:0:0:0:0:4", "192.0.2.4"});
    add(ipv6, 9, {"fd00:0:0:0:0:0:0:9"});
    add(ipv6, 3, {"fe80:0:0:0:0:0:0:3"});
    using Row = std::tuple<NetInterfaceList&, const char*, const wchar_t*>;
    const Row cases[] = {
        // address, MAC and subnet by the last address
        // Present, though another interface has a lower index; the later duplicate gives the subnet.
        {both, "10.1.2.3", L"10.1.2.3 7 s2"},
        {both, "fd00:0:0:0:0:0:0:7", L"fd00:0:0:0:0:0:0:7 7 s0"},
        // Unknown or gone: the first of its family, by index. A compressed one matches nothing.
        {both, "10.9.9.9", L"192.0.2.4 4 s1"},
        {both, "fd00::7", L"fe80:0:0:0:0:0:0:4 4 s0"},
        {both, "fd00:0:0:0:0:0:0:8", L"fe80:0:0:0:0:0:0:4 4 s0"},
        {ipv6, "", L"fe80:0:0:0:0:0:0:3 3 s0"},  // none of the family: the very first
    };
    for (const auto& [list, last_known, chosen] : cases) {
        NetworkInformation info;
        choose_address(list, last_known, info);
        EXPECT_EQ(info.wstrIPAddress + L' ' + info.wstrNETAddress + L' ' + info.wstrSubnetAddress,
                  chosen);
    }
}
