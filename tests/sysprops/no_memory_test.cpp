// A report while the machine fails it: its first allocation, read or lock, its second, and so on. What leaves
// the library as an exception fails the test.
#include <gtest/gtest.h>

#include "support/fault_injection.h"
#include "sysprops/scripted_machine.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using fault_injection::walk_failures;

TEST(NoMemory, EveryCallFailsCleanly) {
    script_machine();
    std::map<std::wstring, std::wstring> report;
    const auto collect = [&] {
        const bool collected = ISysProps().GetAllSystemProperties(report);
        platform::script().asked = {};
        return collected;
    };
    const auto walk = walk_failures(collect, [&] {
        EXPECT_GE(report.size(), 29U);
        report.clear();
    });
    EXPECT_GT(walk.calls - walk.tolerated, 29);
    EXPECT_GT(walk.tolerated, 29) << "what cannot be found is left out";

    const std::wstring long_text(100, L'1');
    const auto update = [&] {
        ISysProps::updateLocalIP(long_text);
        return ISysProps::GetLastKnownLocalIP() == long_text;
    };
    EXPECT_GT(walk_failures(update, [] {}).calls, 1);
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), long_text);
}

}  // namespace
}  // namespace velora_com::qel::sysprops
