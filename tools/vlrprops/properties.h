// The properties as a reader of the report meets them: order, groups and meaning.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vlrprops {

// What the library collects: property name to value, and mount point to (total MB, free MB).
using Properties = std::map<std::wstring, std::wstring>;
using FileSystems = std::map<std::wstring, std::pair<std::wstring, std::wstring>>;

struct Property {
    const std::wstring& name;  // a key of the library
    const char* meaning;       // for the help
    const char* unit;          // follows a number in the table; empty where there is none
};

struct Group {
    const char* title;
    std::vector<Property> properties;
};

// Every property of the report, in the report's order.
const std::vector<Group>& groups();

// The property of that name (UTF-8, exactly), or null.
const Property* find_property(const std::string& name);

// The name that equals `name` in all but case, or empty.
std::string similar_name(const std::string& name);

}  // namespace vlrprops
