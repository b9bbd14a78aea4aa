#include <netdb.h>
#include <sys/socket.h>

#include <string_view>
#include <utility>

#include "network/address_form.h"
#include "support/boundary.h"
#include "support/owners.h"
#include "vlrcomn/net_interface.h"
#include "vlrcomn/network_util.h"

namespace velora_com::qel {
namespace {

constexpr std::string_view link_local_prefix = "fe80";

// Whether the resolver takes a text as an address.
bool resolves(const std::string& text) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    if (getaddrinfo(text.c_str(), nullptr, &hints, &list) != 0) {
        return false;
    }
    support::AddressInfo owner(list);
    return true;
}

}  // namespace

int ANetworkUtil::vlrGetScopeId(const std::string& address, unsigned int& scope) const {
    if (enabled_ != 1) {
        return 0;
    }
    return support::or_failure(0, [&] {
        const std::string bare = formatV6addr(address, false);
        if (bare.compare(0, link_local_prefix.size(), link_local_prefix) != 0) {
            return 0;
        }
        NetInterfaceList interfaces(false);
        if (getNetInterfacesList(interfaces) != 1) {
            return 0;
        }
        for (const unsigned int index : interfaces.getIndexes()) {
            if (resolves(bare + '%' + std::to_string(index))) {
                scope = index;
                return 1;
            }
        }
        return 0;
    });
}

std::string ANetworkUtil::formatV6addrWithScope(std::string address, bool keepBrackets) const {
    return support::or_failure(std::string(), [&] {
        const bool bracketed = network::strip_brackets(address);
        network::strip_scope(address);
        unsigned int scope = 0;
        if (vlrGetScopeId(address, scope) == 1) {
            address += '%';
            address += std::to_string(scope);
        }
        return keepBrackets && bracketed ? '[' + address + ']' : std::move(address);
    });
}

}  // namespace velora_com::qel
