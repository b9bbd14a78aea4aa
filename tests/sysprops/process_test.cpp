// The shared library in a process: complete from the start, used by several threads at once.
#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

#include "vlrcomn/system_properties.h"
#include "vlrcomn/time_text.h"

extern const std::wstring early_copies;

namespace velora_com::qel::sysprops {
namespace {

TEST(EarlyConstants, AreReadByAnotherLibrarysStaticInitialiser) {
    EXPECT_EQ(early_copies,
              L"SystemInfo Total_Disk_Space_in_MB /etc/redhat-release General Task UserName N/A");
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), L"192.0.2.1") << "handed in that early";
    // A slip in these would otherwise show on the server only.
    EXPECT_EQ(workstation + unknown_domain + platform_solaris + os_solaris + os_platform_ini,
              L"LinuxUnKnownDomainSLRSunOS Sparc/etc/qel.d/osinfo.ini");
    EXPECT_EQ(server_strings + suse_server_strings,
              ", Server , Enterprise , AS , ES , WS , Server ");
}

TEST(NetworkFunctions, GiveTheirProperties) {
    std::map<std::wstring, std::wstring> report;
    ISysProps().GetAllSystemProperties(report);
    EXPECT_EQ(orumcomn_get_ip_address(), report[IPAddress_Key]);
    EXPECT_EQ(orumcomn_get_subnet_address(), report[SubnetAddress_Key]);
    EXPECT_EQ(orumcomn_get_subnet_mask(), report[SubnetMask_Key]);
    EXPECT_EQ(orumcomn_get_mac_address(), report[NETAddress_Key]);
}

TEST(Threads, TakeReportsAtOnceAndMeetNoForeignZone) {
    setenv("TZ", "XYZ-3", 1);
    const auto steady_report = [] {
        std::map<std::wstring, std::wstring> report;
        ISysProps().GetAllSystemProperties(report);
        return report[TimeZone_Key] + report[ComputerName_Key] + report[IPHostName_Key] +
               report[UserName_Key] + report[CPUType_Key] + report[OSType_Key];
    };
    const std::wstring alone = steady_report();
    EXPECT_EQ(alone.substr(0, 3), L"XYZ");
    const std::wstring addresses[] = {std::wstring(40, L'1'), std::wstring(300, L'2')};
    orumcomn_set_local_ip_addr(addresses[0]);
    std::vector<int> differing(4);
    std::vector<std::thread> threads;
    for (int& count : differing) {
        threads.emplace_back([&] {
            for (int i = 0; i < 10; ++i) {
                tm start = {};
                start.tm_year = 70;
                start.tm_mday = 1;
                vlrcomn_timegm(&start);  // reads as UTC, which must not show
                orumcomn_set_local_ip_addr(addresses[i % 2]);
                const std::wstring last_known = ISysProps::GetLastKnownLocalIP();
                count += last_known != addresses[0] && last_known != addresses[1];
                count += steady_report() != alone;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(differing, std::vector<int>(4));
}

}  // namespace
}  // namespace velora_com::qel::sysprops
