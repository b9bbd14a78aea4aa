#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

#include "support/ascii.h"
#include "vlrcomn/agent_identity.h"

using velora_com::qel::support::is_digit;

namespace {

// Size of a working text, its terminator's place included.
constexpr size_t text_size = 260;

// A text without its spaces.
class Compacted {
public:
    // False when the text does not fit.
    bool assign(const char* text) {
        for (; *text != '\0'; ++text) {
            if (*text == ' ') {
                continue;
            }
            if (size_ == text_size - 1) {
                return false;
            }
            buffer_[size_++] = *text;
        }
        return true;
    }
    std::string_view view() const { return {buffer_, size_}; }

private:
    char buffer_[text_size];
    size_t size_ = 0;
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

// Reads a number as scanf's "%d" does, white space and sign included, and takes it off the text. It
// saturates where scanf's result is undefined. False when there is no number.
bool take_number(std::string_view& text, int32_t& number) {
    size_t at = text.find_first_not_of(velora_com::qel::support::white_space);
    if (at == std::string_view::npos) {
        return false;
    }
    const bool negative = text[at] == '-';
    if (negative || text[at] == '+') {
        ++at;
    }
    if (at == text.size() || !is_digit(text[at])) {
        return false;
    }
    const int64_t limit = std::numeric_limits<int32_t>::max() + int64_t{negative};
    int64_t value = 0;
    for (; at < text.size() && is_digit(text[at]); ++at) {
        value = std::min(value * 10 + (text[at] - '0'), limit);
    }
    number = static_cast<int32_t>(negative ? -value : value);
    text.remove_prefix(at);
    return true;
}

// Reads "major:minor:build" as far as it goes; parts that are not there keep their values.
void read_version(std::string_view text, Version& version) {
    if (!take_number(text, version.major)) {
        return;
    }
    for (int32_t* part : {&version.minor, &version.build}) {
        if (text.empty() || text[0] != ':') {
            return;
        }
        text.remove_prefix(1);
        if (!take_number(text, *part)) {
            return;
        }
    }
}

// Takes the text up to a separator, or all of it, off the front. The second half is only there when
// the separator is.
struct Halves {
    std::string_view first;
    std::string_view second;
    bool divided;
};

Halves divide(std::string_view text, char separator) {
    const size_t at = text.find(separator);
    if (at == std::string_view::npos) {
        return {text, {}, false};
    }
    return {text.substr(0, at), text.substr(at + 1), true};
}

}  // namespace

uint32_t orumcomn_IsPlatformMatch(const char* platform, const char* list) {
    constexpr uint32_t match = 0;
    constexpr uint32_t named = 1;

    Compacted machine;
    Compacted entries;
    if (platform == nullptr || list == nullptr || !machine.assign(platform) ||
        !entries.assign(list)) {
        return ORU_FAILURE;
    }
    const Halves description = divide(machine.view(), ':');
    Version own{0, 0, 0};
    read_version(description.second, own);
    const uint64_t version = pack(own);

    // Kept from one entry to the next.
    Version lower{0, 0, 0};
    Version upper{65535, -1, 65535};

    uint32_t result = ORU_FAILURE;
    for (Halves rest{{}, entries.view(), true}; rest.divided;) {
        rest = divide(rest.second, '|');
        if (rest.first.empty()) {
            continue;
        }
        const Halves entry = divide(rest.first, ':');
        if (description.first.find(entry.first) == std::string_view::npos) {
            continue;
        }
        if (!entry.divided) {
            return match;
        }
        result = named;
        read_version(entry.second, lower);
        if (const Halves bounds = divide(entry.second, '-'); bounds.divided) {
            read_version(bounds.second, upper);
        }
        if (pack(lower) <= version && version <= pack(upper)) {
            return match;
        }
    }
    return result;
}
