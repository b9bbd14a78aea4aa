#include "network/resolving.h"

#include <memory>
#include <new>
#include <utility>

#include "network/address_form.h"
#include "network/numeric_text.h"
#include "support/boundary.h"
#include "vlrcomn/network_util.h"

namespace velora_com::qel {
namespace network {

Resolved resolve(std::string host, const std::string& port, bool ipv4_only) {
    if (host.empty()) {
        return {-1, nullptr};
    }
    strip_brackets(host);
    strip_scope(host);
    addrinfo hints{};
    hints.ai_family = ipv4_only ? AF_INET : AF_UNSPEC;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* list = nullptr;
    const int code =
        getaddrinfo(host.c_str(), port.empty() ? nullptr : port.c_str(), &hints, &list);
    return {code, support::AddressInfo(code == 0 ? list : nullptr)};
}

}  // namespace network

namespace {

// How many texts one call hands out.
constexpr int most_texts = 14;

}  // namespace

int ANetworkUtil::vlrCreateAddrinfo(const std::string& host, const std::string& port,
                                    addrinfo** result, const bool& ipv4Only) const {
    if (result == nullptr) {
        return -1;
    }
    return support::or_failure(-1, [&] {
        network::Resolved resolved = network::resolve(host, port, ipv4Only);
        if (resolved.code == 0) {
            *result = resolved.addresses.release();
        }
        return resolved.code;
    });
}

std::string ANetworkUtil::vlrNetToString(sockaddr* address, int flags) const {
    if (enabled_ != 1 || address == nullptr) {
        return {};
    }
    char buffer[network::name_size] = {};
    bool written = false;
    if ((flags & NI_NUMERICSERV) != 0) {
        written = getnameinfo(address, network::any_address_size, nullptr, 0, buffer, sizeof buffer,
                              flags) == 0;
    } else if ((flags & NI_NUMERICHOST) != 0) {
        written = network::host_text(*address, flags, buffer);
    }
    return support::or_failure(std::string(),
                               [&] { return written ? std::string(buffer) : std::string(); });
}

int ANetworkUtil::vlrGetAddrinfo(const std::string& host, std::string port, std::vector<char*>& out,
                                 int niFlags) const {
    if (enabled_ != 1) {
        return -1;
    }
    return support::or_failure(-1, [&] {
        const network::Resolved resolved = network::resolve(host, port, false);
        if (resolved.code != 0) {
            return resolved.code;
        }
        int added = 0;
        for (const addrinfo* entry = resolved.addresses.get();
             entry != nullptr && added < most_texts; entry = entry->ai_next) {
            std::unique_ptr<char[]> text(new (std::nothrow) char[network::name_size]);
            if (text == nullptr || !network::host_text(*entry->ai_addr, niFlags, text.get())) {
                continue;
            }
            support::contained([&] {
                out.push_back(text.get());
                text.release();
                ++added;
            });
        }
        return added > 0 ? 0 : -1;
    });
}

void ANetworkUtil::vlrFreeAddrinfo(std::vector<char*>& out) const {
    if (enabled_ != 1) {
        return;
    }
    for (const char* text : out) {
        delete[] text;
    }
    out.clear();
}

}  // namespace velora_com::qel
