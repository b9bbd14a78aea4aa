// This machine's answers against what the machine says elsewhere; the test of the whole report compares
// processors, memory, disks and interfaces with the system's own tools.
#include <gmock/gmock.h>
#include <ifaddrs.h>
#include <netpacket/packet.h>

#include <ctime>
#include <fstream>

#include "platform/platform.h"

namespace velora_com::qel::platform {
namespace {

using testing::Optional;

std::string first_word(const char* path) {
    std::string word;
    std::ifstream(path) >> word;
    return word;
}

TEST(Machine, AvailableSpaceFailsWithAReason) {
    EXPECT_THAT(available_space("/"),
                Optional(testing::Field(&AvailableSpace::block_size, testing::Gt(0U))));
    errno = 0;
    EXPECT_FALSE(available_space("/no such folder"));
    EXPECT_EQ(errno, ENOENT);
}

TEST(Machine, BootTimeAndUptimeMakeNow) {
    EXPECT_NEAR(static_cast<double>(boot_time().value()) + std::stod(first_word("/proc/uptime")),
                static_cast<double>(std::time(nullptr)), 5.0);
}

TEST(Machine, DomainNamesAreEmptyWhileUnset) {
    const std::string kernel = first_word("/proc/sys/kernel/domainname");
    const std::string expected = kernel == "(none)" ? "" : kernel;
    EXPECT_THAT(domain_name(), Optional(expected));
    EXPECT_THAT(nis_domain(), Optional(expected));
}

TEST(Machine, LinkLayerAddressesOfOtherLengths) {
    sockaddr_ll link = {AF_PACKET, 0, 0, 0, 0, 0, {1, 2, 3, 4, 5, 6, 7, 8}};
    ifaddrs entry = {};
    EXPECT_EQ(link_layer_address(entry), std::nullopt);
    entry.ifa_addr = reinterpret_cast<sockaddr*>(&link);
    link.sll_halen = 4;  // of an IPv4 tunnel
    EXPECT_THAT(link_layer_address(entry), Optional(LinkLayerAddress{1, 2, 3, 4, 0, 0}));
    link.sll_halen = 20;  // of InfiniBand
    EXPECT_THAT(link_layer_address(entry), Optional(LinkLayerAddress{1, 2, 3, 4, 5, 6}));
}

}  // namespace
}  // namespace velora_com::qel::platform
