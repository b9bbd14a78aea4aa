// Every exported function while the machine fails it: its first allocation, read or lock, its second, and
// so on.
#include <gtest/gtest.h>

#include "support/fault_injection.h"
#include "support/scripted_platform.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {
namespace {

using platform::script;

// Calls `body` with its first listed call failing, then its second, until none is left. An exception that
// leaves the library fails the test.
template <typename Body>
void starve(Body body) {
    bool fired = true;
    int nth = 0;
    while (fired && ++nth < 5000) {
        bool thrown = false;
        fault_injection::FailNth failure(nth);
        try {
            body();
        } catch (const std::exception&) {
            thrown = true;
        }
        failure.disarm();
        fired = failure.fired() != nullptr;
        EXPECT_FALSE(thrown) << "call " << nth << ", " << failure.fired();
    }
    EXPECT_GT(nth, 1) << "nothing can fail here; the test shows nothing";
}

class NoMemory : public ::testing::Test {
protected:
    void SetUp() override {
        script().processor_count = 1;
        script().processor_facts.architecture = 10;
        script().processor_facts.type = 268;
        script().hardware_model = std::string(200, 'm');
        script().memory_facts.installed = 1000000;
        script().memory_facts.free = platform::FreePages{57, 10000};
        script().mounted_file_systems = {{"/a mount point of some length", 4096, 25600, 1, true}};
        script().system_version_file = "/proc/self/exe";  // any file: what it says is scripted
        script().property_list = {{{"ProductVersion", std::string(100, '1')}}};
        script().nis_domain = std::string(100, 'd');
    }

    ISysProps properties;
};

TEST_F(NoMemory, CollectorsFail) {
    starve([&] {
        CPUInformation info;
        properties.GetCPUInformation(info);
    });
    starve([&] {
        MemoryInformation info;
        properties.GetMemoryInformation(info);
    });
    starve([&] {
        DiskInformation info;
        properties.GetDiskInformation(info);
    });
    starve([&] {
        MiscInformation info;
        properties.GetMiscInformation(info);
    });
    starve([&] {
        OSInformation info;
        properties.GetOSInformation(info);
    });
    starve([&] {
        NetworkInformation info;
        properties.GetNetworkInformation(info);
    });
}

TEST_F(NoMemory, ReportLeavesTheMapsAsTheyWere) {
    bool half_filled = false;
    starve([&] {
        std::map<std::wstring, std::wstring> report;
        const bool collected = properties.GetAllSystemProperties(report);
        half_filled |= collected ? report.size() < 29 : !report.empty();
    });
    EXPECT_FALSE(half_filled);
}

TEST_F(NoMemory, SingleValuesFallBack) {
    bool other = false;
    starve([&] {
        const std::wstring value = orumcomn_get_total_memory();
        other |= value != L"1000000" && value != L"N/A" && !value.empty();
    });
    EXPECT_FALSE(other);
    starve([] { getDomainName(); });
    starve([] { getFqdnAddress(); });
    starve([] { orumcomn_get_os_version(); });
    starve([] {
        bool portable;
        IsPortableComputer(portable);
    });
}

TEST_F(NoMemory, LastKnownAddressKeepsItsValue) {
    ISysProps::updateLocalIP(std::wstring(50, L'1'));
    const std::wstring next(60, L'2');
    starve([&] { ISysProps::updateLocalIP(next); });
    starve([&] { ISysProps::GetLastKnownLocalIP(); });
    EXPECT_EQ(ISysProps::GetLastKnownLocalIP(), next);
}

}  // namespace
}  // namespace velora_com::qel::sysprops
