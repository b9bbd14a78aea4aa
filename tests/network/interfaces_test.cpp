// The table of interfaces, link-local scopes and resolved addresses, from lists that the test writes.
#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <netpacket/packet.h>

#include "support/fault_injection.h"
#include "vlrcomn/net_interface.h"
#include "vlrcomn/network_util.h"

// An address is IPv4, IPv6 or the six characters of a link-layer one. A mask states no family.
static struct Entry {
    const char* name;
    unsigned int flags;
    const char *address, *mask;
    ifaddrs listed{};
    sockaddr_storage address_room{}, mask_room{};
} entries[] = {
    {"no tun", IFF_UP, nullptr, nullptr},
    {"lo", 0, "lo-mac", nullptr},
    {"lo", IFF_UP, "second", nullptr},  // the first one counts
    {"lo", IFF_UP, "203.0.113.9", "255.255.255.252"},
    {"lo", IFF_UP, "10.0.0.1", nullptr},
    {"lo", IFF_RUNNING, "10.0.0.2", "255.0.0.0"},
    {"no link", IFF_UP, "10.0.0.3", "255.0.0.0"},
    {"sixteen letters!", 0, "gonmac", nullptr},
    {"sixteen letters!", IFF_UP, "10.0.0.4", "255.0.0.0"},  // no name is so long
    {"no tun", IFF_UP, "10.0.0.5", "255.0.0.0"},            // gone meanwhile
    {"lo", IFF_UP | IFF_LOOPBACK, "127.0.0.1", "255.0.0.0"},
    {"lo", IFF_UP, "2001:db8::6", "family"},  // which is another one
    {"lo", IFF_UP, "::ffff:10.1.2.3", "ffff:ffff:ffff:ffff:ffff:ffff::"},
    {"lo", IFF_UP, "febf:1::2", "ffff:ffff:ffff:ffff::"},  // with its scope
    {"lo", IFF_UP, "fe80::1", "ffff:ffff:ffff:ffff::"},
};
static ifaddrs &ipv4 = entries[3].listed, &link_local = std::end(entries)[-1].listed;

static sockaddr* read(const char* text, sockaddr_storage& room, bool is_mask) {
    auto& link = reinterpret_cast<sockaddr_ll&>(room);
    if (text == nullptr) {
        return nullptr;
    }
    if (inet_pton(AF_INET, text, &reinterpret_cast<sockaddr_in&>(room).sin_addr) == 1 ||
        inet_pton(AF_INET6, text, &reinterpret_cast<sockaddr_in6&>(room).sin6_addr) == 1) {
        const bool is_ipv6 = std::strchr(text, ':') != nullptr;
        room.ss_family = is_mask ? AF_UNSPEC : is_ipv6 ? AF_INET6 : AF_INET;
    } else {
        room.ss_family = AF_PACKET;
        std::memcpy(link.sll_addr, text, link.sll_halen = 6);
    }
    return reinterpret_cast<sockaddr*>(&room);
}

static int lists = 0;  // taken from the system and not given back
static const char* resolved = "fe80:1::1234:5678:9abc:def1";
static uint32_t connected_scope = 0;
static std::vector<const char*> local_ends;  // of the connections to come, from the back

extern "C" int getifaddrs(ifaddrs** list) __THROW {
    for (auto& [name, flags, address, mask, listed, address_room, mask_room] : entries) {
        *std::exchange(list, &listed.ifa_next) = &listed;
        listed.ifa_name = const_cast<char*>(name);
        listed.ifa_flags = flags;
        listed.ifa_addr = read(address, address_room, false);
        listed.ifa_netmask = read(mask, mask_room, true);
    }
    *list = nullptr;
    return lists++, 0;
}

// Every host but "none" has sixteen addresses; one with a scope has them if that is 1.
extern "C" int getaddrinfo(const char* host, const char*, const addrinfo*, addrinfo** list) {
    static addrinfo sixteen[16];
    static sockaddr_storage address;
    address = {};
    const bool scoped = std::strchr(host, '%') != nullptr;
    if (std::strcmp(host, "none") == 0 || (scoped && std::strstr(host, "1%1") == nullptr)) {
        return EAI_NONAME;
    }
    for (addrinfo& entry : sixteen) {
        *std::exchange(list, &entry.ai_next) = &entry;
        entry.ai_family = AF_INET6;
        entry.ai_socktype = SOCK_STREAM;
        entry.ai_addr = read(resolved, address, false);
    }
    *list = nullptr;
    return lists++, 0;
}

// As on Mac OS X 10.4: a link-local address has its scope in the second group, and the name of that
// interface goes behind the text instead, whatever the size.
extern "C" int getnameinfo(const sockaddr* address, socklen_t, char* host, socklen_t size, char*,
                           socklen_t, int) {
    const bool is_ipv4 = address->sa_family == AF_INET;
    in6_addr bits{};
    std::memcpy(&bits, &address->sa_data[is_ipv4 ? 2 : 6], is_ipv4 ? 4 : sizeof bits);
    const bool scoped = bits.s6_addr[0] == 0xfe && std::exchange(bits.s6_addr[3], 0) != 0;
    if (inet_ntop(address->sa_family, &bits, host, size) == nullptr) {
        return EAI_FAMILY;
    }
    std::strcat(host, scoped ? "%fifteen-letters" : "");
    return 0;
}

extern "C" void freeifaddrs(ifaddrs*) __THROW {
    --lists;
}
extern "C" void freeaddrinfo(addrinfo*) __THROW {
    --lists;
}
extern "C" int connect(int, const sockaddr* address, socklen_t) {
    connected_scope = reinterpret_cast<const sockaddr_in6*>(address)->sin6_scope_id;
    return 0;
}
extern "C" int getsockname(int, sockaddr* end, socklen_t*) __THROW {
    const char* text = local_ends.back();
    local_ends.pop_back();
    return read(text, reinterpret_cast<sockaddr_storage&>(*end), false) == nullptr ? -1 : 0;
}

using namespace velora_com::qel;
using fault_injection::failing;

const ANetworkUtil util;
const struct Disabled : ANetworkUtil {
    Disabled() { enabled_ = 2; }
} disabled;

struct Network : testing::Test {
    ~Network() override { EXPECT_EQ(lists, 0) << "not given back"; }

    std::vector<std::string> addresses() {
        std::vector<std::string> all;
        const NetInterface& lo = list_.getNetInterface(1u);
        EXPECT_EQ(std::to_string(lo.getIndex()) + lo.getIndexName() + lo.getMACAddress(),
                  "1lo6c6f2d6d6163");
        for (const IPAddress& address : lo.getIPAddress()) {
            all.push_back(std::to_string(address.getIPFamily()) + ' ' + address.getIPAddress() +
                          '/' + address.getSubNetMask() + '=' + address.getSubNetAddr());
        }
        return all;
    }

    int find_local(const ANetworkUtil& with = util, const char* host = "host") {
        return with.vlrGetLocalIPAddress(host, "9", text_, false, NI_NUMERICHOST, 5);
    }

    NetInterfaceList list_{false};
    std::string text_;
};

TEST_F(Network, IsListedWhereNothingIsMissingAndSearchedByIndex) {
    EXPECT_EQ(getNetInterfacesList(list_), 1);
    const std::vector<std::string> expected = {
        "2 203.0.113.9/255.255.255.252=203.0.113.8",
        // The expansion takes the IPv4 tail for one group, which leaves one too many.
        "10 0:0:0:0:0:0:ffff:10.1.2.3/ffff:ffff:ffff:ffff:ffff:ffff:0:0=0:0:0:0:0:0:0:0",
        "10 febf:0:0:0:0:0:0:2/ffff:ffff:ffff:ffff:0:0:0:0=febf:0:0:0:0:0:0:0",
        "10 fe80:0:0:0:0:0:0:1/ffff:ffff:ffff:ffff:0:0:0:0=fe80:0:0:0:0:0:0:0",
    };
    EXPECT_EQ(addresses(), expected);
    NetInterface found, &entry = list_.getNetInterface(9u);
    EXPECT_EQ(entry.getIndex(), 0u) << "a new entry is empty";
    EXPECT_EQ(list_.getNetInterface(1u, entry), 1);
    EXPECT_EQ(list_.getNetInterface(8u, entry), 0);
    IPAddress address;
    address.setOption(IP_ADDRESS, "fe80:9");
    address.setOption(IP_FAMILY, "a number");  // of no effect, as other wrong pairs
    address.setOption(IP_ADDRESS, 5u);
    EXPECT_EQ(address.getIPAddress() + std::to_string(address.getIPFamily()), "fe80:90");
    entry.setOption(NETINTERFACE_IPADDRESS, address);
    entry.setOption(NETINTERFACE_MACADDRESS, "mac9");
    entry.setOption(NETINTERFACE_INDEXNAME, "name9");
    entry.setOption(NETINTERFACE_INDEX, 19u);
    entry.setOption(NETINTERFACE_INDEX, address);
    entry.setOption(NETINTERFACE_INDEX, "a number");
    entry.setOption(NETINTERFACE_INDEXNAME, 5u);
    EXPECT_EQ(entry.getIPAddress().size(), 5u) << "appended to those of the copy";
    EXPECT_EQ(getMACAddressFromIPAddress(text_, "fe80:9", list_), 1);
    EXPECT_EQ(getMACAddressFromIPAddress(text_, "fe80::9", list_), 0);
    EXPECT_EQ(getNetInterfaceFromIPAddress(found, "fe80:9", list_), 1);
    EXPECT_EQ(text_ + found.getIndexName() + std::to_string(found.getIndex()), "mac9name919");
    EXPECT_EQ(getNetInterfaceFromIPAddress(found, "203.0.113.9", list_), 1);
    EXPECT_EQ(getNetInterfaceFromIPAddress(found, "10.0.0.4", list_), 0);
    EXPECT_EQ(found.getMACAddress(), "6c6f2d6d6163") << "the first match wins";
    EXPECT_EQ(list_.getIndexes(), (std::vector<unsigned int>{1, 9}));

    EXPECT_EQ(failing(1, "malloc", [&] { return list_.getNetInterface(1u, found); }), 0);
    const auto find = [&] { return getNetInterfaceFromIPAddress(found, "203.0.113.9", list_); };
    EXPECT_EQ(failing(1, "malloc", find), 0);

    EXPECT_EQ(list_.initialize(), 1);
    EXPECT_EQ(addresses().size(), 8u) << "a second filling adds all again";
    list_ = NetInterfaceList(true);
    EXPECT_EQ(list_.initialize(), 1);
    EXPECT_THAT(addresses(), testing::Contains("2 127.0.0.1/255.0.0.0=127.0.0.0"));
}

TEST_F(Network, IsDescribedInParts) {
    for (const auto& [name, mac] :
         {std::pair("sixteen letters!", "676f6e6d6163"), {"no tun", "000000000000"}}) {
        EXPECT_EQ(getMacAddr(text_, name), 1);
        EXPECT_EQ(text_, mac);
    }
    EXPECT_EQ(getMacAddr(text_, "no link"), 0);
    unsigned char bytes[] = {0, 0x1b, 0x63, 0xa4, 0x0f, 0x9c};
    EXPECT_EQ(formatMACAddress(bytes) + formatMACAddress(nullptr), "001b63a40f9c");
    const std::unique_ptr<sockaddr> short_mask(new sockaddr(*ipv4.ifa_netmask));
    short_mask->sa_family = AF_INET;
    sockaddr_storage stating = std::end(entries)[-3].mask_room;
    stating.ss_family = AF_INET6;
    sockaddr* const states_ipv6 = reinterpret_cast<sockaddr*>(&stating);
    sockaddr *const wide = link_local.ifa_netmask, *const narrow = ipv4.ifa_netmask;
    // Without an address the mask itself is asked for. What the mask states counts.
    const std::tuple<unsigned int, sockaddr*, sockaddr*, const char*> table[] = {
        {AF_INET6, wide, nullptr, "ffff:ffff:ffff:ffff::"},
        {AF_INET, states_ipv6, nullptr, "ffff:ffff:ffff:ffff:ffff:ffff::"},
        {AF_INET6, short_mask.get(), nullptr, "255.255.255.252"},
        {AF_UNIX, narrow, nullptr, "untouched"},
        {AF_INET, nullptr, nullptr, "untouched"},
        {AF_INET6, wide, link_local.ifa_addr, "N/A"},
        {AF_INET, narrow, ipv4.ifa_addr, "203.0.113.8"},
        {AF_INET, nullptr, ipv4.ifa_addr, "untouched"},
    };
    for (const auto& [family, mask, address, expected] : table) {
        text_ = "untouched";
        const int result = address == nullptr ? getNetMask(family, mask, text_)
                                              : getNetAddr(family, mask, address, text_);
        EXPECT_EQ(text_, expected);
        EXPECT_EQ(result, text_ != "untouched");
    }
    EXPECT_EQ(getNetAddr(AF_INET, ipv4.ifa_netmask, nullptr, text_), 0);
    EXPECT_EQ(failing(1, "malloc", [&] { return getNetMask(AF_INET6, wide, text_); }), 0);
}

TEST_F(Network, IsListedWithOneFreeDescriptor) {
    rlimit former{};
    getrlimit(RLIMIT_NOFILE, &former);
    const int free = dup(0);
    close(free);
    rlimit one = former;
    one.rlim_cur = static_cast<rlim_t>(free) + 1;
    setrlimit(RLIMIT_NOFILE, &one);
    EXPECT_EQ(list_.initialize(), 1);
    setrlimit(RLIMIT_NOFILE, &former);
    EXPECT_EQ(addresses().size(), 4u);
}

// Memory that runs out leaves the table as it was; another fault costs only the address that meets it.
TEST_F(Network, IsListedAsFarAsTheSystemAnswers) {
    size_t fewest = 4;
    const auto fill = [&] { return list_.initialize() == 1; };
    const auto walk = fault_injection::walk_failures(fill, [&] {
        fewest = std::min(fewest, addresses().size());
        EXPECT_THAT(addresses(), Each(Not(testing::HasSubstr("/="))));
        list_ = NetInterfaceList(false);
    });
    EXPECT_GT(walk.calls - walk.tolerated, 10);
    EXPECT_EQ(fewest, 3U);
    failing(1, "malloc",
            [&] { return list_.getNetInterface(9u).setOption(NETINTERFACE_INDEX, 9u), 0; });
    EXPECT_EQ(list_.getIndexes().size(), 0u) << "not in the table";
}

TEST_F(Network, GivesLinkLocalAddressesTheirScopeAndAtMostFourteenTexts) {
    EXPECT_EQ(util.formatV6addrWithScope("[fe80::1%77]", true), "[fe80::1%1]");
    EXPECT_EQ(util.formatV6addrWithScope("fe80::2", true), "fe80::2") << "the resolver's word";
    EXPECT_EQ(util.formatV6addrWithScope("[2001:db8::1%3]", true), "[2001:db8::1]");
    const char* const former = resolved;
    // A text of 32 characters is too long for a scope.
    for (const auto& [peer, scope] : {std::pair(former, 1u),
                                      {"fe80:100:aaaa:bbbb:cccc:ddd:e:1", 1u},
                                      {"fe80:100:aaaa:bbbb:cccc:dddd:e:1", 0u}}) {
        local_ends = {"::5", "::", nullptr, "0.0.0.0"};
        resolved = peer;
        EXPECT_EQ(find_local(), 0);
        EXPECT_EQ(connected_scope, scope);
    }
    local_ends.assign(16, "::");
    resolved = former;
    EXPECT_EQ(find_local(), -1);
    EXPECT_EQ(text_, "0:0:0:0:0:0:0:5");
    std::vector<char*> texts;
    EXPECT_EQ(util.vlrGetAddrinfo("host", "", texts, NI_NUMERICHOST), 0);
    EXPECT_EQ(texts.size(), 14u);
    EXPECT_STREQ(texts[13], "fe80::1234:5678:9abc:def1%fifteen-letters");
    disabled.vlrFreeAddrinfo(texts);
    EXPECT_EQ(texts.size(), 14u);
    util.vlrFreeAddrinfo(texts);
    EXPECT_EQ(texts.size(), 0u);
}

TEST_F(Network, ToleratesFailuresOfTheSystemWhereAnotherAddressIsLeft) {
    local_ends.reserve(16);
    const auto find = [&] { return local_ends.assign(16, "::5"), find_local() == 0; };
    EXPECT_GT(fault_injection::walk_failures(find, [] {}).tolerated, 5);
    std::vector<char*> texts;
    const auto give_back = [&] {
        util.vlrFreeAddrinfo(texts);
        std::vector<char*>().swap(texts);
    };
    const auto resolve = [&] { return util.vlrGetAddrinfo("host", "", texts, 0) == 0; };
    EXPECT_GT(fault_injection::walk_failures(resolve, give_back).tolerated, 14);
}

TEST_F(Network, FailsByTheStatedResult) {
    EXPECT_EQ(find_local(util, "none"), EAI_NONAME);
    EXPECT_EQ(find_local(disabled), -1);
    std::vector<char*> texts;
    EXPECT_EQ(util.vlrGetAddrinfo("none", "", texts, NI_NUMERICHOST), EAI_NONAME);
    EXPECT_EQ(disabled.vlrGetAddrinfo("host", "", texts, NI_NUMERICHOST), -1);
    addrinfo* list = nullptr;
    EXPECT_EQ(util.vlrCreateAddrinfo("none", "", &list, false), EAI_NONAME);
    EXPECT_EQ(util.vlrCreateAddrinfo("", "", &list, false), -1);
    EXPECT_EQ(util.vlrCreateAddrinfo("host", "", nullptr, false), -1);
    const char* peer = "fe80::1234:5678:9abc:def1%3";
    EXPECT_EQ(util.vlrCompareAddressFromPeerAddress("host", "", peer), 1);
    EXPECT_EQ(util.vlrCompareAddressFromPeerAddress("none", "", peer), 0);
    EXPECT_EQ(disabled.vlrCompareAddressFromPeerAddress("host", "", peer), 0);
    EXPECT_EQ(list_.initialize(), 1);  // which writes the addresses
    sockaddr* address = ipv4.ifa_addr;
    EXPECT_EQ(util.vlrNetToString(address, NI_NUMERICHOST), "203.0.113.9");
    EXPECT_EQ(util.vlrNetToString(address, 0) + util.vlrNetToString(nullptr, NI_NUMERICHOST), "");
    EXPECT_EQ(disabled.vlrNetToString(address, NI_NUMERICHOST), "");
    unsigned int scope = 7;
    EXPECT_EQ(util.vlrGetScopeId("[fe80::1%9]", scope), 1);
    EXPECT_EQ(std::exchange(scope, 7), 1u);
    EXPECT_EQ(disabled.vlrGetScopeId("fe80::1", scope), 0);
    EXPECT_EQ(failing(1, "getifaddrs", [&] { return util.vlrGetScopeId("fe80::1", scope); }), 0);
    EXPECT_EQ(scope, 7u);
}
