#include "table.h"

#include <algorithm>

#include "text.h"
#include "values.h"

namespace vlrprops {

namespace {

// Column of the values: behind the longest property name and its indentation.
constexpr size_t value_column = 24;
// Width of a column of sizes, and on a terminal so narrow that mount points would be squeezed.
constexpr size_t size_width = 18;
constexpr size_t narrow_size_width = 12;
constexpr size_t narrow = 60;

std::string padded_right(const std::string& text, size_t width) {
    return text + std::string(width - std::min(width, text.size()), ' ');
}

std::string padded_left(const std::string& text, size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

// Appends `start`, which is `column` wide, and behind it the value in as many lines as it takes.
void append_entry(std::string& table, const std::string& start, size_t column,
                  const std::wstring& value, size_t width) {
    const size_t room = std::max<size_t>(width - std::min(width, column), 8);
    std::string before = start;
    for (const std::wstring& line : wrapped(one_line(value), room)) {
        table += before + utf8(line) + '\n';
        before = std::string(column, ' ');
    }
    if (value.empty()) {
        table += before.substr(0, before.find_last_not_of(' ') + 1) + '\n';
    }
}

std::wstring shown(Kind kind, const std::wstring& value, bool human) {
    return human ? readable(kind, value) : with_unit(kind, value);
}

}  // namespace

std::string property_table(const Properties& properties, size_t width, bool human) {
    std::string table;
    for (const Group& group : groups()) {
        table += (table.empty() ? "" : "\n") + std::string(group.title()) + '\n';
        for (const Property& property : group) {
            if (const auto found = properties.find(property.name); found != properties.end()) {
                append_entry(table, padded_right("  " + utf8(property.name), value_column),
                             value_column, shown(property.kind, found->second, human), width);
            }
        }
    }
    return table;
}

std::string file_system_table(const FileSystems& file_systems, size_t width, bool human) {
    const size_t column = width < narrow ? narrow_size_width : size_width;
    const char* const unit = human ? "" : " MB";
    const auto size_text = [&](const std::wstring& megabytes) {
        return padded_left(utf8(human ? readable(Kind::megabytes, megabytes) : megabytes), column);
    };
    std::string table = padded_left("Total" + std::string(unit), column) +
                        padded_left("Free" + std::string(unit), column) + "  Mounted on\n";
    for (const auto& [mount_point, space] : file_systems) {
        append_entry(table, size_text(space.first) + size_text(space.second) + "  ", 2 * column + 2,
                     mount_point, width);
    }
    return table;
}

}  // namespace vlrprops
