// Reports taken by several threads at once, of the machine as it is.
#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

#include "vlrcomn/system_properties.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel {
namespace {

using Report = std::map<std::wstring, std::wstring>;

Report steady_report() {
    Report report;
    sysprops::ISysProps().GetAllSystemProperties(report);
    for (const std::wstring& name :
         {sysprops::LastUpdate_Key, sysprops::CPUSpeed_Key, sysprops::FreeMemory_Key,
          sysprops::FreeDiskSpace_Key, sysprops::TotalDiskSpace_Key}) {
        report.erase(name);
    }
    // File systems come, go and fill up while other tests run; NumberOfFileSystems goes with them.
    for (auto entry = report.begin(); entry != report.end();) {
        entry = entry->first.find(sysprops::FileSystemName) != std::wstring::npos
                    ? report.erase(entry)
                    : std::next(entry);
    }
    return report;
}

TEST(Threads, TakeReportsAtOnceAndMeetNoForeignZone) {
    setenv("TZ", "XYZ-3", 1);
    const Report alone = steady_report();
    EXPECT_EQ(alone.at(sysprops::TimeZone_Key), L"XYZ");
    std::vector<std::thread> threads;
    std::vector<int> differing(4);
    for (int& count : differing) {
        threads.emplace_back([&] {
            for (int i = 0; i < 10; ++i) {
                tm start = {};
                start.tm_year = 70;
                start.tm_mday = 1;
                vlrcomn_timegm(&start);  // reads as UTC, which must not show
                orumcomn_set_local_ip_addr(L"");
                count += steady_report() == alone ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(differing, std::vector<int>(4));
}

}  // namespace
}  // namespace velora_com::qel
