// The Mac answerer against the imitated Mac: what it asks, and that each failure reads as nothing.
#include <CoreServices/CoreServices.h>
#include <ifaddrs.h>
#include <net/if_dl.h>
#include <sys/sysctl.h>
#include <sys/time.h>

#include "mac_imitation/mac_imitation.h"
#include "platform/platform.h"
#include "support/test.h"

using namespace velora_com::qel::platform;

using mac_imitation::Kind;
using mac_imitation::machine;
using testing::FieldsAre;
using testing::Optional;

struct MacTest : testing::Test {
    MacTest() { machine = {}; }
};

TEST_F(MacTest, KernelValuesAreAskedByNumberAndSize) {
    machine.set_kernel_value(CTL_HW, HW_NCPU, int32_t{2});
    machine.set_kernel_value(CTL_KERN, KERN_BOOTTIME, timeval{1190000000, 5});
    EXPECT_EQ(processor_count(), 2);
    EXPECT_EQ(boot_time(), 1190000000);
    // Texts end inside their buffers.
    machine.model = std::string(256, 'm');
    machine.domain = machine.kernel_values[{CTL_KERN, KERN_NISDOMAINNAME}] = std::string(2048, 'd');
    EXPECT_EQ(hardware_model(), std::string(255, 'm'));
    EXPECT_EQ(domain_name(), machine.domain);
    EXPECT_EQ(nis_domain(), machine.domain);
    EXPECT_THAT(machine.calls,
                ElementsAre("sysctl 6 3 4", "sysctl 1 21 " + std::to_string(sizeof(timeval)),
                            "sysctlbyname hw.model 256", "getdomainname 2048", "sysctl 1 22 2048"));
    machine.set_kernel_value(CTL_HW, HW_NCPU, int16_t{2});  // too short
    machine.failing = {"sysctlbyname", "getdomainname"};
    EXPECT_FALSE(processor_count() || hardware_model() || domain_name());
    machine.failing = {"sysctl"};
    EXPECT_FALSE(boot_time() || nis_domain());
}

TEST_F(MacTest, ProcessorAndMemoryFailApartAndGiveTheHostPortBack) {
    machine.gestalt = {{gestaltProcClkSpeed, static_cast<int>(2'500'000'000U)},
                       {gestaltSysArchitecture, 2},
                       {gestaltNativeCPUtype, 268}};
    EXPECT_THAT(processor_facts(), FieldsAre(2'500'000'000U, 2, 268));
    machine.failing = {"Gestalt"};
    EXPECT_THAT(processor_facts(), FieldsAre(std::nullopt, std::nullopt, std::nullopt));
    machine.calls.clear();
    machine.set_kernel_value(CTL_HW, HW_MEMSIZE, uint64_t{6} << 30);
    machine.page_size = 4096;
    machine.statistics.free_count = 4'000'000'000U;
    EXPECT_THAT(memory_facts(),
                FieldsAre(uint64_t{6} << 30, Optional(FieldsAre(4'000'000'000U, 4096U))));
    EXPECT_THAT(machine.calls,
                ElementsAre("sysctl 6 24 8", "host_page_size", "host_statistics 2 15"));
    for (const std::string function : {"sysctl", "host_page_size", "host_statistics"}) {
        machine.failing = {function};
        EXPECT_NE(memory_facts().installed.has_value(), function == "sysctl") << function;
        EXPECT_EQ(memory_facts().free.has_value(), function == "sysctl") << function;
    }
    EXPECT_EQ(machine.host_rights, 0);
}

TEST_F(MacTest, FileSystemsAreCountedThenRead) {
    machine.file_systems = {{4096, 1000, 400, 200, MNT_LOCAL, "/"},
                            {512, 2000, 900, 800, 0, "/net"},
                            {4096, INT32_MAX, 5, 5, MNT_LOCAL, ""},
                            {4096, -1, -1, -1, MNT_LOCAL, "/unknown"}};
    const std::string longest(90, 'p');  // fills its field without a terminator
    longest.copy(machine.file_systems[2].f_mntonname, longest.size());
    for (const auto& [counted, expected] : {std::pair{0, 0U}, {2, 2U}, {6, 4U}, {4, 4U}}) {
        machine.file_systems_counted = counted;
        machine.calls.clear();
        EXPECT_EQ(mounted_file_systems().size(), expected) << "when mounts come and go";
    }
    EXPECT_THAT(machine.calls, ElementsAre("getfsstat count 0 1", "getfsstat fill 4 1"));
    EXPECT_THAT(mounted_file_systems(), ElementsAre(FieldsAre("/", 4096, 1000, 400, true),
                                                    FieldsAre("/net", 0, 0, 0, false),
                                                    FieldsAre(longest, 4096, INT32_MAX, 5, true),
                                                    FieldsAre("/unknown", 0, 0, 0, true)));
    for (const char* function : {"getfsstat count", "getfsstat fill"}) {
        machine.failing = {function};
        EXPECT_TRUE(mounted_file_systems().empty()) << function;
    }
    EXPECT_THAT(available_space("/Users"), Optional(FieldsAre(200U, 4096U)));
    EXPECT_EQ(machine.calls.back(), "statfs /Users");
    machine.failing = {"statfs"};
    EXPECT_FALSE(available_space("/Users"));
    EXPECT_EQ(errno, EIO);
}

TEST_F(MacTest, PropertyListStringsAreCopiedAndObjectsReleased) {
    const std::string longest(255, 'x');
    auto& list = machine.property_list = {Kind::dictionary, {}, {}};
    list.values = {{"version", {Kind::string, "10.4.11", {}}},
                   {"number", {Kind::other, {}, {}}},
                   {"longest", {Kind::string, longest, {}}},
                   {"too long", {Kind::string, longest + "x", {}}}};
    const std::string document("<plist>\0<", 9);
    EXPECT_THAT(
        property_list_strings(document, {"version", "number", "longest", "too long", "-"}),
        Optional(ElementsAre("10.4.11", std::nullopt, longest, std::nullopt, std::nullopt)));
    EXPECT_EQ(machine.calls[0] + machine.calls[1],
              "CFDataCreate " + document + "CFPropertyListCreateFromXMLData 0");
    machine.failing = {"CFStringCreateWithCString"};
    EXPECT_THAT(property_list_strings("x", {"version"}), Optional(ElementsAre(std::nullopt)));
    for (const char* function : {"CFDataCreate", "CFPropertyListCreateFromXMLData"}) {
        machine.failing = {function};
        EXPECT_FALSE(property_list_strings("x", {"version"})) << function;
    }
    machine.failing.clear();
    list.kind = Kind::string;
    EXPECT_FALSE(property_list_strings("x", {"version"}));
    EXPECT_EQ(machine.objects, 0);
}

TEST_F(MacTest, LinkLayerAddressFollowsTheNameUpToTheStatedLength) {
    const std::string bytes("\0\22\0\0\0\3\6\0en0\1\2\3\4\5\6", 17);  // AF_LINK, a name of 3
    const std::pair<size_t, LinkLayerAddress> cases[] = {
        {17, {1, 2, 3, 4, 5, 6}}, {15, {1, 2, 3, 4}}, {11, {}}, {5, {}}, {2, {}}};
    for (const auto& [stated_length, expected] : cases) {
        // A copy of exactly the stated length, so that a sanitizer sees a byte too many.
        std::vector<char> exact(bytes.begin(), bytes.begin() + static_cast<int>(stated_length));
        exact[0] = static_cast<char>(stated_length);
        ifaddrs entry = {};
        entry.ifa_addr = reinterpret_cast<sockaddr*>(exact.data());
        EXPECT_EQ(link_layer_address(entry), expected);
        EXPECT_EQ(socket_address_size(*entry.ifa_addr, AF_INET), stated_length);
        exact[1] = AF_INET;
        EXPECT_EQ(link_layer_address(entry), std::nullopt);
    }
    EXPECT_EQ(link_layer_address(ifaddrs{}), std::nullopt);
}
