// The IPv6 text forms against a plain model: every function rewritten with the simplest means, one group
// or character at a time, and the numbers read by the C library itself.
//
// The input is one text, or two with a line feed between them (address and mask).
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "vlrcomn/ipv6_text.h"

namespace {

using velora_com::qel::calculateSubNetAddrForV6;
using velora_com::qel::convertLiteralFormatToV6Addr;
using velora_com::qel::convertV6AddrToLiteralFormat;
using velora_com::qel::expandIPV6Address;
using velora_com::qel::noOfOccurences;

constexpr char domain[] = ".ipv6-literal.net";

void require_equal(const char* what, const std::string& result, const std::string& model) {
    if (result != model) {
        std::fprintf(stderr, "%s: '%s', not '%s'\n", what, result.c_str(), model.c_str());
        std::abort();
    }
}

int colons(const std::string& text) {
    unsigned int count = 0;
    for (const char ch : text) {
        if (ch == ':') {
            count = (count + 1) % 65536;
        }
    }
    return count > 7 ? 7 : static_cast<int>(count);
}

std::string cut_at(const std::string& text, char ch) {
    std::string front;
    for (const char next : text) {
        if (next == ch) {
            break;
        }
        front += next;
    }
    return front;
}

std::string expanded(const std::string& address) {
    std::string text = cut_at(address, '%');
    for (size_t i = 1; i < text.size(); ++i) {
        if (text[i - 1] != ':' || text[i] != ':') {
            continue;
        }
        const std::string head = text.substr(0, i - 1);
        const std::string tail = text.substr(i);
        std::string result = head.empty() ? "0" : head;
        for (int missing = 7 - colons(head) - colons(tail); missing > 0; --missing) {
            result += ":0";
        }
        result += tail;
        return tail[tail.size() - 1] == ':' ? result + "0" : result;
    }
    return text;
}

std::vector<std::string> groups(const std::string& text) {
    std::vector<std::string> all(1);
    for (const char ch : text) {
        if (ch == ':') {
            all.emplace_back();
        } else {
            all.back() += ch;
        }
    }
    return all;
}

uint32_t number(const std::string& group) {
    errno = 0;
    const unsigned long long value = std::strtoull(group.c_str(), nullptr, 16);
    const bool negative = group.find('-') < group.find_first_of("0123456789abcdefABCDEF");
    const unsigned long long magnitude = negative ? 0 - value : value;
    if (errno == ERANGE || magnitude > UINT32_MAX) {
        return UINT32_MAX;
    }
    return static_cast<uint32_t>(value);
}

std::string subnet(const std::string& address, const std::string& mask) {
    std::string result;
    if (address.empty() || mask.empty()) {
        return result;
    }
    const auto left = groups(address);
    const auto right = groups(mask);
    for (size_t i = 0; i < left.size() && i < right.size(); ++i) {
        char text[16];
        std::snprintf(text, sizeof text, "%s%x", i == 0 ? "" : ":",
                      static_cast<unsigned>(number(left[i]) & number(right[i])));
        result += text;
    }
    return result;
}

std::string without_brackets(const std::string& text) {
    const std::string front = cut_at(text, '[');
    if (front.size() == text.size()) {
        return text;
    }
    const std::string behind = text.substr(front.size() + 1);
    const std::string inner = cut_at(behind, ']');
    return inner.size() == behind.size() ? text : inner;
}

std::string replaced(std::string text, char from, char to) {
    for (char& ch : text) {
        ch = ch == from ? to : ch;
    }
    return text;
}

bool contains(const std::string& text, const std::string& part) {
    for (size_t i = 0; i + part.size() <= text.size(); ++i) {
        if (text.compare(i, part.size(), part) == 0) {
            return true;
        }
    }
    return false;
}

std::string literal(const std::string& address) {
    if (contains(address, domain) || cut_at(address, ':') == address) {
        return address;
    }
    return cut_at(replaced(without_brackets(address), ':', '-'), '%') + domain;
}

std::string from_literal(const std::string& text) {
    std::string name = without_brackets(text);
    if (!contains(name, domain)) {
        return name;
    }
    return cut_at(replaced(name.substr(0, name.find(domain)), '-', ':'), 's');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::string address = cut_at(input, '\n');
    const std::string mask = address.size() < size ? input.substr(address.size() + 1) : "";
    for (const std::string& text : {address, mask}) {
        require_equal("expanded", expandIPV6Address(text), expanded(text));
        require_equal("literal", convertV6AddrToLiteralFormat(text), literal(text));
        require_equal("from literal", convertLiteralFormatToV6Addr(text), from_literal(text));
        require_equal("colons", std::to_string(noOfOccurences(text, ':', 7)),
                      std::to_string(colons(text)));
    }
    require_equal("subnet", calculateSubNetAddrForV6(address, mask), subnet(address, mask));
    return 0;
}
