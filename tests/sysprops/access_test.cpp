// One property, all properties and what they ask of the machine.
#include <utmpx.h>

#include <clocale>

#include "support/fault_injection.h"
#include "support/scripted_platform.h"
#include "vlrcomn/agent_identity.h"  // declares a namesake of orumcomn_get_user_name
#include "vlrcomn/system_properties.h"

using namespace velora_com::qel::sysprops;
using velora_com::qel::platform::script;

// Runs before main, maybe before the initialisers of the library's own files.
static const std::wstring early_copies = [] {
    orumcomn_set_local_ip_addr(L"192.0.2.1");
    return SystemInfo_Key + sysprops_ansi_to_wide(suse_release_file) + CPUInformation().wstrCPUType;
}();

TEST(EarlyConstants, AreReadByStaticInitialisers) {
    EXPECT_EQ(early_copies + ISysProps::GetLastKnownLocalIP(),
              L"SystemInfo/etc/SuSE-releaseN/A192.0.2.1");
}

// A machine. Its figures pass 32 bits, its file systems are of every kind.
struct Access : ::testing::Test {
    Access() {
        script() = {};
        script().processor_count = 2;
        script().processor_facts = {1332999999, 2, 268};
        script().hardware_model = "PowerBook5,6";
        script().memory_facts = {uint64_t{1} << 40, {{4000000, 65536}}};
        script().mounted_file_systems = {
            {"/", 4096, 25600, 14669, true},          // 100 MB, 57.3 MB free
            {"/a\"b \u00e9", 512, 20480, 614, true},  // 10 MB, 0.3 MB free: exact below a step
            {"/net", 4096, 25600, 25600, false},      // a network file system
            {"/proc", 4096, 0, 0, true},              // no blocks
            {"/odd", 0, 100, 100, true},              // no block size
            {"/", 4096, 25600, 25600, true},          // mounted over: counted, not listed
            {"/large", 2097152, 2147483647, 1073741823, true},
        };
        // Any file: what it says is scripted.
        script().system_version_file = script().server_version_file = "/etc/passwd";
        script().property_list = {
            {{"ProductVersion", "10.4.11"}, {"ProductBuildVersion", "8S165"}}};
        script().nis_domain = "nis.example";
        script().domain_name = "";
        utmpxname("/nonexistent");
        setenv("TZ", "XYZ-3", 1);
        setenv("LANG", "ja_JP.UTF-8", 1);
        std::setlocale(LC_NUMERIC, "de_DE.UTF-8");  // its comma, where installed, must not show
    }

    ISysProps properties;
    std::map<std::wstring, std::wstring> report{{L"stale", L"entry"}};
    decltype(DiskInformation::mapFileSystems) file_systems{{L"/stale", {L"1", L"1"}}};
};

TEST_F(Access, EveryPropertyReadsTheSameHoweverItIsAskedFor) {
    const std::wstring host(2047, L'h'), dotted_host = host + L'.';
    const struct {
        const wchar_t *name, *value, *unknown;  // the latter of a machine that tells nothing
        std::wstring (*function)();
    } cases[] = {
        {L"CPUType", L"PowerPC G4", L"", orumcomn_get_cpu_type},
        {L"CPUSpeed", L"1332 MHz", L"0 MHz", orumcomn_get_cpu_speed},
        {L"NumOfCPU", L"2", L"N/A", orumcomn_get_number_of_processors},
        {L"CPUSerialNumber", L"N/A", L"N/A", orumcomn_get_cpu_serial_number},
        {L"IsPortable", L"1", L"", nullptr},
        {L"DomainName", L"nis.example", L"UnKnownDomain", orumcomn_get_domain_name},
        {L"ComputerName", L"alpha", L"alpha", orumcomn_get_computer_name},
        {L"IPAddress", L"192.0.2.1", L"N/A", orumcomn_get_ip_address},
        {L"SubnetAddress", L"s0", L"N/A", orumcomn_get_subnet_address},
        {L"SubnetMask", L"", L"N/A", orumcomn_get_subnet_mask},
        {L"NETAddress", L"1", L"N/A", orumcomn_get_mac_address},
        {L"IPXAddress", L"N/A", L"N/A", orumcomn_get_ipx_address},
        {L"IPHostName", dotted_host.c_str(), host.c_str(), orumcomn_get_fqdn_address},
        {L"TotalPhysicalMemory", L"1099511627776", L"N/A", orumcomn_get_total_memory},
        {L"FreeMemory", L"219902325552", L"N/A", orumcomn_get_free_memory},
        {L"TotalDiskSpace", L"4294967504.00", L"0.00", orumcomn_get_total_disk_space},
        {L"FreeDiskSpace", L"2147483752.00", L"0.00", orumcomn_get_free_disk_space},
        {L"NumberOfFileSystems", L"4", L"0", orumcomn_get_number_of_file_systems},
        {L"OSType", L"Mac OS X", L"Mac OS X", orumcomn_get_os_type},
        {L"OSPlatform", L"Server", L"N/A", orumcomn_get_os_platform},
        {L"OSVersion", L"10.4.11", L"N/A", orumcomn_get_os_version},
        {L"OSCsdVersion", L"11", L"N/A", orumcomn_get_os_service_pack},
        {L"OSBuildNum", L"8S165", L"N/A", orumcomn_get_os_build_number},
        {L"OSBitMode", L"-1", L"N/A", nullptr},
        {L"OSOEMId", L"Apple Macintosh", L"Apple Macintosh", orumcomn_get_os_oem_id},
        {L"PlatformID", L"MAC", L"MAC", orumcomn_get_os_platform_id},
        {L"UserName", L"NA", L"NA", orumcomn_get_user_name},
        {L"TimeZone", L"XYZ", L"XYZ", orumcomn_get_time_zone},
        {L"DefaultLangID", L"0411", L"0411", orumcomn_get_language},
        {L"LastUpdate", nullptr, nullptr, orumcomn_get_last_update_time},
    };
    EXPECT_TRUE(properties.GetAllSystemProperties(report, file_systems));
    const auto& asked = script().asked;
    EXPECT_EQ(std::set<std::string>(asked.begin(), asked.end()).size(), asked.size()) << "twice";
    EXPECT_EQ(report.size(), std::size(cases));
    for (const auto& [name, value, unknown_value, function] : cases) {
        EXPECT_TRUE(value == nullptr || report[name] == value) << name << L' ' << report[name];
        // No category claims the count of file systems, so that alone it reads as empty.
        const std::wstring expected = name != NumFileSystems_Key ? report[name] : L"";
        if (name != LastUpdate_Key) {
            EXPECT_EQ(properties.GetOneSystemProperty(name), expected);
            EXPECT_EQ(function != nullptr ? function() : expected, expected);
        } else {
            EXPECT_EQ(function().size(), expected.size()) << "another second, perhaps";
        }
    }
    EXPECT_EQ(properties.GetOneDiskProperty(NumFileSystems_Key), L"4");
    EXPECT_EQ(properties.GetOneSystemProperty(L"cputype"), L"");
    EXPECT_EQ(properties.GetOneCPUProperty(L"OSType") + orumcomn_get_file_system_name(0) +
                  orumcomn_get_file_system_free_space_by_name(L"/") +
                  orumcomn_get_file_system_total_space_by_name(L"/"),
              L"N/AN/AN/AN/A");
    script() = {};  // nothing is kept from an earlier call
    EXPECT_EQ(properties.GetOneSystemProperty(NumOfCPU_Key), L"N/A");
    EXPECT_EQ(script().asked.size(), 2U) << "asked about other categories";
    EXPECT_TRUE(properties.GetAllSystemProperties(report, file_systems));
    for (const auto& [name, value, unknown_value, function] : cases) {
        EXPECT_TRUE(value == nullptr || report[name] == unknown_value) << name << report[name];
    }
}

TEST_F(Access, AdditionsStandBesideTheReport) {
    script().boot_time = int64_t{1} << 40;
    EXPECT_TRUE(properties.GetAllSystemProperties(report));
    EXPECT_EQ(report.count(BootTime_Key), 0U);
    EXPECT_EQ(properties.GetOneSystemProperty(BootTime_Key), L"");
    EXPECT_FALSE(properties.IsOSProperty(BootTime_Key));
    EXPECT_EQ(properties.GetOneAdditionalProperty(OSType_Key), L"");
    script().asked = {};
    EXPECT_EQ(properties.GetOneAdditionalProperty(L"BootTime"), L"1099511627776");
    EXPECT_EQ(orumcomn_get_boot_time(), L"1099511627776");
    EXPECT_EQ(script().asked, std::vector<std::string>(2, "boot_time")) << "and nothing else";
    script() = {};
    EXPECT_EQ(properties.GetOneAdditionalProperty(BootTime_Key), L"N/A");
}

TEST_F(Access, FileSystemsStandApartOrUnderComposedKeys) {
    EXPECT_TRUE(properties.GetAllSystemProperties(report, file_systems));
    EXPECT_EQ(file_systems,
              (decltype(file_systems){{L"/", {L"100.00", L"55.00"}},
                                      {L"/a\"b \u00e9", {L"10.00", L"0.30"}},
                                      {L"/large", {L"4294967294.00", L"1932735282.30"}}}));
    EXPECT_TRUE(properties.GetAllSystemProperties(report));
    EXPECT_EQ(report.size(), 29U + 6U);
    EXPECT_EQ(report.count(CPUPortable_Key), 0U);
    EXPECT_EQ(report[L"FileSystem\"/\" Total_Disk_Space_in_MB"], L"100.00");
    EXPECT_EQ(report[L"FileSystem\"/a\"b \u00e9\" Free_Disk_Space_in_MB"], L"0.30");
}

TEST_F(Access, EveryCallThatFailsFailsCleanly) {
    const auto collect = [&] {
        const bool collected = ISysProps().GetAllSystemProperties(report);
        script().asked = {};
        return collected;
    };
    const auto count = [&] { EXPECT_GE(std::exchange(report, {}).size(), 29U); };
    EXPECT_GT(fault_injection::walk_failures(collect, count).tolerated, 29)
        << "what cannot be found is left out";
}
