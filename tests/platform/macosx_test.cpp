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

using mac_imitation::Dictionary;
using mac_imitation::machine;
using testing::ElementsAre;
using testing::Optional;

class MacTest : public testing::Test {
protected:
    MacTest() { machine() = {}; }
};

struct statfs record(const char* mount_point, uint32_t block_size, uint64_t blocks,
                     uint64_t free_blocks, uint32_t flags) {
    struct statfs made = {block_size, blocks, free_blocks, free_blocks / 2, flags, {}};
    std::string_view(mount_point).copy(made.f_mntonname, sizeof made.f_mntonname);
    return made;
}

TEST_F(MacTest, KernelValuesAreAskedByNumberAndSize) {
    machine().set_kernel_value(CTL_HW, HW_NCPU, int32_t{2});
    machine().set_kernel_value(CTL_HW, HW_MEMSIZE, uint64_t{6} << 30);
    machine().set_kernel_value(CTL_KERN, KERN_BOOTTIME, timeval{1190000000, 5});
    machine().kernel_values[{CTL_KERN, KERN_NISDOMAINNAME}] = "example";
    EXPECT_THAT(processor_count(), Optional(2));
    EXPECT_THAT(installed_memory(), Optional(uint64_t{6} << 30));
    EXPECT_THAT(boot_time(), Optional(int64_t{1190000000}));
    EXPECT_THAT(nis_domain(), Optional(std::string("example")));
    EXPECT_THAT(machine().calls,
                ElementsAre("sysctl 6 3 4", "sysctl 6 24 8",
                            "sysctl 1 21 " + std::to_string(sizeof(timeval)), "sysctl 1 22 2048"));
}

TEST_F(MacTest, RefusedOrShortKernelValuesAreNothing) {
    EXPECT_EQ(processor_count(), std::nullopt);
    EXPECT_EQ(installed_memory(), std::nullopt);
    EXPECT_EQ(boot_time(), std::nullopt);
    EXPECT_EQ(nis_domain(), std::nullopt);
    machine().set_kernel_value(CTL_HW, HW_MEMSIZE, uint32_t{1} << 30);
    EXPECT_EQ(installed_memory(), std::nullopt);
}

TEST_F(MacTest, TextsEndInsideTheirBuffers) {
    machine().model = std::string(256, 'm');
    EXPECT_THAT(hardware_model(), Optional(std::string(255, 'm')));
    machine().domain = std::string(2048, 'd');
    EXPECT_THAT(domain_name(), Optional(machine().domain));
    machine().kernel_values[{CTL_KERN, KERN_NISDOMAINNAME}] = machine().domain;
    EXPECT_THAT(nis_domain(), Optional(machine().domain));
    EXPECT_THAT(machine().calls,
                ElementsAre("sysctlbyname hw.model 256", "getdomainname 2048", "sysctl 1 22 2048"));
    machine().failing = {"sysctlbyname", "getdomainname"};
    EXPECT_EQ(hardware_model(), std::nullopt);
    EXPECT_EQ(domain_name(), std::nullopt);
}

TEST_F(MacTest, ProcessorIsAskedOfGestalt) {
    machine().gestalt = {{"pclk", static_cast<int>(2'500'000'000U)}, {"sysa", 2}, {"cput", 268}};
    EXPECT_THAT(processor_clock_hz(), Optional(uint64_t{2'500'000'000}));
    EXPECT_THAT(architecture_code(), Optional(2));
    EXPECT_THAT(processor_type_code(), Optional(268));
    EXPECT_THAT(machine().calls, ElementsAre("Gestalt pclk", "Gestalt sysa", "Gestalt cput"));
    machine().gestalt.clear();
    EXPECT_EQ(processor_clock_hz(), std::nullopt);
    EXPECT_EQ(architecture_code(), std::nullopt);
    EXPECT_EQ(processor_type_code(), std::nullopt);
}

TEST_F(MacTest, FreePagesGiveTheHostPortBack) {
    machine().page_size = 4096;
    machine().statistics.free_count = 4'000'000'000U;
    const auto pages = free_pages();
    ASSERT_TRUE(pages);
    EXPECT_EQ(pages->count, 4'000'000'000U);
    EXPECT_EQ(pages->page_size, 4096U);
    EXPECT_THAT(machine().calls, ElementsAre("host_statistics 2 15"));
    for (const char* function : {"host_page_size", "host_statistics"}) {
        machine().failing = {function};
        EXPECT_EQ(free_pages().has_value(), false) << function;
    }
    EXPECT_EQ(machine().host_rights, 0);
}

TEST_F(MacTest, FileSystemsAreCountedThenRead) {
    machine().file_systems = {record("/", 4096, 1000, 400, MNT_LOCAL),
                              record("/net", 512, 2000, 900, 0),
                              record("/big", 4096, uint64_t{1} << 32, 1 << 30, MNT_LOCAL)};
    const auto listed = mounted_file_systems();
    ASSERT_EQ(listed.size(), 3U);
    EXPECT_THAT(machine().calls, ElementsAre("getfsstat count 0 1", "getfsstat fill 3 1"));
    const auto expect = [&](size_t i, const char* mount_point, int size, int blocks, int free,
                            bool local) {
        EXPECT_EQ(listed[i].mount_point, mount_point);
        EXPECT_EQ(listed[i].block_size, size);
        EXPECT_EQ(listed[i].blocks, blocks);
        EXPECT_EQ(listed[i].free_blocks, free);
        EXPECT_EQ(listed[i].local, local);
    };
    expect(0, "/", 4096, 1000, 400, true);
    expect(1, "/net", 0, 0, 0, false);
    expect(2, "/big", 16384, 1 << 30, 1 << 28, true);
}

TEST_F(MacTest, FileSystemsMayComeGoAndFail) {
    machine().file_systems.assign(3, record(std::string(90, 'p').c_str(), 512, 1, 1, MNT_LOCAL));
    for (const auto& [counted, expected] : {std::pair{0, 0U}, {2, 2U}, {3, 3U}, {5, 3U}}) {
        machine().file_systems_counted = counted;
        const auto listed = mounted_file_systems();
        ASSERT_EQ(listed.size(), expected);
        if (!listed.empty()) {
            EXPECT_EQ(listed[0].mount_point, std::string(90, 'p'));  // a field without terminator
        }
    }
    for (const char* function : {"getfsstat count", "getfsstat fill"}) {
        machine().failing = {function};
        EXPECT_TRUE(mounted_file_systems().empty()) << function;
    }
}

TEST_F(MacTest, AvailableSpaceIsThatOfOrdinaryUsers) {
    machine().file_systems = {record("/", 4096, 1000, 400, MNT_LOCAL)};
    const auto space = available_space("/Users");
    ASSERT_TRUE(space);
    EXPECT_EQ(space->blocks, 200U);
    EXPECT_EQ(space->block_size, 4096U);
    EXPECT_THAT(machine().calls, ElementsAre("statfs /Users"));
    machine().failing = {"statfs"};
    errno = 0;
    EXPECT_FALSE(available_space("/Users"));
    EXPECT_EQ(errno, EIO);
}

TEST_F(MacTest, PropertyListStringsAreCopiedAndReleased) {
    machine().dictionary = Dictionary{{"version", "10.4.11"},
                                      {"number", std::nullopt},
                                      {"longest", std::string(255, 'x')},
                                      {"too long", std::string(256, 'x')}};
    const std::string document("<plist>\0<", 9);
    const auto strings =
        property_list_strings(document, {"version", "number", "longest", "too long", "missing"});
    ASSERT_TRUE(strings);
    EXPECT_THAT(*strings, ElementsAre("10.4.11", std::nullopt, std::string(255, 'x'), std::nullopt,
                                      std::nullopt));
    EXPECT_EQ(machine().document, document);
    EXPECT_THAT(machine().calls,
                ElementsAre("CFPropertyListCreateFromXMLData 0", "CFStringGetCString 256",
                            "CFStringGetCString 256", "CFStringGetCString 256"));
    EXPECT_EQ(machine().objects, 0U);
}

TEST_F(MacTest, PropertyListFailuresReleaseWhatWasMade) {
    machine().dictionary = Dictionary{{"version", "10.4.11"}};
    const std::vector<std::string_view> keys = {"version"};
    machine().failing = {"CFStringCreateWithCString"};
    EXPECT_THAT(property_list_strings("x", keys), Optional(ElementsAre(std::nullopt)));
    machine().failing = {"CFDataCreate"};
    EXPECT_FALSE(property_list_strings("x", keys));
    machine().failing.clear();
    machine().dictionary.reset();
    EXPECT_FALSE(property_list_strings("x", keys));
    machine().other_top_level = true;
    EXPECT_FALSE(property_list_strings("x", keys));
    EXPECT_EQ(machine().objects, 0U);
}

TEST_F(MacTest, LinkLayerAddressFollowsTheNameUpToTheStatedLength) {
    constexpr size_t header = offsetof(sockaddr_dl, sdl_data);
    const unsigned char bytes[6] = {0x00, 0x1b, 0x63, 0xa4, 0x0f, 0x9c};
    struct Case {
        size_t stated_length;
        int address_bytes;  // how many of the six are stated
    };
    for (const Case& c : {Case{sizeof(sockaddr_dl), 6},
                          {header + 3 + 4, 4},
                          {header + 3, 0},
                          {header, 0},
                          {offsetof(sockaddr_dl, sdl_nlen), 0},
                          {2, 0}}) {
        SCOPED_TRACE(c.stated_length);
        sockaddr_dl link = {};
        link.sdl_len = static_cast<unsigned char>(c.stated_length);
        link.sdl_family = AF_LINK;
        link.sdl_nlen = 3;
        link.sdl_alen = 6;
        std::memcpy(link.sdl_data, "en0", 3);
        std::memcpy(link.sdl_data + 3, bytes, sizeof bytes);
        // A copy of exactly the stated length, so that a sanitizer sees a byte too many.
        std::vector<unsigned char> exact(c.stated_length);
        std::memcpy(exact.data(), &link, c.stated_length);
        ifaddrs entry = {};
        entry.ifa_addr = reinterpret_cast<sockaddr*>(exact.data());
        LinkLayerAddress expected{};
        std::copy_n(bytes, c.address_bytes, expected.begin());
        EXPECT_THAT(link_layer_address(entry), Optional(expected));
        EXPECT_EQ(socket_address_size(*entry.ifa_addr, AF_INET), c.stated_length);
        exact[1] = AF_INET;
        EXPECT_EQ(link_layer_address(entry), std::nullopt);
    }
    EXPECT_EQ(link_layer_address(ifaddrs{}), std::nullopt);
}

}  // namespace
}  // namespace velora_com::qel::platform
