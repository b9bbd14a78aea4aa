#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

#include "vlrcomn/system_properties.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel::sysprops {
namespace {

// On the real machine.
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
    const auto work = [&] {
        for (int i = 0; i < 10; ++i) {
            tm start = {};
            start.tm_mday = 1;
            vlrcomn_timegm(&start);  // reads as UTC, which must not show
            orumcomn_set_local_ip_addr(addresses[i % 2]);
            const std::wstring last_known = ISysProps::GetLastKnownLocalIP();
            EXPECT_TRUE(last_known == addresses[0] || last_known == addresses[1]);
            EXPECT_EQ(steady_report(), alone);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(work);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
}  // namespace velora_com::qel::sysprops
