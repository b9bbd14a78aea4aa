// Every collector and kind of function while the machine fails it: its first allocation, read or lock, its
// second, and so on. What leaves the library as an exception fails the test.
#include <gtest/gtest.h>

#include "support/fault_injection.h"
#include "support/scripted_platform.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

template <typename Call>
void fail_each_step(Call call) {
    const auto undone = [&] {
        const bool succeeded = call();
        script().asked = {};
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
    script().processor_count = 1;
    script().processor_facts.architecture = 10;
    script().hardware_model = std::string(200, 'm');
    script().memory_facts = {1000000, {{57, 10000}}};
    script().mounted_file_systems = {{"/a mount point of some length", 4096, 25600, 1, true}};
    script().system_version_file = "/etc/passwd";  // any file: what it says is scripted
    script().property_list = {{{"ProductVersion", std::string(100, '1')}}};
    script().nis_domain = std::string(100, 'd');

    fail_each_step_of(&ISysProps::GetCPUInformation);
    fail_each_step_of(&ISysProps::GetMemoryInformation);
    fail_each_step_of(&ISysProps::GetDiskInformation);
    fail_each_step_of(&ISysProps::GetMiscInformation);
    fail_each_step_of(&ISysProps::GetOSInformation);
    fail_each_step_of(&ISysProps::GetNetworkInformation, false);  // there is no address
    fail_each_step([] { return getDomainName().size() == 100; });
    fail_each_step([] { return !getFqdnAddress().empty(); });

    bool as_it_was = true;
    fail_each_step([&] {
        std::map<std::wstring, std::wstring> report;
        const bool collected = ISysProps().GetAllSystemProperties(report);
        as_it_was &= collected ? report.size() >= 29 : report.empty();
        return collected;
    });
    fail_each_step([&] {
        const std::wstring value = orumcomn_get_total_memory();
        as_it_was &= value == L"1000000" || value == L"N/A" || value.empty();
        return value == L"1000000";
    });
    const std::wstring address(60, L'2');
    fail_each_step([&] {
        ISysProps::updateLocalIP(address);
        const std::wstring kept = ISysProps::GetLastKnownLocalIP();
        as_it_was &= kept == address || kept.empty();
        return kept == address;
    });
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), address);
    EXPECT_TRUE(as_it_was);
}

}  // namespace
}  // namespace velora_com::qel::sysprops
