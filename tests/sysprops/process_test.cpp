#include "support/test.h"
#include "vlrcomn/system_properties.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel::sysprops;

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
    together(3, [&](int number) {
        for (int i = 0; i < 10; ++i) {
            tm start = {};
            start.tm_mday = 1;
            velora_com::qel::vlrcomn_timegm(&start);  // reads as UTC, which must not show
            orumcomn_set_local_ip_addr(std::wstring(100, L"123"[number]));
            const std::wstring last_known = ISysProps::GetLastKnownLocalIP();
            EXPECT_EQ(last_known, std::wstring(100, last_known[0]));
            EXPECT_EQ(steady_report(), alone);
        }
    });
}
