// What the table and the socket helpers make of calls that fail, and of a host with many addresses.
#include <gtest/gtest.h>
#include <netdb.h>
#include <netinet/in.h>

#include <optional>
#include <string>
#include <vector>

#include "network/loopback.h"
#include "network/network_namespace.h"
#include "support/fault_injection.h"
#include "vlrcomn/net_interface.h"
#include "vlrcomn/network_util.h"

// While set, every host resolves to this many addresses 10.0.0.1, 10.0.0.2, ...
static int scripted_addresses = 0;
static int scripted_lists = 0;  // handed out and not yet freed

extern "C" int __real_getaddrinfo(const char*, const char*, const addrinfo*, addrinfo**);
extern "C" int __wrap_getaddrinfo(const char* host, const char* port, const addrinfo* hints,
                                  addrinfo** result) {
    if (scripted_addresses == 0) {
        return __real_getaddrinfo(host, port, hints, result);
    }
    static addrinfo entries[32];
    static sockaddr_in addresses[32];
    for (int i = 0; i < scripted_addresses; ++i) {
        addresses[i].sin_family = AF_INET;
        addresses[i].sin_addr.s_addr = htonl(0x0a000001u + static_cast<unsigned>(i));
        entries[i] = {0,
                      AF_INET,
                      SOCK_STREAM,
                      0,
                      sizeof addresses[i],
                      reinterpret_cast<sockaddr*>(&addresses[i]),
                      nullptr,
                      i + 1 < scripted_addresses ? &entries[i + 1] : nullptr};
    }
    *result = entries;
    ++scripted_lists;
    return 0;
}
extern "C" void __real_freeaddrinfo(addrinfo*);
extern "C" void __wrap_freeaddrinfo(addrinfo* list) {
    if (scripted_addresses == 0) {
        __real_freeaddrinfo(list);
    } else {
        --scripted_lists;
    }
}

namespace {

using namespace velora_com::qel;
using fault_injection::FailNth;
using fault_injection::resources_in_use;
using network_test::NetworkNamespace;

const ANetworkUtil util;

size_t address_count(const NetInterfaceList& list) {
    size_t count = 0;
    for (const unsigned int index : list.getIndexes()) {
        NetInterface interface;
        EXPECT_EQ(list.getNetInterface(index, interface), 1);
        count += interface.getIPAddress().size();
    }
    return count;
}

class FailingEnumeration : public testing::Test {
protected:
    void SetUp() override {
        SKIP_WITHOUT(network_);
        NetInterfaceList whole(true);
        ASSERT_EQ(whole.initialize(), 1);
        ASSERT_EQ(address_count(whole), 5u);
    }

    NetworkNamespace network_{
        "link set lo up\nlink add v0 type veth peer name v1\nlink set v0 addrgenmode none up\n"
        "addr add 198.51.100.5/24 dev v0\naddr add 198.51.100.6/24 dev v0\n"
        "addr add ::ffff:10.1.2.3/96 dev v0 nodad\n"};
};

TEST_F(FailingEnumeration, LeavesOutTheAddressThatMeetsTheFault) {
    const struct {
        const char* call;
        int nth;
        size_t left;
    } table[] = {
        {"getifaddrs", 1, 0},  {"socket", 1, 4},  // the next address of the family tries again
        {"ioctl", 1, 4},                          // and so does the next one of the interface
        {"getnameinfo", 1, 4},  // the address of ::1, which is not written by hand
        {"getnameinfo", 2, 4},  // the mask of ::1, likewise
    };
    for (const auto& row : table) {
        SCOPED_TRACE(std::string(row.call) + ' ' + std::to_string(row.nth));
        NetInterfaceList list(true);
        FailNth failure(row.nth, row.call);
        const int result = list.initialize();
        failure.disarm();
        EXPECT_STREQ(failure.fired(), row.call);
        EXPECT_EQ(result, row.left > 0 ? 1 : 0);
        EXPECT_EQ(address_count(list), row.left);
    }
}

TEST_F(FailingEnumeration, GivesEverythingBackAndChangesNothingWithoutMemory) {
    int failures = 0;
    for (int nth = 1;; ++nth) {
        NetInterfaceList list(true);
        ASSERT_EQ(list.initialize(), 1);
        const auto before = resources_in_use();
        FailNth failure(nth, "malloc");
        const int result = list.initialize();
        failure.disarm();
        if (failure.fired() == nullptr) {
            EXPECT_EQ(result, 1);
            break;
        }
        ++failures;
        EXPECT_EQ(result, 0);
        EXPECT_EQ(address_count(list), 5u);
        EXPECT_EQ(resources_in_use(), before);
    }
    EXPECT_GT(failures, 10);
}

TEST_F(FailingEnumeration, SearchesFailWithoutMemory) {
    NetInterfaceList list(true);
    ASSERT_EQ(list.initialize(), 1);
    NetInterface found;
    std::string mac;
    const std::string last = "0:0:0:0:0:0:ffff:10.1.2.3";
    int failures = 0;
    for (int nth = 1;; ++nth) {
        FailNth failure(nth, "malloc");
        const int result = getNetInterfaceFromIPAddress(found, last, list);
        failure.disarm();
        if (failure.fired() == nullptr) {
            EXPECT_EQ(result, 1);
            break;
        }
        ++failures;
        EXPECT_EQ(result, 0) << nth;
        EXPECT_EQ(found.getIndex(), 0u);
    }
    EXPECT_GT(failures, 1) << "the vector and its longer texts";
    FailNth failure(1, "malloc");
    NetInterface& spare = list.getNetInterface(4711u);
    failure.disarm();
    EXPECT_EQ(spare.getIndex(), 0u);
    EXPECT_EQ(list.getNetInterface(4711u, found), 0) << "no part of the table";
}

TEST(FailingResolution, HandsOutAtMostFourteenTextsAndLeaksNone) {
    scripted_addresses = 20;
    std::vector<char*> texts;
    ASSERT_EQ(util.vlrGetAddrinfo("host", "80", texts, NI_NUMERICHOST), 0);
    ASSERT_EQ(texts.size(), 14u);
    EXPECT_STREQ(texts[13], "10.0.0.14");
    util.vlrFreeAddrinfo(texts);
    texts.shrink_to_fit();

    scripted_addresses = 3;
    const auto before = resources_in_use();
    for (int nth = 1;; ++nth) {
        FailNth failure(nth, "malloc");
        const int result = util.vlrGetAddrinfo("host", "80", texts, NI_NUMERICHOST);
        failure.disarm();
        const size_t added = texts.size();
        util.vlrFreeAddrinfo(texts);
        texts.shrink_to_fit();
        EXPECT_EQ(result, added > 0 ? 0 : -1) << nth;
        EXPECT_EQ(resources_in_use(), before) << nth;
        if (failure.fired() == nullptr) {
            EXPECT_EQ(added, 3u);
            break;
        }
        EXPECT_EQ(added, 2u) << "one buffer, or the room for its pointer";
    }
    EXPECT_EQ(scripted_lists, 0);
    scripted_addresses = 0;
}

TEST(FailingConnection, ClosesItsSocket) {
    network_test::Endpoint server("127.0.0.1");
    const std::string port = server.port();
    std::string local;
    const auto before = resources_in_use();
    for (const char* call : {"socket", "getsockname", "getnameinfo", "getsockopt"}) {
        FailNth failure(1, call);
        const int result =
            util.vlrGetLocalIPAddress("127.0.0.1", port, local, true, NI_NUMERICHOST, 5);
        failure.disarm();
        if (failure.fired() != nullptr) {  // getsockopt only when connecting took its time
            EXPECT_EQ(result, -1) << call;
        }
        EXPECT_EQ(resources_in_use(), before) << call;
    }
    EXPECT_EQ(local, "");
}

}  // namespace
