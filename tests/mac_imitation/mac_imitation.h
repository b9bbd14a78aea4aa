// A Mac as a test describes it: the interfaces that source/platform/macosx calls, answered from a script
// and recorded. Reset it in the fixture with machine = {}.
#pragma once

#include <mach/mach.h>
#include <sys/mount.h>

#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mac_imitation {

enum class Kind { string, dictionary, other };

// An object of CoreFoundation. A dictionary owns its values, which have no owner of their own.
struct Object {
    Kind kind = Kind::string;
    std::string text;
    std::map<std::string, Object> values;
};

struct Machine {
    std::set<std::string> failing;  // functions that fail, by name

    std::map<std::pair<int, int>, std::string> kernel_values;  // by name: the bytes of the value
    std::string model;
    std::map<uint32_t, int> gestalt;  // by selector
    std::string domain;
    vm_size_t page_size = 0;
    vm_statistics_data_t statistics = {};
    std::vector<struct statfs> file_systems;
    int file_systems_counted = 0;
    Object property_list;  // what the parser makes of any document

    // What was asked, as "function argument argument", and what is still held.
    std::vector<std::string> calls;
    int objects = 0;  // of CoreFoundation
    int host_rights = 0;

    template <typename Value>
    void set_kernel_value(int group, int name, const Value& value) {
        kernel_values[{group, name}].assign(reinterpret_cast<const char*>(&value), sizeof value);
    }
};

inline Machine machine;

}  // namespace mac_imitation
