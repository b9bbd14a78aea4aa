// The properties as a reader of the report meets them: order, groups, meaning and unit.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vlrprops {

// What the library collects: property name to value, and mount point to (total MB, free MB).
using Properties = std::map<std::wstring, std::wstring>;
using FileSystems = std::map<std::wstring, std::pair<std::wstring, std::wstring>>;

// What a value's text states.
enum class Kind {
    text,
    number,
    bytes,
    megabytes,  // of 1,048,576 bytes
    megahertz,  // the text names the unit
    seconds,    // since 1970-01-01 UTC
};

struct Property {
    const std::wstring& name;  // a key of the library
    const char* meaning;       // for the help, with the rule that the value follows
    Kind kind = Kind::text;
    const wchar_t* absent =
        L"";                // how it reads, besides "N/A" and empty, when its fact is not found
    bool addition = false;  // no part of the agent's report
};

class Group {
public:
    template <size_t count>
    Group(const char* title, const Property (&properties)[count])
        : title_(title), begin_(properties), end_(properties + count) {}

    const char* title() const { return title_; }
    const Property* begin() const { return begin_; }
    const Property* end() const { return end_; }

private:
    const char* title_;
    const Property* begin_;
    const Property* end_;
};

// Every property in the report's order, additions in their groups.
const std::vector<Group>& groups();
std::vector<const Property*> every_property();

// The property of that name (UTF-8), whatever the case of its letters, or null.
const Property* find_property(const std::string& name);

}  // namespace vlrprops
