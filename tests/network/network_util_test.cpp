// The socket helpers on the loopback, and what they make of text.
#include "vlrcomn/network_util.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <string>
#include <vector>

#include "network/loopback.h"
#include "support/owners.h"

namespace {

using namespace velora_com::qel;
using network_test::Endpoint;
using support::FileDescriptor;

const ANetworkUtil util;

bool is_blocking(int socket) {
    return (fcntl(socket, F_GETFL) & O_NONBLOCK) == 0;
}

class Connect : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(Families, Connect, testing::Values("127.0.0.1", "::1"));

TEST_P(Connect, ReachesAListenerAndDoesNotJudgeARefusalDuringItsWait) {
    Endpoint server(GetParam());
    if (!server.listens()) {
        GTEST_SKIP() << "no such loopback address";
    }
    const auto connect = [&server](const FileDescriptor& client, unsigned int seconds) {
        return util.ConnectWithTimeout(client.get(), server.address(), server.size(), seconds);
    };
    for (const unsigned int seconds : {0u, 5u}) {
        const FileDescriptor client = server.client();
        ASSERT_EQ(connect(client, seconds), 0);
        EXPECT_EQ(is_blocking(client.get()), seconds == 0);
        EXPECT_EQ(send(client.get(), "x", 1, MSG_NOSIGNAL), 1);
    }
    server.stop();
    const FileDescriptor patient = server.client();
    EXPECT_EQ(connect(patient, 5), 0);
    EXPECT_EQ(send(patient.get(), "x", 1, MSG_NOSIGNAL), -1);
    EXPECT_EQ(connect(server.client(), 0), -1);
    EXPECT_EQ(errno, ECONNREFUSED);
}

TEST(Connect, RefusesWhatIsNoSocket) {
    Endpoint server("127.0.0.1");
    EXPECT_EQ(util.makeSocketNonBlocking(-1), 0);
    EXPECT_EQ(util.ConnectWithTimeout(-1, server.address(), server.size(), 5), -1);
    const FileDescriptor file(open("/dev/null", O_RDWR | O_CLOEXEC));
    // connect fails, select finds the file writable, and SO_ERROR does not exist there.
    EXPECT_EQ(util.ConnectWithTimeout(file.get(), server.address(), server.size(), 5), -1);
    EXPECT_FALSE(is_blocking(file.get()));
}

TEST(FormatV6addr, StripsBracketsAndScope) {
    const struct {
        const char* text;
        const char* kept;
        const char* bare;
    } table[] = {{"[fe80::1%en0]", "[fe80::1]", "fe80::1"},
                 {"2001:db8::1%3", "2001:db8::1", "2001:db8::1"},
                 {"%[x]", "[x]", "x"},
                 {"]x[", "]x[", "]x["}};
    for (const auto& row : table) {
        EXPECT_EQ(util.formatV6addr(row.text, true), row.kept) << row.text;
        EXPECT_EQ(util.formatV6addr(row.text, false), row.bare) << row.text;
    }
    EXPECT_EQ(util.formatV6addrWithScope("[2001:db8::1%3]", true), "[2001:db8::1]");
    EXPECT_EQ(util.formatV6addrWithScope("FE80::1", false), "FE80::1");
}

TEST(NetToString, WritesHostOrService) {
    Endpoint server("127.0.0.1");
    EXPECT_EQ(util.vlrNetToString(server.address(), NI_NUMERICHOST), "127.0.0.1");
    EXPECT_EQ(util.vlrNetToString(server.address(), NI_NUMERICSERV | NI_NUMERICHOST),
              server.port());
    EXPECT_EQ(util.vlrNetToString(server.address(), NI_DGRAM), "");
    EXPECT_EQ(util.vlrNetToString(nullptr, NI_NUMERICHOST), "");
}

TEST(CreateAddrinfo, ResolvesWithoutBracketsAndScope) {
    addrinfo* list = nullptr;
    EXPECT_EQ(util.vlrCreateAddrinfo("", "80", &list, false), -1);
    EXPECT_EQ(util.vlrCreateAddrinfo("127.0.0.1", "80", nullptr, false), -1);
    EXPECT_EQ(list, nullptr);
    ASSERT_EQ(util.vlrCreateAddrinfo("[2001:db8::1%5]", "80", &list, false), 0);
    const support::AddressInfo owner(list);
    EXPECT_EQ(list->ai_socktype, SOCK_STREAM);
    EXPECT_EQ(util.vlrNetToString(list->ai_addr, NI_NUMERICSERV), "80");
    EXPECT_NE(util.vlrCreateAddrinfo("[2001:db8::1]", "", &list, true), 0) << "IPv4 only";
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
    for (const auto& row : table) {
        EXPECT_EQ(util.vlrCompareAddressFromPeerAddress(row.host, "80", row.peer), row.result)
            << row.host << ' ' << row.peer;
    }
}

TEST(GetAddrinfo, HandsOutTextsUntilTheyAreFreed) {
    std::vector<char*> texts;
    EXPECT_EQ(util.vlrGetAddrinfo("[::1]", "80", texts, NI_NUMERICHOST), 0);
    EXPECT_EQ(util.vlrGetAddrinfo("10.1.2.3", "", texts, NI_NUMERICHOST), 0);
    ASSERT_EQ(texts.size(), 2u) << "texts are appended";
    EXPECT_STREQ(texts[0], "::1");
    EXPECT_STREQ(texts[1], "10.1.2.3");
    texts.push_back(nullptr);
    util.vlrFreeAddrinfo(texts);
    EXPECT_TRUE(texts.empty());
}

TEST(LocalAddressFromList, TakesItemsInTurn) {
    Endpoint server("127.0.0.1");
    std::string local = "kept";
    for (const char* hosts : {"", ";;"}) {
        EXPECT_EQ(util.vlrGetLocalIPAddressFromList(hosts, server.port(), local, true, 0, 5), -1);
    }
    EXPECT_EQ(local, "kept");
    EXPECT_EQ(util.vlrGetLocalIPAddressFromList(";[2001:db8::1];127.0.0.1;[::1]", server.port(),
                                                local, true, 0, 5),
              0);
    EXPECT_EQ(local, "127.0.0.1");
    const int failure = util.vlrGetLocalIPAddress("[::1]", "1", local, true, NI_NUMERICHOST, 5);
    EXPECT_NE(failure, 0);
    EXPECT_EQ(util.vlrGetLocalIPAddressFromList("[];[::1];", "1", local, true, 0, 5), failure)
        << "the last host's result";
}

struct Disabled : ANetworkUtil {
    Disabled() { enabled_ = 2; }
};

TEST(Gate, ClosesTheGatedCallsOnly) {
    const Disabled off;
    Endpoint server("127.0.0.1");
    std::string local = "kept";
    unsigned int scope = 7;
    char* const text = new char[1]{};
    std::vector<char*> texts = {text};
    EXPECT_EQ(off.vlrNetToString(server.address(), NI_NUMERICHOST), "");
    EXPECT_EQ(off.vlrGetScopeId("fe80::1", scope), 0);
    EXPECT_EQ(off.vlrGetLocalIPAddress("127.0.0.1", server.port(), local, true, 0, 5), -1);
    EXPECT_EQ(off.vlrGetAddrinfo("127.0.0.1", "80", texts, NI_NUMERICHOST), -1);
    off.vlrFreeAddrinfo(texts);
    EXPECT_EQ(texts.size(), 1u);
    EXPECT_EQ(off.vlrCompareAddressFromPeerAddress("[::1]", "", "::1%1"), 1);
    EXPECT_EQ(local, "kept");
    EXPECT_EQ(scope, 7u);
    util.vlrFreeAddrinfo(texts);
}

}  // namespace
