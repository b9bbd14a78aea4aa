// Every collector and kind of function while the machine fails it: its first allocation, read or lock, its
// second, and so on. What leaves the library as an exception fails the test.
#include <gtest/gtest.h>

#include "support/fault_injection.h"
#include "sysprops/scripted_machine.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

// `call` tells whether it succeeded.
template <typename Call>
void fail_each_step(Call call) {
    const auto undone = [&] {
        const bool succeeded = call();
        platform::script().asked = {};
        return succeeded;
    };
    EXPECT_GT(fault_injection::walk_failures(undone, [] {}).calls, 0) << "nothing can fail here";
}

template <typename Record, typename Result>
void fail_each_step_of(Result (ISysProps::*collect)(Record&), bool succeeds = true) {
    fail_each_step([=] {
        Record record;
        return static_cast<bool>((ISysProps().*collect)(record)) || !succeeds;
    });
}

TEST(NoMemory, EveryCallFailsCleanly) {
    script_machine();
    const std::wstring long_domain(100, L'd');
    platform::script().nis_domain = std::string(100, 'd');
    fail_each_step_of(&ISysProps::GetCPUInformation);
    fail_each_step_of(&ISysProps::GetMemoryInformation);
    fail_each_step_of(&ISysProps::GetDiskInformation);
    fail_each_step_of(&ISysProps::GetMiscInformation);
    fail_each_step_of(&ISysProps::GetOSInformation);
    fail_each_step_of(&ISysProps::GetNetworkInformation, false);  // there is no address
    fail_each_step([&] { return getDomainName() == long_domain; });
    fail_each_step([] { return !getFqdnAddress().empty(); });

    bool as_it_was = true;
    fail_each_step([&] {
        std::map<std::wstring, std::wstring> report;
        const bool collected = ISysProps().GetAllSystemProperties(report);
        as_it_was &= collected == !report.empty();
        return collected;
    });
    fail_each_step([&] {
        const std::wstring value = orumcomn_get_domain_name();
        as_it_was &=
            value == long_domain || value == L"UnKnownDomain" || value == L"N/A" || value.empty();
        return value == long_domain;
    });
    fail_each_step([&] {
        ISysProps::updateLocalIP(long_domain);
        const std::wstring kept = ISysProps::GetLastKnownLocalIP();
        as_it_was &= kept == long_domain || kept.empty();
        return kept == long_domain;
    });
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), long_domain);
    EXPECT_TRUE(as_it_was);
}

}  // namespace
}  // namespace velora_com::qel::sysprops
