// The socket helpers on the loopback, and what they make of text.
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>

#include "support/owners.h"
#include "support/test.h"
#include "vlrcomn/ipv6_text.h"
#include "vlrcomn/network_util.h"

using namespace velora_com::qel;
using std::chrono::steady_clock;
using support::FileDescriptor;

const ANetworkUtil util;

// A listener on a free port, whose connections complete without being taken.
struct Connect : testing::TestWithParam<std::pair<std::string, std::string>> {
    void SetUp() override {
        addrinfo* list = nullptr;
        ASSERT_EQ(util.vlrCreateAddrinfo('[' + host_ + "%none]", "0", &list, false), 0);
        server_.reset(list);
        listener_ = client();
        if (bind(listener_.get(), server_->ai_addr, server_->ai_addrlen) != 0 ||
            listen(listener_.get(), 16) != 0) {
            SKIP_FOR_LACK_OF("this loopback address");
        }
        getsockname(listener_.get(), server_->ai_addr, &server_->ai_addrlen);
    }
    FileDescriptor client() const {
        return FileDescriptor(socket(server_->ai_family, server_->ai_socktype, 0));
    }
    int connect(const FileDescriptor& client, unsigned int seconds) {
        const auto start = steady_clock::now();
        const int result = util.ConnectWithTimeout(client.get(), server_->ai_addr,
                                                   static_cast<int>(server_->ai_addrlen), seconds);
        waited_ = steady_clock::now() - start;
        EXPECT_LT(waited_, std::chrono::seconds(25));
        return result;
    }

    const std::string host_ = GetParam().first;
    support::AddressInfo server_;
    FileDescriptor listener_;
    steady_clock::duration waited_{};
};
INSTANTIATE_TEST_SUITE_P(Loopback, Connect,
                         testing::Values(std::pair("127.0.0.2", "127.0.0.1"),
                                         std::pair("::1", "0:0:0:0:0:0:0:1")));

TEST_P(Connect, ReachesAListenerAndDoesNotJudgeARefusalDuringItsWait) {
    for (const unsigned int seconds : {0u, 5u}) {
        const FileDescriptor socket = client();
        ASSERT_EQ(connect(socket, seconds), 0);
        EXPECT_EQ((fcntl(socket.get(), F_GETFL) & O_NONBLOCK) == 0, seconds == 0);
        EXPECT_EQ(send(socket.get(), "x", 1, MSG_NOSIGNAL), 1);
    }
    std::string local;
    const std::string port = util.vlrNetToString(server_->ai_addr, NI_NUMERICSERV | NI_NUMERICHOST);
    EXPECT_EQ(util.vlrNetToString(server_->ai_addr, NI_NUMERICHOST), host_);
    const std::string hosts = ';' + host_ + ";[::1]";
    EXPECT_EQ(util.vlrGetLocalIPAddressFromList(hosts, port, local, false, 0, 5), 0);
    EXPECT_EQ(local, GetParam().second);

    listener_.reset();
    const FileDescriptor refused = client();
    EXPECT_EQ(connect(refused, 5), 0);
    EXPECT_EQ(send(refused.get(), "x", 1, MSG_NOSIGNAL), -1);
    EXPECT_EQ(connect(client(), 0), -1);
    EXPECT_EQ(connect(FileDescriptor(), 5), -1);
    EXPECT_EQ(errno, EBADF);
    EXPECT_EQ(connect(FileDescriptor(open("/dev/null", O_WRONLY)), 5), -1) << "no socket";
}

TEST_P(Connect, WaitsAsLongAsToldButNotWithADescriptorTooLargeForSelect) {
    // The system drops what passes a full queue, so that nobody answers.
    listen(listener_.get(), 0);
    const FileDescriptor queued = client(), low = client();
    connect(queued, 0);
    pollfd queue{listener_.get(), POLLIN, 0};
    poll(&queue, 1, -1);
    EXPECT_EQ(connect(client(), 1), -1);
    EXPECT_GE(waited_, std::chrono::milliseconds(990));

    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    const FileDescriptor high(fcntl(low.get(), F_DUPFD, FD_SETSIZE));
    if (!high) {
        SKIP_FOR_LACK_OF("so many descriptors");
    }
    EXPECT_EQ(connect(high, 30), -1);
    EXPECT_EQ(errno, EINPROGRESS);
}

TEST(Hosts, AreComparedByTextAndByResolving) {
    using Row = std::tuple<const char*, const char*, int>;
    for (const auto& [host, peer, result] : {Row{"10.1.1.1", "10.1.1.10", 1},
                                             {"10.1.1.10", "10.1.1.1", 0},  // the shortcut
                                             {"[no host%2]", "no host%3", 1},
                                             {"[2001:DB8:0::1]", "2001:db8::1%4", 1}}) {
        EXPECT_EQ(util.vlrCompareAddressFromPeerAddress(host, "80", peer), result) << host;
    }
    std::string local;
    EXPECT_EQ(util.vlrGetLocalIPAddressFromList(";;", "9", local, true, 0, 5), -1);
    EXPECT_NE(util.vlrGetLocalIPAddressFromList("[::1];", "9", local, true, 0, 5), 0);
}

// The fuzz target's seeds hold what makes text of text against a plain model.
TEST(IPv6Text, IsPartedAndCounted) {
    EXPECT_EQ(util.formatV6addr("[fe80::1%en0]", true), "[fe80::1]");
    EXPECT_EQ(noOfOccurences("1:2:3:4:5:6:7:8", ':', 9), 7);
    EXPECT_EQ(noOfOccurences("1:2:3:4:5:6:7:8:", ':', 9), 9);
}
