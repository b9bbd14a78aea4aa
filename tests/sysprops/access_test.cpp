// One property, all properties and what they ask of the machine.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "sysprops/scripted_machine.h"
#include "vlrcomn/agent_identity.h"  // declares a namesake of orumcomn_get_user_name
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

// Runs before main, maybe before the initialisers of the library's own files.
const std::wstring early_copies = [] {
    orumcomn_set_local_ip_addr(L"192.0.2.1");
    return SystemInfo_Key + L' ' + FileSystemTotalSpace + L' ' +
           sysprops_ansi_to_wide(redhat_release_file) + L' ' + CPUInformation().wstrCPUType;
}();

TEST(EarlyConstants, AreReadByStaticInitialisers) {
    EXPECT_EQ(early_copies, L"SystemInfo Total_Disk_Space_in_MB /etc/redhat-release N/A");
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), L"192.0.2.1") << "handed in that early";
}

class Access : public ::testing::Test {
protected:
    Access() {
        script_machine();
        setenv("TZ", "XYZ-3", 1);
        setenv("LANG", "ja_JP.UTF-8", 1);
    }

    ISysProps properties;
    std::map<std::wstring, std::wstring> report{{L"stale", L"entry"}};
    decltype(DiskInformation::mapFileSystems) file_systems{{L"/stale", {L"1", L"1"}}};
};

TEST_F(Access, EveryPropertyReadsTheSameHoweverItIsAskedFor) {
    const struct {
        const wchar_t *name, *value;  // null where the machine gives it
        std::wstring (*function)();
    } cases[] = {
        {L"CPUType", L"PowerPC", orumcomn_get_cpu_type},
        {L"CPUSpeed", L"1333 MHz", orumcomn_get_cpu_speed},
        {L"NumOfCPU", L"2", orumcomn_get_number_of_processors},
        {L"CPUSerialNumber", L"N/A", orumcomn_get_cpu_serial_number},
        {L"IsPortable", L"1", nullptr},
        {L"DomainName", L"nis.example", orumcomn_get_domain_name},
        {L"ComputerName", nullptr, orumcomn_get_computer_name},
        {L"IPAddress", L"N/A", orumcomn_get_ip_address},
        {L"SubnetAddress", L"N/A", orumcomn_get_subnet_address},
        {L"SubnetMask", L"N/A", orumcomn_get_subnet_mask},
        {L"NETAddress", L"N/A", orumcomn_get_mac_address},
        {L"IPXAddress", L"N/A", orumcomn_get_ipx_address},
        {L"IPHostName", nullptr, orumcomn_get_fqdn_address},
        {L"TotalPhysicalMemory", L"1000000", orumcomn_get_total_memory},
        {L"FreeMemory", L"550000", orumcomn_get_free_memory},
        {L"TotalDiskSpace", L"101.00", orumcomn_get_total_disk_space},
        {L"FreeDiskSpace", L"55.55", orumcomn_get_free_disk_space},
        {L"NumberOfFileSystems", L"2", orumcomn_get_number_of_file_systems},
        {L"OSType", L"Mac OS X", orumcomn_get_os_type},
        {L"OSPlatform", L"Workstation", orumcomn_get_os_platform},
        {L"OSVersion", L"10.4.11", orumcomn_get_os_version},
        {L"OSCsdVersion", L"11", orumcomn_get_os_service_pack},
        {L"OSBuildNum", L"8S165", orumcomn_get_os_build_number},
        {L"OSBitMode", nullptr, nullptr},
        {L"OSOEMId", L"Apple Macintosh", orumcomn_get_os_oem_id},
        {L"PlatformID", L"MAC", orumcomn_get_os_platform_id},
        {L"UserName", nullptr, orumcomn_get_user_name},
        {L"TimeZone", L"XYZ", orumcomn_get_time_zone},
        {L"DefaultLangID", L"0411", orumcomn_get_language},
        {L"LastUpdate", nullptr, nullptr},
    };
    EXPECT_TRUE(properties.GetAllSystemProperties(report, file_systems));
    EXPECT_EQ(file_systems, (decltype(file_systems){{L"/", {L"100.00", L"55.00"}},
                                                    {L"/a\"b c", {L"1.00", L"0.00"}}}));
    EXPECT_EQ(report.size(), std::size(cases));
    for (const auto& [name, value, function] : cases) {
        SCOPED_TRACE(sysprops_wide_to_ansi(name));
        ASSERT_EQ(report.count(name), 1U);
        if (value != nullptr) {
            EXPECT_EQ(report[name], value);
        }
        // No category claims the count of file systems, so that alone it reads as empty.
        const bool claimed = name != NumFileSystems_Key;
        if (name != LastUpdate_Key) {
            const std::wstring expected = claimed ? report[name] : L"";
            EXPECT_EQ(properties.GetOneSystemProperty(name), expected);
            EXPECT_EQ(function != nullptr ? function() : expected, expected);
        }
    }
    EXPECT_EQ(properties.GetOneDiskProperty(NumFileSystems_Key), L"2");
    EXPECT_EQ(properties.GetOneSystemProperty(L"cputype"), L"");
    EXPECT_EQ(properties.GetOneCPUProperty(L"OSType") + orumcomn_get_file_system_name(0) +
                  orumcomn_get_file_system_free_space_by_name(L"/") +
                  orumcomn_get_file_system_total_space_by_name(L"/"),
              L"N/AN/AN/AN/A");
}

TEST_F(Access, OneMapHoldsTheFileSystemsUnderComposedKeys) {
    EXPECT_TRUE(properties.GetAllSystemProperties(report));
    EXPECT_EQ(report.size(), 29U + 4U);
    EXPECT_EQ(report.count(CPUPortable_Key) + report.count(L"stale"), 0U);
    EXPECT_EQ(report[L"FileSystem\"/\" Total_Disk_Space_in_MB"], L"100.00");
    EXPECT_EQ(report[L"FileSystem\"/a\"b c\" Free_Disk_Space_in_MB"], L"0.00");
    // Nothing is kept from an earlier call.
    script() = {};
    EXPECT_EQ(properties.GetOneSystemProperty(NumOfCPU_Key), L"N/A");
    EXPECT_TRUE(properties.GetAllSystemProperties(report));
    EXPECT_EQ(report.size(), 29U);
}

TEST_F(Access, AReportAsksEachQuestionOnceAndOnePropertyOnlyItsOwn) {
    properties.GetAllSystemProperties(report, file_systems);
    const std::set<std::string> different(script().asked.begin(), script().asked.end());
    EXPECT_EQ(different.size(), script().asked.size());
    script().asked.clear();
    properties.GetOneSystemProperty(FreeDiskSpace_Key);
    EXPECT_EQ(script().asked, std::vector<std::string>{"mounted_file_systems"});
}

}  // namespace
}  // namespace velora_com::qel::sysprops
