// A Mac as a test describes it: the interfaces that source/platform/macosx calls, answered from a script
// and recorded. Reset it in the fixture with machine() = {}.
#pragma once

#include <mach/mach.h>
#include <sys/mount.h>

#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mac_imitation {

// Strings by key; nothing stands for a value that is no string.
using Dictionary = std::map<std::string, std::optional<std::string>>;

struct Machine {
    // Functions that fail, by name; each fails too where the script below has no answer for it.
    std::set<std::string> failing;

    std::map<std::pair<int, int>, std::string> kernel_values;  // by name: the bytes of the value
    std::string model;
    std::map<std::string, int> gestalt;  // by the four characters of the selector
    std::string domain;
    vm_size_t page_size = 0;
    vm_statistics_data_t statistics = {};
    std::vector<struct statfs> file_systems;
    int file_systems_counted = -1;         // the number that the count reports, when it is another
    std::optional<Dictionary> dictionary;  // what the parser makes of any document
    bool other_top_level = false;          // the document is a property list, but no dictionary

    // What was asked, as "function argument argument", and what is still held.
    std::vector<std::string> calls;
    std::string document;  // the bytes handed to the parser
    size_t objects = 0;
    int host_rights = 0;

    template <typename Value>
    void set_kernel_value(int group, int name, const Value& value) {
        std::string bytes(sizeof value, '\0');
        std::memcpy(bytes.data(), &value, sizeof value);
        kernel_values[{group, name}] = bytes;
    }
};

Machine& machine();

}  // namespace mac_imitation
