#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
// After sys/socket.h, as older systems need it.
#include <net/if.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "network/ipv6_groups.h"
#include "network/numeric_text.h"
#include "network/resolving.h"
#include "support/boundary.h"
#include "support/open_socket.h"
#include "vlrcomn/network_util.h"

namespace velora_com::qel {
namespace {

// Room for the text of a resolved address whose scope is looked up. A longer text gets no scope;
// link-local addresses fit.
constexpr socklen_t scoped_text_size = 32;

// The getnameinfo of Mac OS X 10.4 and 10.5 puts "%" and an interface's name behind the text of an address
// that carries its scope in the second group, also past the length that it is told.
constexpr size_t scope_suffix_size = 1 + IF_NAMESIZE;

// Where there is no route some systems call a socket writable all the same; its own end is then 0.0.0.0
// or "::".
bool is_unspecified(const sockaddr_storage& end) {
    if (end.ss_family == AF_INET6) {
        const auto& bytes = reinterpret_cast<const sockaddr_in6&>(end).sin6_addr.s6_addr;
        return std::all_of(std::begin(bytes), std::end(bytes),
                           [](unsigned char byte) { return byte == 0; });
    }
    return end.ss_family == AF_INET &&
           reinterpret_cast<const sockaddr_in&>(end).sin_addr.s_addr == INADDR_ANY;
}

// The local end of a connected socket as text; nothing when it is unspecified.
std::optional<std::string> local_end(int socket, int flags) {
    sockaddr_storage end{};
    socklen_t size = network::any_address_size;
    char text[network::name_size];
    if (getsockname(socket, reinterpret_cast<sockaddr*>(&end), &size) != 0 || is_unspecified(end) ||
        !network::host_text(reinterpret_cast<sockaddr&>(end), flags, text)) {
        return std::nullopt;
    }
    return network::expand_ipv6(text);
}

}  // namespace

// NOLINTBEGIN(bugprone-easily-swappable-parameters): the interface has this order
int ANetworkUtil::vlrGetLocalIPAddress(const std::string& host, std::string port,
                                       std::string& local, const bool& ipv4Only, int niFlags,
                                       int seconds) const {
    // NOLINTEND(bugprone-easily-swappable-parameters)
    if (enabled_ != 1) {
        return -1;
    }
    return support::or_failure(-1, [&] {
        const network::Resolved resolved = network::resolve(host, port, ipv4Only);
        if (resolved.code != 0) {
            return resolved.code;
        }
        for (const addrinfo* entry = resolved.addresses.get(); entry != nullptr;
             entry = entry->ai_next) {
            if (entry->ai_family == AF_INET6) {
                char text[scoped_text_size + scope_suffix_size];
                unsigned int scope = 0;
                if (network::host_text(*entry->ai_addr, NI_NUMERICHOST, text, scoped_text_size) &&
                    vlrGetScopeId(text, scope) == 1) {
                    reinterpret_cast<sockaddr_in6*>(entry->ai_addr)->sin6_scope_id = scope;
                }
            }
            const support::FileDescriptor socket =
                support::open_socket(entry->ai_family, entry->ai_socktype, entry->ai_protocol);
            if (!socket || ConnectWithTimeout(socket.get(), entry->ai_addr,
                                              static_cast<int>(entry->ai_addrlen),
                                              static_cast<unsigned int>(seconds)) != 0) {
                continue;
            }
            if (std::optional<std::string> end = local_end(socket.get(), niFlags)) {
                local = *std::move(end);
                return 0;
            }
        }
        return -1;
    });
}

int ANetworkUtil::vlrGetLocalIPAddressFromList(const std::string& hosts, std::string port,
                                               std::string& local, const bool& ipv4Only, int,
                                               int seconds) const {
    return support::or_failure(-1, [&] {
        int result = -1;
        for (std::string_view left = hosts; !left.empty() && result != 0;) {
            const size_t end = left.find(';');
            const std::string host(left.substr(0, end));
            left.remove_prefix(end == std::string_view::npos ? left.size() : end + 1);
            if (!host.empty()) {
                result = vlrGetLocalIPAddress(host, port, local, ipv4Only, NI_NUMERICHOST, seconds);
            }
        }
        return result;
    });
}

}  // namespace velora_com::qel
