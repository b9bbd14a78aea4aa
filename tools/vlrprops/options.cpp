#include "options.h"

#include "similar.h"
#include "text.h"
#include "vlrcomn/system_properties.h"

namespace vlrprops {

namespace {

// "unknown WHAT 'ARGUMENT'", and which of `names` may be meant. What the user has typed is made fit for a
// terminal: control characters escaped, and cut before what is no UTF-8.
std::string unknown(const std::string& what, const std::string& argument,
                    const std::vector<std::string>& names) {
    const std::string similar = similar_name(argument, names);
    return "unknown " + what + " '" +
           utf8(one_line(velora_com::qel::sysprops::sysprops_ansi_to_wide(argument))) + "'" +
           (similar.empty() ? "" : " (did you mean '" + similar + "'?)");
}

std::string unknown_option(const std::string& argument) {
    std::vector<std::string> names;
    for (const Option& option : known_options()) {
        names.emplace_back(option.name);
    }
    return unknown("option", argument, names);
}

std::string unknown_property(const std::string& argument) {
    std::vector<std::string> names;
    for (const Property* const property : every_property()) {
        names.push_back(utf8(property->name));
    }
    return unknown("property", argument, names);
}

// Takes one option. False when there is none of that name.
bool take_option(Options& options, const std::string& argument) {
    for (const Option& option : known_options()) {
        if (argument == option.name ||
            (option.short_name != nullptr && argument == option.short_name)) {
            option.take(options);
            return true;
        }
    }
    return false;
}

}  // namespace

const std::vector<Option>& known_options() {
    static const std::vector<Option> all = {
        {"--json", nullptr, "print JSON: one object of texts, names as below",
         [](Options& options) { options.json = Options::Json::texts; }},
        {"--json=typed", nullptr,
         "print JSON with numbers as numbers, sizes in bytes, clocks in MHz, and null for a fact "
         "that is not found",
         [](Options& options) { options.json = Options::Json::typed; }},
        {"--human", nullptr,
         "print sizes in KiB to EiB, clocks in GHz, times as dates; not in JSON",
         [](Options& options) { options.human = true; }},
        {"--all", nullptr, "print also the properties that are not in the agent's report",
         [](Options& options) { options.all = true; }},
        {"--file-systems", nullptr,
         "print the space of each local file system instead, in MB of 1,048,576 bytes; free "
         "space in steps of a twentieth",
         [](Options& options) { options.file_systems = true; }},
        {"--list", nullptr, "print the names of all properties",
         [](Options& options) { options.action = Options::Action::list; }},
        {"--help", "-h", "print this help",
         [](Options& options) { options.action = Options::Action::help; }},
        {"--version", nullptr, "print the version",
         [](Options& options) { options.action = Options::Action::version; }},
    };
    return all;
}

std::optional<Options> read_options(int count, char** arguments, std::string& error) {
    Options options;
    bool only_names = false;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        if (!only_names && argument == "--") {
            only_names = true;
        } else if (!only_names && argument.size() > 1 && argument[0] == '-') {
            if (!take_option(options, argument)) {
                error = unknown_option(argument);
                return std::nullopt;
            }
        } else if (const Property* const property = find_property(argument)) {
            options.properties.push_back(property);
        } else {
            error = unknown_property(argument);
            return std::nullopt;
        }
    }
    if ((options.file_systems || options.all) && !options.properties.empty()) {
        error = std::string(options.all ? "--all" : "--file-systems") + " takes no property names";
        return std::nullopt;
    }
    return options;
}

}  // namespace vlrprops
