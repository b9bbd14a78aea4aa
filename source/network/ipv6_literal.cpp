#include <algorithm>
#include <string_view>

#include "network/address_form.h"
#include "support/boundary.h"
#include "vlrcomn/ipv6_text.h"

namespace velora_com::qel {
namespace {

// The domain that marks an IPv6 address written as a host name.
constexpr std::string_view literal_domain = ".ipv6-literal.net";

}  // namespace

std::string convertV6AddrToLiteralFormat(std::string address) {
    return support::or_failure(std::string(), [&address] {
        if (address.find(literal_domain) != std::string::npos ||
            address.find(':') == std::string::npos) {
            return std::move(address);
        }
        network::strip_brackets(address);
        std::replace(address.begin(), address.end(), ':', '-');
        network::strip_scope(address);
        address += literal_domain;
        return std::move(address);
    });
}

std::string convertLiteralFormatToV6Addr(std::string text) {
    network::strip_brackets(text);
    const size_t domain = text.find(literal_domain);
    if (domain == std::string::npos) {
        return text;
    }
    text.erase(domain);
    std::replace(text.begin(), text.end(), '-', ':');
    const size_t scope = text.find('s');
    if (scope != std::string::npos) {
        text.erase(scope);
    }
    return text;
}

}  // namespace velora_com::qel
