// The table of interfaces and link-local scopes in a network that the test makes, and what becomes of them
// and of the resolver's answers when calls fail.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <sched.h>
#include <sys/mount.h>

#include <algorithm>

#include "network/loopback.h"
#include "support/fault_injection.h"
#include "support/skip.h"
#include "support/temporary_folder.h"
#include "vlrcomn/net_interface.h"
#include "vlrcomn/network_util.h"

namespace {

using namespace velora_com::qel;

const ANetworkUtil util;

// One line for each address: "name mac address/mask=subnet".
std::vector<std::string> lines(const NetInterfaceList& list) {
    std::vector<std::string> all;
    for (const unsigned int index : list.getIndexes()) {
        NetInterface interface;
        EXPECT_EQ(list.getNetInterface(index, interface), 1);
        EXPECT_EQ(interface.getIndex(), index);
        for (const IPAddress& address : interface.getIPAddress()) {
            const bool ipv6 = address.getIPAddress().find(':') != std::string::npos;
            EXPECT_EQ(address.getIPFamily(), static_cast<unsigned>(ipv6 ? AF_INET6 : AF_INET));
            all.push_back(interface.getIndexName() + ' ' + interface.getMACAddress() + ' ' +
                          address.getIPAddress() + '/' + address.getSubNetMask() + '=' +
                          address.getSubNetAddr());
        }
    }
    return all;
}

const char* const commands =
    "link set lo up\n"
    "link add v0 index 10 address 02:00:5e:10:20:30 type veth peer name v1\n"
    "link set v0 addrgenmode none up\nlink set v1 addrgenmode none up\n"
    "addr add 203.0.113.9/30 dev v0\naddr add 2001:db8::5/64 dev v0 nodad\n"
    "addr add fe80::1/64 dev v0 nodad\naddr add ::ffff:10.1.2.3/96 dev v0 nodad\n"
    "link add v2 type veth peer name v3\naddr add 192.0.2.1/24 dev v2\n";  // down

class OwnNetwork : public testing::Test {
protected:
    void SetUp() override {
        FILE* const ip = former_ && unshare(CLONE_NEWNET | CLONE_NEWNS) == 0
                             ? popen("ip -batch - 2>&1", "w")
                             : nullptr;
        if (ip != nullptr) {
            std::fputs(commands, ip);
        }
        if (ip == nullptr || pclose(ip) != 0) {
            SKIP_FOR_LACK_OF("root, namespaces or the ip command");
        }
    }
    void TearDown() override { setns(former_.get(), CLONE_NEWNET); }

    const support::FileDescriptor former_{open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC)};
    NetInterfaceList list_{true};
};

TEST_F(OwnNetwork, IsListed) {
    std::vector<std::string> expected = {
        "v0 02005e102030 203.0.113.9/255.255.255.252=203.0.113.8",
        "v0 02005e102030 2001:db8:0:0:0:0:0:5/ffff:ffff:ffff:ffff:0:0:0:0=2001:db8:0:0:0:0:0:0",
        "v0 02005e102030 fe80:0:0:0:0:0:0:1/ffff:ffff:ffff:ffff:0:0:0:0=fe80:0:0:0:0:0:0:0",
        // The expansion takes the IPv4 tail for one group, which leaves one too many.
        "v0 02005e102030 0:0:0:0:0:0:ffff:10.1.2.3/ffff:ffff:ffff:ffff:ffff:ffff:0:0"
        "=0:0:0:0:0:0:0:0",
    };
    NetInterfaceList list(false);
    ASSERT_EQ(getNetInterfacesList(list), 1);
    EXPECT_THAT(lines(list), testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(list.initialize(), 1);
    EXPECT_EQ(lines(list).size(), 2 * expected.size()) << "a second filling adds all again";

    expected.emplace_back("lo 000000000000 127.0.0.1/255.0.0.0=127.0.0.0");
    expected.emplace_back(
        "lo 000000000000 0:0:0:0:0:0:0:1/ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff=0:0:0:0:0:0:0:1");
    EXPECT_EQ(list_.initialize(), 1);
    EXPECT_THAT(lines(list_), testing::UnorderedElementsAreArray(expected));

    std::string mac;
    EXPECT_EQ(getMacAddr(mac, "v0"), 1);
    EXPECT_EQ(mac, "02005e102030");
}

TEST_F(OwnNetwork, GivesLinkLocalAddressesTheirScope) {
    unsigned int scope = 0;
    EXPECT_EQ(util.vlrGetScopeId("[fe80::1%77]", scope), 1);
    EXPECT_EQ(scope, 10u);
    EXPECT_EQ(util.vlrGetScopeId("2001:db8::5", scope), 0);
    EXPECT_EQ(util.formatV6addrWithScope("[fe80::1]", true), "[fe80::1%10]");

    network_test::Endpoint server("fe80::1%10");
    ASSERT_TRUE(server.listens());
    std::string local;
    EXPECT_EQ(
        util.vlrGetLocalIPAddress("[fe80::1]", server.port(), local, false, NI_NUMERICHOST, 20), 0);
    EXPECT_EQ(local, "fe80:0:0:0:0:0:0:1");
}

// Memory that runs out leaves the table as it was; another fault costs only the address that meets it.
TEST_F(OwnNetwork, IsFilledAsFarAsTheSystemAnswers) {
    size_t fewest = 6;
    const auto fill = [&] { return list_.initialize() == 1; };
    const auto count = [&] {
        fewest = std::min(fewest, lines(list_).size());
        EXPECT_THAT(lines(list_), testing::Each(testing::Not(testing::HasSubstr("/="))));
        list_ = NetInterfaceList(true);
    };
    const auto walk = fault_injection::walk_failures(fill, count);
    EXPECT_GT(walk.calls - walk.tolerated, 10);
    EXPECT_GT(walk.tolerated, 5);
    EXPECT_EQ(fewest, 5U);
}

TEST_F(OwnNetwork, GivesAtMostFourteenTexts) {
    const TemporaryFolder folder;
    std::string hosts;
    for (int i = 1; i <= 16; ++i) {
        hosts += "10.0.0." + std::to_string(i) + " many\n";
    }
    folder.write("hosts", hosts);
    folder.write("nsswitch.conf", "hosts: files\n");
    folder.write("host.conf", "multi on\n");
    // Seen by this program only, and while it has the folder.
    mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    ASSERT_EQ(mount(folder.path().c_str(), "/etc", nullptr, MS_BIND, nullptr), 0);
    std::vector<char*> texts;
    EXPECT_EQ(util.vlrGetAddrinfo("many", "80", texts, NI_NUMERICHOST), 0);
    umount("/etc");
    EXPECT_EQ(texts.size(), 14u);
    util.vlrFreeAddrinfo(texts);
}

}  // namespace
