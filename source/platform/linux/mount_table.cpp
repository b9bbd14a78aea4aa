#include "platform/linux/mount_table.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace velora_com::qel::platform {

namespace {

// Takes the first word of `line` and the blank behind it away.
std::string_view take_word(std::string_view& line) {
    const std::string_view word = line.substr(0, line.find(' '));
    line.remove_prefix(std::min(word.size() + 1, line.size()));
    return word;
}

std::optional<int32_t> number(std::string_view word) {
    int32_t value = 0;
    const char* const end = word.data() + word.size();
    const auto [rest, error] = std::from_chars(word.data(), end, value);
    return error == std::errc() && rest == end ? std::optional(value) : std::nullopt;
}

// The kernel writes blanks, line ends and backslashes as three octal digits behind a backslash.
std::string decoded(std::string_view word) {
    const size_t plain = std::min(word.find('\\'), word.size());
    std::string text(word.substr(0, plain));
    for (size_t i = plain; i < word.size(); ++i) {
        unsigned int byte = 0;
        const char* const digits = word.data() + i + 1;
        if (word[i] == '\\' && word.size() - i > 3 &&
            std::from_chars(digits, digits + 3, byte, 8).ptr == digits + 3) {
            text += static_cast<char>(byte);
            i += 3;
        } else {
            text += word[i];
        }
    }
    return text;
}

// "36 35 98:0 /root /mount/point options optional... - type source options": any number of optional words.
std::optional<Mount> parse_mount(std::string_view line) {
    const auto id = number(take_word(line));
    const auto parent = number(take_word(line));
    const std::string_view device = take_word(line);
    take_word(line);
    const std::string_view mount_point = take_word(line);
    constexpr std::string_view separator = " - ";
    const size_t end_of_options = line.find(separator);
    if (!id || !parent || mount_point.substr(0, 1) != "/" ||
        end_of_options == std::string_view::npos) {
        return std::nullopt;
    }
    line.remove_prefix(end_of_options + separator.size());
    return Mount{*id, *parent, std::string(device), decoded(mount_point), decoded(take_word(line))};
}

}  // namespace

std::vector<Mount> parse_mount_table(std::string_view text) {
    std::vector<Mount> table;
    table.reserve(static_cast<size_t>(std::count(text.begin(), text.end(), '\n')));
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (auto mount = parse_mount(line)) {
            table.push_back(std::move(*mount));
        }
    }
    return table;
}

}  // namespace velora_com::qel::platform
