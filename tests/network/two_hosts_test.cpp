// The socket helpers between two hosts on one link. The far one drops everything for the networks behind
// it, so that nobody answers there.
#include <gtest/gtest.h>
#include <netdb.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>

#include "network/loopback.h"
#include "network/network_namespace.h"
#include "vlrcomn/network_util.h"

namespace {

using namespace velora_com::qel;
using network_test::Endpoint;
using network_test::NetworkNamespace;
using std::chrono::steady_clock;

const ANetworkUtil util;

class TwoHosts : public testing::Test {
protected:
    void SetUp() override {
        SKIP_WITHOUT(far_);
        near_.configure("link set dev v1 netns " + far_.name() + "\n");
        far_.configure(
            "addr add 198.51.100.2/24 dev v1\naddr add 2001:db8::2/64 dev v1 nodad\n"
            "addr add fe80::2/64 dev v1 nodad\nlink set v1 up\n"
            "route add blackhole 203.0.113.0/24\nroute add blackhole 2001:db8:dead::/64\n");
        near_.configure(
            "addr add 198.51.100.1/24 dev v0\naddr add 2001:db8::1/64 dev v0 nodad\n"
            "addr add fe80::1/64 dev v0 nodad\nlink set v0 up\n"
            "route add 203.0.113.0/24 via 198.51.100.2\n"
            "route add 2001:db8:dead::/64 via 2001:db8::2\n");
        SKIP_WITHOUT(near_);
        near_.enter();
    }
    void TearDown() override { near_.leave(); }

    Endpoint far_server(const std::string& host) {
        far_.enter();
        Endpoint server(host);
        near_.enter();
        return server;
    }

    NetworkNamespace near_{
        "link set lo up\nlink add v0 index 10 type veth peer name v1 index 11\n"
        "link set v0 addrgenmode none\nlink set v1 addrgenmode none\n"};
    NetworkNamespace far_{"link set lo up\n"};
};

TEST_F(TwoHosts, LocalAddressIsTheOneThatLeadsThere) {
    for (const auto& [host, expected] :
         {std::pair{"198.51.100.2", "198.51.100.1"}, {"2001:db8::2", "2001:db8:0:0:0:0:0:1"}}) {
        Endpoint server = far_server(host);
        ASSERT_TRUE(server.listens());
        std::string local;
        EXPECT_EQ(util.vlrGetLocalIPAddress(host, server.port(), local, false, NI_NUMERICHOST, 20),
                  0);
        EXPECT_EQ(local, expected);
    }
}

TEST_F(TwoHosts, LinkLocalAddressesGetTheirScope) {
    unsigned int scope = 0;
    EXPECT_EQ(util.vlrGetScopeId("[fe80::2%77]", scope), 1);
    EXPECT_EQ(scope, 10u);
    scope = 0;
    EXPECT_EQ(util.vlrGetScopeId("2001:db8::2", scope), 0);
    EXPECT_EQ(util.formatV6addrWithScope("[fe80::2]", true), "[fe80::2%10]");

    Endpoint server = far_server("fe80::2%11");
    ASSERT_TRUE(server.listens());
    std::string local;
    EXPECT_EQ(
        util.vlrGetLocalIPAddress("[fe80::2]", server.port(), local, false, NI_NUMERICHOST, 20), 0);
    EXPECT_EQ(local, "fe80:0:0:0:0:0:0:1");
}

TEST_F(TwoHosts, HostListGoesOnBehindDeadHosts) {
    Endpoint server = far_server("198.51.100.2");
    std::string local;
    EXPECT_EQ(util.vlrGetLocalIPAddressFromList("203.0.113.7;no host;198.51.100.2;203.0.113.8",
                                                server.port(), local, false, 0, 1),
              0);
    EXPECT_EQ(local, "198.51.100.1");
}

class Waits : public TwoHosts {
protected:
    // Connects to a host that does not answer; takes well under half a minute.
    int connect(const support::FileDescriptor& client, const char* host, unsigned int seconds) {
        addrinfo* list = nullptr;
        EXPECT_EQ(util.vlrCreateAddrinfo(host, "80", &list, false), 0);
        const support::AddressInfo owner(list);
        const auto start = steady_clock::now();
        const int result = util.ConnectWithTimeout(client.get(), list->ai_addr,
                                                   static_cast<int>(list->ai_addrlen), seconds);
        waited_ = steady_clock::now() - start;
        EXPECT_LT(waited_, std::chrono::seconds(25));
        return result;
    }

    steady_clock::duration waited_{};
};

TEST_F(Waits, UnansweredConnectionsTimeOut) {
    for (const auto& [family, host] :
         {std::pair{AF_INET, "203.0.113.7"}, {AF_INET6, "2001:db8:dead::7"}}) {
        const support::FileDescriptor client(socket(family, SOCK_STREAM, 0));
        EXPECT_EQ(connect(client, host, 1), -1) << host;
        EXPECT_GE(waited_, std::chrono::milliseconds(990)) << host;
    }
}

TEST_F(Waits, SelectDoesNotTakeALargeDescriptor) {
    rlimit limit;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit former = limit;
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, FD_SETSIZE + 16);
    if (limit.rlim_cur <= FD_SETSIZE) {
        GTEST_SKIP() << "so many descriptors are not allowed";
    }
    setrlimit(RLIMIT_NOFILE, &limit);
    {
        const support::FileDescriptor low(socket(AF_INET, SOCK_STREAM, 0));
        const support::FileDescriptor high(fcntl(low.get(), F_DUPFD_CLOEXEC, FD_SETSIZE));
        ASSERT_GE(high.get(), FD_SETSIZE);
        EXPECT_EQ(connect(high, "203.0.113.7", 30), -1);
        sockaddr_storage peer;
        socklen_t size = sizeof peer;
        EXPECT_EQ(getsockname(high.get(), reinterpret_cast<sockaddr*>(&peer), &size), 0);
        EXPECT_NE(reinterpret_cast<sockaddr_in&>(peer).sin_port, 0) << "connect was called";
    }
    setrlimit(RLIMIT_NOFILE, &former);
}

TEST_F(Waits, SignalsEndTheWait) {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    struct sigaction former {};
    sigaction(SIGALRM, &action, &former);
    // Again and again, so that one of them meets the wait.
    const itimerval often{{0, 50'000}, {0, 50'000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    const support::FileDescriptor client(socket(AF_INET, SOCK_STREAM, 0));
    EXPECT_EQ(connect(client, "203.0.113.7", 30), -1);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &former, nullptr);
}

}  // namespace
