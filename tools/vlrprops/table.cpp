#include "table.h"

#include <algorithm>

#include "text.h"

namespace vlrprops {

namespace {

// Column of the values: behind the longest property name and its indentation.
constexpr size_t value_column = 24;
// Width of a column of megabytes.
constexpr size_t megabytes_width = 18;

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

bool is_number(const std::wstring& value) {
    return !value.empty() && value.find_first_not_of(L"0123456789.") == std::wstring::npos;
}

}  // namespace

std::string property_table(const Properties& properties, size_t width) {
    std::string table;
    for (const Group& group : groups()) {
        table += (table.empty() ? "" : "\n") + std::string(group.title) + '\n';
        for (const Property& property : group.properties) {
            const auto found = properties.find(property.name);
            std::wstring value = found == properties.end() ? std::wstring() : found->second;
            if (is_number(value)) {
                value.append(property.unit, property.unit + std::string(property.unit).size());
            }
            append_entry(table, padded_right("  " + utf8(property.name), value_column),
                         value_column, value, width);
        }
    }
    return table;
}

std::string file_system_table(const FileSystems& file_systems, size_t width) {
    std::string table = padded_left("Total MB", megabytes_width) +
                        padded_left("Free MB", megabytes_width) + "  Mounted on\n";
    for (const auto& [mount_point, space] : file_systems) {
        append_entry(table,
                     padded_left(utf8(space.first), megabytes_width) +
                         padded_left(utf8(space.second), megabytes_width) + "  ",
                     2 * megabytes_width + 2, mount_point, width);
    }
    return table;
}

}  // namespace vlrprops
