// What the table and the socket helpers make of calls that fail, and of a host with many addresses.
#include <gtest/gtest.h>
#include <netdb.h>
#include <netinet/in.h>

#include <iterator>
#include <string>
#include <vector>

#include "network/loopback.h"
#include "network/network_namespace.h"
#include "support/fault_injection.h"
#include "vlrcomn/net_interface.h"
#include "vlrcomn/network_util.h"

// While set, a host has one address 16 times.
static bool many_addresses = false;

extern "C" int __real_getaddrinfo(const char*, const char*, const addrinfo*, addrinfo**);
extern "C" int __wrap_getaddrinfo(const char* host, const char* port, const addrinfo* hints,
                                  addrinfo** result) {
    const int code = __real_getaddrinfo(host, port, hints, result);
    if (many_addresses && code == 0) {
        static addrinfo more[15];
        for (addrinfo* entry = more; entry != std::end(more); ++entry) {
            *entry = **result;
            entry->ai_next = entry + 1 == std::end(more) ? nullptr : entry + 1;
        }
        (*result)->ai_next = more;
    }
    return code;
}
extern "C" void __real_freeaddrinfo(addrinfo*);
extern "C" void __wrap_freeaddrinfo(addrinfo* list) {
    if (many_addresses) {
        list->ai_next = nullptr;
    }
    __real_freeaddrinfo(list);
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
    const std::string last = "0:0:0:0:0:0:ffff:10.1.2.3";
    FailNth search_failure(1, "malloc");
    const int result = getNetInterfaceFromIPAddress(found, last, list);
    search_failure.disarm();
    EXPECT_EQ(result, 0);
    FailNth failure(1, "malloc");
    NetInterface& spare = list.getNetInterface(4711u);
    failure.disarm();
    EXPECT_EQ(spare.getIndex(), 0u);
    EXPECT_EQ(list.getNetInterface(4711u, found), 0) << "no part of the table";
}

TEST(FailingResolution, HandsOutAtMostFourteenTexts) {
    many_addresses = true;
    std::vector<char*> texts;
    EXPECT_EQ(util.vlrGetAddrinfo("10.0.0.1", "80", texts, NI_NUMERICHOST), 0);
    many_addresses = false;
    EXPECT_EQ(texts.size(), 14u);
    util.vlrFreeAddrinfo(texts);
}

TEST(FailingResolution, LeaksNothing) {
    network_test::Endpoint server("127.0.0.1");
    const std::string port = server.port();
    std::vector<char*> texts;
    std::string local;
    const auto before = resources_in_use();
    const auto give_back = [&] {
        util.vlrFreeAddrinfo(texts);
        std::vector<char*>().swap(texts);
        local = {};
    };
    const auto list = [&] {
        return util.vlrGetAddrinfo("10.0.0.1", port, texts, NI_NUMERICHOST) == 0;
    };
    const auto connect = [&] {
        return util.vlrGetLocalIPAddress("127.0.0.1", port, local, true, NI_NUMERICHOST, 5) == 0;
    };
    EXPECT_GT(fault_injection::walk_failures(list, give_back).calls, 2);
    EXPECT_GT(fault_injection::walk_failures(connect, give_back).calls, 3);
    EXPECT_EQ(resources_in_use(), before);
}

}  // namespace
