#include "vlrcomn/ipv6_text.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "network/address_form.h"
#include "network/ipv6_groups.h"
#include "support/boundary.h"

namespace velora_com::qel {
namespace {

// The colons of an address with all its groups.
constexpr int full_colons = 7;

int count_to_limit(std::string_view text, char ch, int limit) {
    const auto count = static_cast<uint16_t>(std::count(text.begin(), text.end(), ch));
    return count <= full_colons ? count : limit;
}

// strtoul in base 16 on a host whose long has 32 bits: blanks, a sign and "0x" are taken, the first other
// character ends the number, and a number that does not fit is all-ones.
uint32_t parse_group(std::string_view text) {
    size_t at = text.find_first_not_of(" \t\n\v\f\r");
    if (at == std::string_view::npos) {
        return 0;
    }
    const bool negative = text[at] == '-';
    if (negative || text[at] == '+') {
        ++at;
    }
    // "0x" without a digit behind it reads 0, as it does without this step.
    if (text.substr(at, 2) == "0x" || text.substr(at, 2) == "0X") {
        at += 2;
    }
    uint32_t value = 0;
    for (; at < text.size(); ++at) {
        const char ch = text[at];
        uint32_t digit;
        if (ch >= '0' && ch <= '9') {
            digit = static_cast<uint32_t>(ch - '0');
        } else if (ch >= 'a' && ch <= 'f') {
            digit = static_cast<uint32_t>(ch - 'a') + 10;
        } else if (ch >= 'A' && ch <= 'F') {
            digit = static_cast<uint32_t>(ch - 'A') + 10;
        } else {
            break;
        }
        if (value >> 28 != 0) {
            return UINT32_MAX;
        }
        value = value << 4 | digit;
    }
    return negative ? 0 - value : value;
}

void append_hex(std::string& text, uint32_t value) {
    constexpr char digits[] = "0123456789abcdef";
    int shift = 28;
    while (shift > 0 && value >> shift == 0) {
        shift -= 4;
    }
    for (; shift >= 0; shift -= 4) {
        text += digits[value >> shift & 15];
    }
}

}  // namespace

namespace network {

std::string expand_ipv6(std::string address) {
    strip_scope(address);
    const size_t gap = address.find("::");
    if (gap == std::string::npos) {
        return address;
    }
    const std::string_view head = std::string_view(address).substr(0, gap);
    const std::string_view tail = std::string_view(address).substr(gap + 1);
    const int missing = full_colons - (count_to_limit(head, ':', full_colons) +
                                       count_to_limit(tail, ':', full_colons));
    std::string expanded;
    expanded.reserve(address.size() + 2 * full_colons + 2);
    if (gap == 0) {
        expanded += '0';
    }
    expanded += head;
    for (int group = 0; group < missing; ++group) {
        expanded += ":0";
    }
    expanded += tail;
    if (expanded.back() == ':') {
        expanded += '0';
    }
    return expanded;
}

std::string ipv6_subnet(const std::string& address, const std::string& mask) {
    std::string subnet;
    if (address.empty() || mask.empty()) {
        return subnet;
    }
    std::string_view address_left = address;
    std::string_view mask_left = mask;
    subnet.reserve(address.size());
    for (;;) {
        const size_t address_colon = address_left.find(':');
        const size_t mask_colon = mask_left.find(':');
        append_hex(subnet, parse_group(address_left.substr(0, address_colon)) &
                               parse_group(mask_left.substr(0, mask_colon)));
        if (address_colon == std::string_view::npos || mask_colon == std::string_view::npos) {
            return subnet;
        }
        subnet += ':';
        address_left.remove_prefix(address_colon + 1);
        mask_left.remove_prefix(mask_colon + 1);
    }
}

}  // namespace network

int noOfOccurences(const std::string& text, char ch, int limit) {
    return count_to_limit(text, ch, limit);
}

std::string expandIPV6Address(std::string address) {
    return support::or_failure(std::string(),
                               [&address] { return network::expand_ipv6(std::move(address)); });
}

std::string calculateSubNetAddrForV6(const std::string& address, const std::string& mask) {
    return support::or_failure(std::string(), [&] { return network::ipv6_subnet(address, mask); });
}

}  // namespace velora_com::qel
