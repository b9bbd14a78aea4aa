// Filling the table of interfaces: one snapshot, walked twice, once for the link-layer entries and once
// for the addresses.
#include <netinet/in.h>
#include <sys/socket.h>
// After sys/socket.h, as older systems need it.
#include <net/if.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "network/address_snapshot.h"
#include "network/interface_index.h"
#include "network/ipv6_groups.h"
#include "network/mac_address.h"
#include "network/numeric_text.h"
#include "support/boundary.h"
#include "support/open_socket.h"
#include "vlrcomn/net_interface.h"

namespace velora_com::qel {
namespace {

struct Link {
    std::string mac;
    uint32_t index = 0;  // 0 until asked for
};

// By name; the first link-layer entry of a name counts. The names are those of the snapshot.
using Links = std::unordered_map<std::string_view, Link>;

Links link_layer_entries(const ifaddrs* snapshot) {
    Links links;
    for (const ifaddrs* entry = snapshot; entry != nullptr; entry = entry->ifa_next) {
        if (const auto address = platform::link_layer_address(*entry)) {
            links.try_emplace(entry->ifa_name, Link{network::mac_text(*address)});
        }
    }
    return links;
}

// Whether the system can open a socket of a family. An address is only reported when it can at the time of
// its turn; a socket that was opened stays open for the addresses of its family that follow, while a failure
// is never remembered. There is never more than one, since a process may have no more descriptors left.
class FamilyProbe {
public:
    // An open datagram socket of the family, or -1.
    int socket(int family) {
        if (!held_ || family != family_) {
            held_.reset();
            held_ = support::open_socket(family, SOCK_DGRAM, 0);
            family_ = family;
        }
        return held_.get();
    }

private:
    support::FileDescriptor held_;
    int family_ = AF_UNSPEC;
};

bool is_wanted(const ifaddrs& entry, bool include_loopback) {
    if (entry.ifa_addr == nullptr || (entry.ifa_flags & IFF_UP) == 0) {
        return false;
    }
    if ((entry.ifa_flags & IFF_LOOPBACK) != 0 && !include_loopback) {
        return false;
    }
    return entry.ifa_addr->sa_family == AF_INET || entry.ifa_addr->sa_family == AF_INET6;
}

// The address without its scope. The scope's name would be looked up only to be cut off again.
sockaddr_storage unscoped(const ifaddrs& entry) {
    sockaddr_storage address = network::whole_address(*entry.ifa_addr, entry.ifa_addr->sa_family);
    if (address.ss_family == AF_INET6) {
        reinterpret_cast<sockaddr_in6&>(address).sin6_scope_id = 0;
    }
    return address;
}

struct Texts {
    std::string address;
    std::string mask;
    std::string subnet;
};

Texts ipv4_texts(const sockaddr_storage& address, const sockaddr_storage& mask) {
    return {network::numeric_text(address), network::numeric_text(mask),
            network::ipv4_subnet_text(address, mask)};
}

Texts ipv6_texts(const sockaddr_storage& address, const sockaddr_storage& mask) {
    const in6_addr& address_bits = reinterpret_cast<const sockaddr_in6&>(address).sin6_addr;
    const in6_addr& mask_bits = reinterpret_cast<const sockaddr_in6&>(mask).sin6_addr;
    if (mask.ss_family == AF_INET6 && network::has_plain_groups(address_bits) &&
        network::has_plain_groups(mask_bits)) {
        in6_addr subnet;
        std::transform(std::begin(address_bits.s6_addr), std::end(address_bits.s6_addr),
                       std::begin(mask_bits.s6_addr), std::begin(subnet.s6_addr), std::bit_and<>());
        return {network::plain_groups(address_bits), network::plain_groups(mask_bits),
                network::plain_groups(subnet)};
    }
    Texts texts{network::expand_ipv6(network::numeric_text(address)),
                network::expand_ipv6(network::numeric_text(mask)),
                {}};
    texts.subnet = network::ipv6_subnet(texts.address, texts.mask);
    return texts;
}

// The record of one address. False when its address or its mask has no text.
bool describe(const ifaddrs& entry, IPAddress& record) {
    if (entry.ifa_netmask == nullptr) {
        return false;
    }
    const int family = entry.ifa_addr->sa_family;
    const sockaddr_storage address = unscoped(entry);
    const sockaddr_storage mask = network::whole_address(*entry.ifa_netmask, family);
    Texts texts = family == AF_INET6 ? ipv6_texts(address, mask) : ipv4_texts(address, mask);
    if (texts.address.empty() || texts.mask.empty()) {
        return false;
    }
    record.setOption(IP_ADDRESS, std::move(texts.address));
    record.setOption(IP_FAMILY, static_cast<unsigned int>(family));
    record.setOption(IP_SUBNETMASK, std::move(texts.mask));
    record.setOption(IP_SUBNETADDR, std::move(texts.subnet));
    return true;
}

}  // namespace

int NetInterfaceList::initialize() {
    return support::or_failure(0, [this] {
        const support::CancellationOff uncancelled;
        const support::InterfaceAddresses snapshot = network::address_snapshot();
        Links links = link_layer_entries(snapshot.get());
        FamilyProbe probe;
        std::map<uint32_t, NetInterface> filled = interfaces_;
        int added = 0;
        for (const ifaddrs* entry = snapshot.get(); entry != nullptr; entry = entry->ifa_next) {
            if (!is_wanted(*entry, include_loopback_)) {
                continue;
            }
            const auto link = links.find(entry->ifa_name);
            const int socket = probe.socket(entry->ifa_addr->sa_family);
            if (link == links.end() || socket == -1) {
                continue;
            }
            uint32_t& index = link->second.index;
            if (index == 0) {
                index = network::interface_index(entry->ifa_name, socket);
            }
            IPAddress record;
            if (index == 0 || !describe(*entry, record)) {
                continue;
            }
            NetInterface& interface = filled[index];
            interface.index_ = index;
            interface.index_name_ = entry->ifa_name;
            interface.mac_address_ = link->second.mac;
            interface.addresses_.push_back(std::move(record));
            added = 1;
        }
        interfaces_.swap(filled);
        return added;
    });
}

int getNetInterfacesList(NetInterfaceList& list) {
    return list.initialize() != 0 ? 1 : 0;
}

}  // namespace velora_com::qel
