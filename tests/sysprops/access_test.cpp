// One property, all properties and what they ask of the machine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <thread>

#include "support/scripted_platform.h"
#include "sysprops/scripted_host.h"
#include "vlrcomn/agent_identity.h"  // declares a namesake of orumcomn_get_user_name
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Pair;

class Access : public ::testing::Test {
protected:
    void SetUp() override {
        script() = {};
        scripted_host() = {};
        script().processor_count = 2;
        script().processor_facts.architecture = 2;
        script().memory_facts.installed = 1000000;
        script().hardware_model = "PowerBook5,6";
        script().mounted_file_systems = {{"/", 4096, 25600, 14669, true},
                                         {"/a\"b c", 4096, 256, 0, true}};
    }

    ISysProps properties;
    std::map<std::wstring, std::wstring> report{{L"stale", L"entry"}};
    std::map<std::wstring, std::pair<std::wstring, std::wstring>> file_systems{
        {L"/stale", {L"1", L"1"}}};
};

TEST_F(Access, RecordsStartWithTheirDefaults) {
    const CPUInformation cpu;
    EXPECT_EQ(cpu.wstrCPUType + cpu.wstrCPUSpeed + cpu.wstrNumOfCPU + cpu.wstrCPUSerialNumber,
              L"N/AN/AN/AN/A");
    EXPECT_EQ(cpu.wstrIsPortable, L"");
    const OSInformation os;
    EXPECT_EQ(os.wstrPlatformID, L"");
    EXPECT_EQ(os.wstrOSType + os.wstrOSPlatform + os.wstrOSVersion + os.wstrOSCsdVersion +
                  os.wstrOSBuildNum + os.wstrOSOEMId + os.wstrOSBitMode,
              L"N/AN/AN/AN/AN/AN/AN/A");
    EXPECT_THAT(DiskInformation().mapFileSystems, IsEmpty());
}

TEST_F(Access, TwoMapsHoldEveryPropertyAndTheFileSystemsApart) {
    EXPECT_TRUE(properties.GetAllSystemProperties(report, file_systems));
    EXPECT_EQ(report.size(), 30U);
    EXPECT_THAT(report, Contains(Pair(L"IsPortable", L"1")));
    EXPECT_THAT(report, Contains(Pair(L"NumberOfFileSystems", L"2")));
    EXPECT_EQ(file_systems, (decltype(file_systems){{L"/", {L"100.00", L"55.00"}},
                                                    {L"/a\"b c", {L"1.00", L"0.00"}}}));
}

TEST_F(Access, OneMapHoldsTheFileSystemsUnderComposedKeys) {
    EXPECT_TRUE(properties.GetAllSystemProperties(report));
    EXPECT_EQ(report.size(), 29U + 4U);
    EXPECT_EQ(report.count(L"IsPortable"), 0U);
    EXPECT_EQ(report.count(L"stale"), 0U);
    EXPECT_THAT(report, Contains(Pair(L"FileSystem\"/\" Total_Disk_Space_in_MB", L"100.00")));
    EXPECT_THAT(report, Contains(Pair(L"FileSystem\"/\" Free_Disk_Space_in_MB", L"55.00")));
    EXPECT_THAT(report, Contains(Pair(L"FileSystem\"/a\"b c\" Total_Disk_Space_in_MB", L"1.00")));
}

TEST_F(Access, NothingIsKeptFromAnEarlierCall) {
    properties.GetAllSystemProperties(report);
    script() = {};
    EXPECT_TRUE(properties.GetAllSystemProperties(report));
    EXPECT_EQ(report.size(), 29U);
    EXPECT_EQ(report[L"NumOfCPU"], L"N/A");
    EXPECT_EQ(properties.GetOneCPUProperty(L"NumOfCPU"), L"N/A");
    EXPECT_EQ(report[L"PlatformID"], L"MAC");
}

TEST_F(Access, AReportAsksEachQuestionOnce) {
    properties.GetAllSystemProperties(report, file_systems);
    const std::set<std::string> different(script().asked.begin(), script().asked.end());
    EXPECT_EQ(different.size(), script().asked.size());
    EXPECT_THAT(script().asked, Contains("mounted_file_systems"));
}

TEST_F(Access, OnePropertyRunsOnlyItsCollector) {
    const struct {
        const wchar_t* name;
        std::set<std::string> asks;
    } cases[] = {
        {L"TotalPhysicalMemory", {"memory_facts"}},
        {L"FreeDiskSpace", {"mounted_file_systems"}},
        {L"CPUSerialNumber", {"processor_count", "processor_facts", "hardware_model"}},
        {L"DomainName", {"nis_domain", "domain_name"}},
        {L"OSVersion", {}},
        {L"LastUpdate", {}},
        {L"NumberOfFileSystems", {}},
        {L"no such name", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.name, c.name + std::wcslen(c.name)));
        script().asked.clear();
        properties.GetOneSystemProperty(c.name);
        EXPECT_EQ(std::set<std::string>(script().asked.begin(), script().asked.end()), c.asks);
    }
}

TEST_F(Access, NamesBelongToOneCategory) {
    properties.GetAllSystemProperties(report, file_systems);
    for (const auto& [name, value] : report) {
        SCOPED_TRACE(sysprops_wide_to_ansi(name));
        const int claims = properties.IsNetworkProperty(name) + properties.IsCPUProperty(name) +
                           properties.IsMemoryProperty(name) + properties.IsMiscProperty(name) +
                           properties.IsDiskProperty(name) + properties.IsOSProperty(name);
        EXPECT_EQ(claims, name == L"NumberOfFileSystems" ? 0 : 1);
        if (name != L"NumberOfFileSystems" && name != L"LastUpdate") {
            EXPECT_EQ(properties.GetOneSystemProperty(name), value);
        }
    }
    EXPECT_EQ(properties.GetOneDiskProperty(L"NumberOfFileSystems"), L"2");
    for (const wchar_t* name : {L"NumberOfFileSystems", L"SystemInfo", L"FileSystem", L"cputype",
                                L"CPUType ", L"", L"FileSystem\"/\" Free_Disk_Space_in_MB"}) {
        EXPECT_EQ(properties.GetOneSystemProperty(name), L"");
    }
    EXPECT_EQ(properties.GetOneCPUProperty(L"OSType"), L"N/A");
    EXPECT_EQ(properties.GetOneNetworkProperty(L"cputype"), L"N/A");
    EXPECT_EQ(properties.GetOneMemoryProperty(L""), L"N/A");
    EXPECT_EQ(properties.GetOneMiscProperty(L""), L"N/A");
    EXPECT_EQ(properties.GetOneDiskProperty(L""), L"N/A");
    EXPECT_EQ(properties.GetOneOSProperty(L""), L"N/A");
}

TEST_F(Access, ExportedFunctionsAnswerTheirProperty) {
    properties.GetAllSystemProperties(report, file_systems);
    const std::pair<std::wstring (*)(), const wchar_t*> functions[] = {
        {orumcomn_get_cpu_type, L"CPUType"},
        {orumcomn_get_cpu_speed, L"CPUSpeed"},
        {orumcomn_get_number_of_processors, L"NumOfCPU"},
        {orumcomn_get_cpu_serial_number, L"CPUSerialNumber"},
        {orumcomn_get_domain_name, L"DomainName"},
        {orumcomn_get_computer_name, L"ComputerName"},
        {orumcomn_get_ip_address, L"IPAddress"},
        {orumcomn_get_subnet_address, L"SubnetAddress"},
        {orumcomn_get_subnet_mask, L"SubnetMask"},
        {orumcomn_get_mac_address, L"NETAddress"},
        {orumcomn_get_ipx_address, L"IPXAddress"},
        {orumcomn_get_fqdn_address, L"IPHostName"},
        {orumcomn_get_total_memory, L"TotalPhysicalMemory"},
        {orumcomn_get_free_memory, L"FreeMemory"},
        {orumcomn_get_total_disk_space, L"TotalDiskSpace"},
        {orumcomn_get_free_disk_space, L"FreeDiskSpace"},
        {orumcomn_get_os_type, L"OSType"},
        {orumcomn_get_os_platform, L"OSPlatform"},
        {orumcomn_get_os_version, L"OSVersion"},
        {orumcomn_get_os_service_pack, L"OSCsdVersion"},
        {orumcomn_get_os_build_number, L"OSBuildNum"},
        {orumcomn_get_os_oem_id, L"OSOEMId"},
        {orumcomn_get_os_platform_id, L"PlatformID"},
        {orumcomn_get_user_name, L"UserName"},
        {orumcomn_get_time_zone, L"TimeZone"},
        {orumcomn_get_language, L"DefaultLangID"},
    };
    for (const auto& [function, name] : functions) {
        EXPECT_EQ(function(), report.at(name)) << sysprops_wide_to_ansi(name);
    }
    char user[64];
    EXPECT_EQ(orumcomn_get_user_name(user, sizeof user), ORU_SUCCESS);
    EXPECT_EQ(orumcomn_get_last_update_time().size(), 19U);
    EXPECT_EQ(orumcomn_get_number_of_file_systems(), L"");
    script().asked.clear();
    EXPECT_EQ(orumcomn_get_file_system_name(0) + orumcomn_get_file_system_name(-1) +
                  orumcomn_get_file_system_free_space_by_name(L"/") +
                  orumcomn_get_file_system_total_space_by_name(L"/"),
              L"N/AN/AN/AN/A");
    EXPECT_THAT(script().asked, IsEmpty());
}

TEST_F(Access, LastKnownAddressIsSharedAndWhole) {
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), L"");
    const std::wstring first(40, L'1'), second(300, L'2');
    orumcomn_set_local_ip_addr(first);
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), first);
    std::thread writer([&] {
        for (int i = 0; i < 2000; ++i) {
            ISysProps::updateLocalIP(i % 2 == 0 ? second : first);
        }
    });
    for (int i = 0; i < 2000; ++i) {
        const std::wstring seen = ISysProps::GetLastKnownLocalIP();
        EXPECT_TRUE(seen == first || seen == second);
    }
    writer.join();
    ISysProps::updateLocalIP(L"");
}

TEST(TextConversion, GoesThroughUtf8) {
    EXPECT_EQ(sysprops_wide_to_ansi(L""), "");
    EXPECT_EQ(sysprops_wide_to_ansi(L"Gr\u00fc\u00dfe \u65e5\U0001F600"),
              "Gr\xc3\xbc\xc3\x9f"
              "e \xe6\x97\xa5\xf0\x9f\x98\x80");
    EXPECT_EQ(sysprops_ansi_to_wide("Gr\xc3\xbc\xc3\x9f"
                                    "e \xe6\x97\xa5\xf0\x9f\x98\x80"),
              L"Gr\u00fc\u00dfe \u65e5\U0001F600");
    EXPECT_EQ(sysprops_ansi_to_wide("up to\xff the fault"), L"up to");
    EXPECT_EQ(sysprops_wide_to_ansi(std::wstring(L"up to") + wchar_t{0xD800} + L" the fault"),
              "up to");
}

}  // namespace
}  // namespace velora_com::qel::sysprops
