#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

#include "support/ascii.h"
#include "support/fixed_text.h"
#include "vlrcomn/agent_identity.h"

using velora_com::qel::support::fixed_text_size;
using velora_com::qel::support::is_digit;
using velora_com::qel::support::is_space;

namespace {

// A text without its spaces. One that has none is taken as it stands.
class Compacted {
public:
    // False when the text does not fit.
    bool assign(std::string_view text) {
        if (text.find(' ') != std::string_view::npos) {
            size_t size = 0;
            for (const char character : text) {
                if (character == ' ') {
                    continue;
                }
                if (size == fixed_text_size - 1) {
                    return false;
                }
                buffer_[size++] = character;
            }
            text = {buffer_, size};
        }
        view_ = text;
        return text.size() < fixed_text_size;
    }
    std::string_view view() const { return view_; }

private:
    char buffer_[fixed_text_size];
    std::string_view view_;
};

struct Version {
    int32_t major;
    int32_t minor;
    int32_t build;
};

// The one number that versions are compared by. The minor is shifted by 16 only: content relies on it.
uint64_t pack(const Version& version) {
    const auto extended = [](int32_t part) {
        return static_cast<uint64_t>(static_cast<int64_t>(part));
    };
    return (extended(version.major) << 48) + (extended(version.minor) << 16) +
           extended(version.build);
}

// Reads a number as scanf's "%d" does, white space and sign included; it saturates where scanf's result
// is undefined. Returns where the number ends, or null when there is none.
const char* read_number(const char* at, const char* end, int32_t& number) {
    while (at != end && is_space(*at)) {
        ++at;
    }
    const bool negative = at != end && *at == '-';
    if (negative || (at != end && *at == '+')) {
        ++at;
    }
    if (at == end || !is_digit(*at)) {
        return nullptr;
    }
    const int64_t limit = std::numeric_limits<int32_t>::max() + int64_t{negative};
    int64_t value = 0;
    for (; at != end && is_digit(*at); ++at) {
        value = std::min(value * 10 + (*at - '0'), limit);
    }
    number = static_cast<int32_t>(negative ? -value : value);
    return at;
}

// Reads "major:minor:build" as far as it goes; parts that are not there keep their values.
void read_version(std::string_view text, Version& version) {
    const char* const end = text.data() + text.size();
    const char* at = read_number(text.data(), end, version.major);
    for (int32_t* part : {&version.minor, &version.build}) {
        if (at == nullptr || at == end || *at != ':') {
            return;
        }
        at = read_number(at + 1, end, *part);
    }
}

// The text up to a separator, or all of it. What follows the separator begins one further.
std::string_view until(std::string_view text, char separator) {
    return text.substr(0, text.find(separator));
}

std::string_view behind(std::string_view text, std::string_view front) {
    return text.substr(std::min(front.size() + 1, text.size()));
}

}  // namespace

uint32_t orumcomn_IsPlatformMatch(const char* platform, const char* list) {
    constexpr uint32_t match = 0;
    constexpr uint32_t version_outside = 1;

    Compacted machine;
    Compacted entries;
    if (platform == nullptr || list == nullptr || !machine.assign(platform) ||
        !entries.assign(list)) {
        return ORU_FAILURE;
    }
    const std::string_view name = until(machine.view(), ':');
    Version own{0, 0, 0};
    read_version(behind(machine.view(), name), own);
    const uint64_t version = pack(own);

    // Kept from one entry to the next.
    Version lower{0, 0, 0};
    Version upper{65535, -1, 65535};

    uint32_t result = ORU_FAILURE;
    std::string_view entry;
    for (std::string_view rest = entries.view(); !rest.empty(); rest = behind(rest, entry)) {
        entry = until(rest, '|');
        const std::string_view wanted = until(entry, ':');
        if (entry.empty() || name.find(wanted) == std::string_view::npos) {
            continue;
        }
        if (wanted.size() == entry.size()) {
            return match;
        }
        result = version_outside;
        const std::string_view range = behind(entry, wanted);
        read_version(range, lower);
        if (const size_t dash = range.find('-'); dash != std::string_view::npos) {
            read_version(range.substr(dash + 1), upper);
        }
        if (pack(lower) <= version && version <= pack(upper)) {
            return match;
        }
    }
    return result;
}
