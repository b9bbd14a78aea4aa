// The socket helpers on the loopback, and what they make of text.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "network/loopback.h"
#include "support/skip.h"
#include "vlrcomn/network_util.h"

namespace {

using namespace velora_com::qel;
using network_test::Endpoint;
using std::chrono::steady_clock;
using support::FileDescriptor;

const ANetworkUtil util;

bool is_blocking(int socket) {
    return (fcntl(socket, F_GETFL) & O_NONBLOCK) == 0;
}

// A listener and the local address that leads to it.
class Connect : public testing::TestWithParam<std::pair<std::string, std::string>> {
protected:
    void SetUp() override {
        if (!server_.listens()) {
            SKIP_FOR_LACK_OF("this loopback address");
        }
    }
    int connect(const FileDescriptor& client, unsigned int seconds) {
        const auto start = steady_clock::now();
        const int result =
            util.ConnectWithTimeout(client.get(), server_.address(), server_.size(), seconds);
        waited_ = steady_clock::now() - start;
        EXPECT_LT(waited_, std::chrono::seconds(25));
        return result;
    }

    Endpoint server_{GetParam().first.c_str()};
    const FileDescriptor client_ = server_.client();
    steady_clock::duration waited_{};
};
INSTANTIATE_TEST_SUITE_P(Loopback, Connect,
                         testing::Values(std::pair("127.0.0.1", "127.0.0.1"),
                                         std::pair("127.0.0.2", "127.0.0.1"),
                                         std::pair("::1", "0:0:0:0:0:0:0:1")));

TEST_P(Connect, ReachesAListenerAndDoesNotJudgeARefusalDuringItsWait) {
    for (const unsigned int seconds : {0u, 5u}) {
        const FileDescriptor client = server_.client();
        ASSERT_EQ(connect(client, seconds), 0);
        EXPECT_EQ(is_blocking(client.get()), seconds == 0);
        EXPECT_EQ(send(client.get(), "x", 1, MSG_NOSIGNAL), 1);
    }
    std::string local;
    EXPECT_EQ(util.vlrGetLocalIPAddress(GetParam().first, server_.port(), local, false,
                                        NI_NUMERICHOST, 5),
              0);
    EXPECT_EQ(local, GetParam().second);
    server_.stop();
    EXPECT_EQ(connect(client_, 5), 0);
    EXPECT_EQ(send(client_.get(), "x", 1, MSG_NOSIGNAL), -1);
    EXPECT_EQ(connect(server_.client(), 0), -1);
    EXPECT_EQ(errno, ECONNREFUSED);
}

TEST_P(Connect, TimesOutWithoutAnAnswer) {
    server_.fill_queue();
    EXPECT_EQ(connect(client_, 1), -1);
    EXPECT_GE(waited_, std::chrono::milliseconds(990));
}

// Connect is called, but there is no wait for a number that select has no bit for.
TEST_P(Connect, DoesNotWaitForADescriptorTooLargeForSelect) {
    rlimit former;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &former), 0);
    const rlimit raised{std::min<rlim_t>(former.rlim_max, FD_SETSIZE + 16), former.rlim_max};
    if (raised.rlim_cur <= FD_SETSIZE) {
        SKIP_FOR_LACK_OF("so many descriptors");
    }
    server_.fill_queue();
    setrlimit(RLIMIT_NOFILE, &raised);
    const FileDescriptor high(fcntl(client_.get(), F_DUPFD, FD_SETSIZE));
    setrlimit(RLIMIT_NOFILE, &former);
    ASSERT_GE(high.get(), FD_SETSIZE);
    EXPECT_EQ(connect(high, 30), -1);
    EXPECT_EQ(errno, EINPROGRESS);
}

TEST(FormatV6addr, StripsBracketsAndScope) {
    const char* const table[][3] = {{"[fe80::1%en0]", "[fe80::1]", "fe80::1"},
                                    {"2001:db8::1%3", "2001:db8::1", "2001:db8::1"},
                                    {"%[x]", "[x]", "x"},
                                    {"]x[", "]x[", "]x["}};
    for (const auto& [text, kept, bare] : table) {
        EXPECT_EQ(util.formatV6addr(text, true), kept) << text;
        EXPECT_EQ(util.formatV6addr(text, false), bare) << text;
    }
    EXPECT_EQ(util.formatV6addrWithScope("[2001:db8::1%3]", true), "[2001:db8::1]");
}

TEST(Resolving, DropsBracketsAndScopeAndAppendsTexts) {
    addrinfo* list = nullptr;
    ASSERT_EQ(util.vlrCreateAddrinfo("[2001:db8::1%nowhere]", "80", &list, false), 0);
    const support::AddressInfo owner(list);
    EXPECT_EQ(list->ai_socktype, SOCK_STREAM);
    EXPECT_EQ(util.vlrNetToString(list->ai_addr, NI_NUMERICHOST), "2001:db8::1");
    EXPECT_EQ(util.vlrNetToString(list->ai_addr, NI_NUMERICSERV | NI_NUMERICHOST), "80");
    EXPECT_EQ(util.vlrNetToString(list->ai_addr, NI_DGRAM), "");
    EXPECT_NE(util.vlrCreateAddrinfo("[2001:db8::1]", "", &list, true), 0) << "IPv4 only";
    EXPECT_EQ(list, owner.get()) << "changed by a failure";

    std::vector<char*> texts{nullptr};
    EXPECT_EQ(util.vlrGetAddrinfo("[::1]", "80", texts, NI_NUMERICHOST), 0);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_STREQ(texts[1], "::1");
    util.vlrFreeAddrinfo(texts);
    EXPECT_TRUE(texts.empty());
}

TEST(ComparePeer, MatchesTextsAndResolvedAddresses) {
    const struct {
        const char* host;
        const char* peer;
        int result;
    } table[] = {{"10.1.1.1", "10.1.1.10", 1},  // the shortcut
                 {"", "10.1.1.1", 1},
                 {"10.1.1.10", "10.1.1.1", 0},
                 {"[fe80::1%2]", "fe80::1%eth0", 1},
                 {"[2001:DB8:0::1]", "2001:db8::1%4", 1},  // by resolving
                 {"2001:db8::1", "2001:db8::2", 0}};
    for (const auto& [host, peer, result] : table) {
        EXPECT_EQ(util.vlrCompareAddressFromPeerAddress(host, "80", peer), result) << host << peer;
    }
}

TEST(LocalAddressFromList, TakesItemsInTurn) {
    Endpoint server("127.0.0.1");
    std::string local = "kept";
    const auto look_up = [&](const char* hosts) {
        return util.vlrGetLocalIPAddressFromList(hosts, server.port(), local, true, 0, 5);
    };
    EXPECT_EQ(look_up(";;"), -1);
    EXPECT_NE(look_up("[::1];"), 0);
    EXPECT_EQ(local, "kept");
    EXPECT_EQ(look_up(";[2001:db8::1];127.0.0.1;[::1]"), 0);
    EXPECT_EQ(local, "127.0.0.1");
}

TEST(Gate, ClosesTheGatedCallsOnly) {
    const struct Disabled : ANetworkUtil {
        Disabled() { enabled_ = 2; }
    } off;
    Endpoint server("127.0.0.1");
    std::string local;
    unsigned int scope;
    std::vector<char*> texts;
    EXPECT_EQ(off.vlrNetToString(server.address(), NI_NUMERICHOST), "");
    EXPECT_EQ(off.vlrGetScopeId("fe80::1", scope), 0);
    EXPECT_EQ(off.vlrGetLocalIPAddress("127.0.0.1", server.port(), local, true, 0, 5), -1);
    EXPECT_EQ(off.vlrGetAddrinfo("127.0.0.1", "80", texts, NI_NUMERICHOST), -1);
    EXPECT_EQ(off.vlrCompareAddressFromPeerAddress("[::1]", "", "::1%1"), 1);
    EXPECT_EQ(off.vlrCompareAddressFromPeerAddress("[::0001]", "", "::1"), 0) << "does not resolve";
}

}  // namespace
