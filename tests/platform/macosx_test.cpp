// The Mac answerer against the imitated Mac: it asks the right questions, in the right sizes, takes every
// failure as "nothing" and keeps nothing.
#include <gmock/gmock.h>
#include <ifaddrs.h>
#include <net/if_dl.h>
#include <sys/sysctl.h>
#include <sys/time.h>

#include <cstddef>

#include "mac_imitation/mac_imitation.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {
namespace {

using mac_imitation::machine;
using testing::ElementsAre;
using testing::Optional;

class MacTest : public testing::Test {
protected:
    MacTest() { machine() = {}; }
};

struct statfs record(const std::string& mount_point, uint32_t block_size, uint64_t blocks,
                     uint64_t free_blocks, uint32_t flags) {
    struct statfs made = {block_size, blocks, free_blocks, free_blocks / 2, flags, {}};
    mount_point.copy(made.f_mntonname, sizeof made.f_mntonname);
    return made;
}

TEST_F(MacTest, KernelValuesAreAskedByNumberAndSize) {
    machine().set_kernel_value(CTL_HW, HW_NCPU, int32_t{2});
    machine().set_kernel_value(CTL_KERN, KERN_BOOTTIME, timeval{1190000000, 5});
    EXPECT_THAT(processor_count(), Optional(2));
    EXPECT_THAT(boot_time(), Optional(int64_t{1190000000}));
    EXPECT_THAT(machine().calls,
                ElementsAre("sysctl 6 3 4", "sysctl 1 21 " + std::to_string(sizeof(timeval))));
    machine().set_kernel_value(CTL_HW, HW_NCPU, int16_t{2});  // too short
    EXPECT_FALSE(processor_count());
    machine().failing = {"sysctl"};
    EXPECT_FALSE(boot_time() || nis_domain());
}

TEST_F(MacTest, TextsEndInsideTheirBuffers) {
    machine().model = std::string(256, 'm');
    machine().domain = std::string(2048, 'd');
    machine().kernel_values[{CTL_KERN, KERN_NISDOMAINNAME}] = machine().domain;
    EXPECT_THAT(hardware_model(), Optional(std::string(255, 'm')));
    EXPECT_THAT(domain_name(), Optional(machine().domain));
    EXPECT_THAT(nis_domain(), Optional(machine().domain));
    EXPECT_THAT(machine().calls,
                ElementsAre("sysctlbyname hw.model 256", "getdomainname 2048", "sysctl 1 22 2048"));
    machine().failing = {"sysctlbyname", "getdomainname"};
    EXPECT_FALSE(hardware_model() || domain_name());
}

TEST_F(MacTest, ProcessorIsAskedOfGestalt) {
    machine().gestalt = {{"pclk", static_cast<int>(2'500'000'000U)}, {"sysa", 2}, {"cput", 268}};
    EXPECT_THAT(processor_facts(), testing::FieldsAre(2'500'000'000U, 2, 268));
    EXPECT_THAT(machine().calls, ElementsAre("Gestalt pclk", "Gestalt sysa", "Gestalt cput"));
    machine().gestalt.clear();
    EXPECT_THAT(processor_facts(), testing::FieldsAre(std::nullopt, std::nullopt, std::nullopt));
}

TEST_F(MacTest, MemoryFiguresFailApartAndGiveTheHostPortBack) {
    machine().set_kernel_value(CTL_HW, HW_MEMSIZE, uint64_t{6} << 30);
    machine().page_size = 4096;
    machine().statistics.free_count = 4'000'000'000U;
    EXPECT_THAT(
        memory_facts(),
        testing::FieldsAre(uint64_t{6} << 30, Optional(testing::FieldsAre(4'000'000'000U, 4096U))));
    EXPECT_THAT(machine().calls,
                ElementsAre("sysctl 6 24 8", "host_page_size", "host_statistics 2 15"));
    for (const std::string function : {"sysctl", "host_page_size", "host_statistics"}) {
        machine().failing = {function};
        EXPECT_NE(memory_facts().installed.has_value(), function == "sysctl") << function;
        EXPECT_EQ(memory_facts().free.has_value(), function == "sysctl") << function;
    }
    EXPECT_EQ(machine().host_rights, 0);
}

TEST_F(MacTest, FileSystemsAreCountedThenRead) {
    const std::string longest(90, 'p');  // fills its field without a terminator
    machine().file_systems = {record("/", 4096, 1000, 400, MNT_LOCAL),
                              record("/net", 512, 2000, 900, 0),
                              record(longest, 4096, uint64_t{1} << 32, 1 << 30, MNT_LOCAL)};
    for (const auto& [counted, expected] : {std::pair{0, 0U}, {2, 2U}, {5, 3U}, {3, 3U}}) {
        machine().file_systems_counted = counted;
        machine().calls.clear();
        EXPECT_EQ(mounted_file_systems().size(), expected) << "when mounts come and go";
    }
    EXPECT_THAT(machine().calls, ElementsAre("getfsstat count 0 1", "getfsstat fill 3 1"));
    std::vector<std::tuple<std::string, int, int, int, bool>> listed;
    for (const MountedFileSystem& entry : mounted_file_systems()) {
        listed.emplace_back(entry.mount_point, entry.block_size, entry.blocks, entry.free_blocks,
                            entry.local);
    }
    EXPECT_THAT(listed, ElementsAre(std::tuple("/", 4096, 1000, 400, true),
                                    std::tuple("/net", 0, 0, 0, false),
                                    std::tuple(longest, 16384, 1 << 30, 1 << 28, true)));
    for (const char* function : {"getfsstat count", "getfsstat fill"}) {
        machine().failing = {function};
        EXPECT_TRUE(mounted_file_systems().empty()) << function;
    }
}

TEST_F(MacTest, AvailableSpaceIsThatOfOrdinaryUsers) {
    machine().file_systems = {record("/", 4096, 1000, 400, MNT_LOCAL)};
    EXPECT_THAT(available_space("/Users"), Optional(testing::FieldsAre(200U, 4096U)));
    EXPECT_THAT(machine().calls, ElementsAre("statfs /Users"));
    machine().failing = {"statfs"};
    EXPECT_FALSE(available_space("/Users"));
    EXPECT_EQ(errno, EIO);
}

TEST_F(MacTest, PropertyListStringsAreCopiedAndObjectsReleased) {
    const std::string longest(255, 'x');
    machine().dictionary = {{"version", "10.4.11"},
                            {"number", std::nullopt},
                            {"longest", longest},
                            {"too long", longest + "x"}};
    const std::string document("<plist>\0<", 9);
    EXPECT_THAT(
        property_list_strings(document, {"version", "number", "longest", "too long", "-"}),
        Optional(ElementsAre("10.4.11", std::nullopt, longest, std::nullopt, std::nullopt)));
    EXPECT_EQ(machine().document, document);
    EXPECT_EQ(machine().calls[1], "CFPropertyListCreateFromXMLData 0");
    machine().failing = {"CFStringCreateWithCString"};
    EXPECT_THAT(property_list_strings("x", {"version"}), Optional(ElementsAre(std::nullopt)));
    for (const char* function : {"CFDataCreate", "CFPropertyListCreateFromXMLData"}) {
        machine().failing = {function};
        EXPECT_FALSE(property_list_strings("x", {"version"})) << function;
    }
    machine().failing.clear();
    machine().top_level = mac_imitation::Kind::string;
    EXPECT_FALSE(property_list_strings("x", {"version"}));
    EXPECT_EQ(machine().objects, 0);
}

TEST_F(MacTest, LinkLayerAddressFollowsTheNameUpToTheStatedLength) {
    constexpr size_t header = offsetof(sockaddr_dl, sdl_data);
    sockaddr_dl link = {0, AF_LINK, 0, 0, 3, 6, 0, {'e', 'n', '0', 1, 2, 3, 4, 5, 6}};
    const std::pair<size_t, LinkLayerAddress> cases[] = {{sizeof link, {1, 2, 3, 4, 5, 6}},
                                                         {header + 3 + 4, {1, 2, 3, 4}},
                                                         {header + 3, {}},
                                                         {offsetof(sockaddr_dl, sdl_nlen), {}},
                                                         {2, {}}};
    for (const auto& [stated_length, expected] : cases) {
        SCOPED_TRACE(stated_length);
        link.sdl_len = static_cast<unsigned char>(stated_length);
        // A copy of exactly the stated length, so that a sanitizer sees a byte too many.
        const auto* const bytes = reinterpret_cast<const unsigned char*>(&link);
        std::vector<unsigned char> exact(bytes, bytes + stated_length);
        ifaddrs entry = {};
        entry.ifa_addr = reinterpret_cast<sockaddr*>(exact.data());
        EXPECT_THAT(link_layer_address(entry), Optional(expected));
        EXPECT_EQ(socket_address_size(*entry.ifa_addr, AF_INET), stated_length);
        exact[1] = AF_INET;
        EXPECT_EQ(link_layer_address(entry), std::nullopt);
    }
    EXPECT_EQ(link_layer_address(ifaddrs{}), std::nullopt);
}

}  // namespace
}  // namespace velora_com::qel::platform
