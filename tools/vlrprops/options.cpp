#include "options.h"

#include "text.h"
#include "vlrcomn/system_properties.h"

namespace vlrprops {

namespace {

// What the user has typed, fit for a terminal: control characters escaped, and cut before what is no UTF-8.
std::string quoted(const std::string& argument) {
    return "'" + utf8(one_line(velora_com::qel::sysprops::sysprops_ansi_to_wide(argument))) + "'";
}

std::string unknown_property(const std::string& name) {
    const std::string similar = similar_name(name);
    return "unknown property " + quoted(name) +
           (similar.empty() ? "" : " (did you mean '" + similar + "'?)");
}

// Takes one option. False when there is none of that name.
bool take_option(Options& options, const std::string& argument) {
    if (argument == "--help" || argument == "-h") {
        options.action = Options::Action::help;
    } else if (argument == "--version") {
        options.action = Options::Action::version;
    } else if (argument == "--json") {
        options.json = true;
    } else if (argument == "--file-systems") {
        options.file_systems = true;
    } else {
        return false;
    }
    return true;
}

}  // namespace

std::optional<Options> read_options(int count, char** arguments, std::string& error) {
    Options options;
    bool only_names = false;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (!only_names && argument == "--") {
            only_names = true;
        } else if (!only_names && argument.size() > 1 && argument[0] == '-') {
            if (!take_option(options, argument)) {
                error = "unknown option " + quoted(argument);
                return std::nullopt;
            }
        } else if (const Property* const property = find_property(argument)) {
            options.properties.push_back(property);
        } else {
            error = unknown_property(argument);
            return std::nullopt;
        }
    }
    if (options.file_systems && !options.properties.empty()) {
        error = "--file-systems takes no property names";
        return std::nullopt;
    }
    return options;
}

std::string help_text() {
    std::string text =
        "Usage: vlrprops [--json] [PROPERTY...]\n"
        "       vlrprops [--json] --file-systems\n"
        "\n"
        "Prints this machine's properties as the agent reports them to its server.\n"
        "With names, prints only the values of those properties, one on a line.\n"
        "\n"
        "Options:\n"
        "  --json          print JSON: one object of texts, names as below\n"
        "  --file-systems  print the space of each local file system instead, in MB\n"
        "                  of 1,048,576 bytes; free space in steps of a twentieth\n"
        "  -h, --help      print this help\n"
        "  --version       print the version\n"
        "\n"
        "A fact that is not found reads N/A, but for these: CPUType reads empty and\n"
        "CPUSpeed 0 MHz; IsPortable reads -1 or, without a CPUType, empty; OSBitMode -1;\n"
        "DomainName UnKnownDomain; UserName NA; disks 0.00 and 0; TimeZone what the C\n"
        "library makes of the zone, mostly UTC or its name. Disks are the local file\n"
        "systems, memory file systems left out.\n"
        "\n"
        "Control characters are printed as \\u000a for example. On a terminal long values\n"
        "are wrapped; in a pipe each property keeps one line.\n"
        "\n"
        "Exit status: 0 done, 1 the output could not be written or memory ran out,\n"
        "2 unknown property or option.\n"
        "\n"
        "Properties:\n";
    for (const Group& group : groups()) {
        for (const Property& property : group.properties) {
            std::string line = "  " + utf8(property.name);
            line.resize(24, ' ');
            text += line + property.meaning + '\n';
        }
    }
    return text;
}

}  // namespace vlrprops
