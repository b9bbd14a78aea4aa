// The command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "properties.h"

namespace vlrprops {

struct Options {
    enum class Action { report, list, help, version };
    enum class Json { none, texts, typed };

    Action action = Action::report;
    Json json = Json::none;
    bool all = false;
    bool human = false;
    bool file_systems = false;
    std::vector<const Property*> properties;  // those asked for by name, in their order
};

struct Option {
    const char* name;
    const char* short_name;  // null where there is none
    const char* meaning;     // for the help
    void (*take)(Options& options);
};

const std::vector<Option>& known_options();

// Reads the arguments. Nothing, with `error` saying why, when they cannot be followed.
std::optional<Options> read_options(int count, char** arguments, std::string& error);

}  // namespace vlrprops
