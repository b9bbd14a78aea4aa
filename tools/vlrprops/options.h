// The command line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "properties.h"

namespace vlrprops {

struct Options {
    enum class Action { report, help, version };

    Action action = Action::report;
    bool json = false;
    bool file_systems = false;
    std::vector<const Property*> properties;  // those asked for by name, in their order
};

// Reads the arguments. Nothing, with `error` saying why, when they cannot be followed.
std::optional<Options> read_options(int count, char** arguments, std::string& error);

// What --help prints.
std::string help_text();

}  // namespace vlrprops
