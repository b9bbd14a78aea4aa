#include "network/ipv6_groups.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace velora_com::qel::network {

bool has_plain_groups(const in6_addr& address) {
    const auto* bytes = address.s6_addr;
    if (std::all_of(bytes, bytes + 10, [](unsigned char byte) { return byte == 0; })) {
        return false;
    }
    const bool link_local = bytes[0] == 0xfe && (bytes[1] & 0xc0) == 0x80;
    return !link_local || (bytes[2] == 0 && bytes[3] == 0);
}

std::string plain_groups(const in6_addr& address) {
    char text[sizeof "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"];
    char* end = text;
    for (size_t at = 0; at < sizeof address.s6_addr; at += 2) {
        const unsigned int group = address.s6_addr[at] * 256u + address.s6_addr[at + 1];
        end = std::to_chars(end, std::end(text), group, 16).ptr;
        *end++ = ':';
    }
    return {text, end - 1};
}

}  // namespace velora_com::qel::network
