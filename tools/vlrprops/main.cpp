// vlrprops: prints this machine's property report.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>

#include "json.h"
#include "options.h"
#include "output.h"
#include "table.h"
#include "text.h"
#include "vlrcomn/system_properties.h"

namespace vlrprops {

namespace {

namespace sysprops = velora_com::qel::sysprops;

constexpr int exit_failure = 1;
constexpr int exit_usage = 2;

// The value of one property, collected alone. The count of file systems is answered by its category
// only.
std::wstring one_value(const std::wstring& name) {
    sysprops::ISysProps source;
    return name == sysprops::NumFileSystems_Key ? source.GetOneDiskProperty(name)
                                                : source.GetOneSystemProperty(name);
}

std::string chosen_properties(const Options& options, const Properties& collected) {
    if (options.json) {
        Properties chosen;
        for (const Property* property : options.properties) {
            chosen[property->name] = collected.at(property->name);
        }
        return to_json(chosen);
    }
    std::string lines;
    for (const Property* property : options.properties) {
        lines += utf8(one_line(collected.at(property->name))) + '\n';
    }
    return lines;
}

// The text that the options ask for; nothing when memory ran out while collecting.
std::optional<std::string> report(const Options& options, size_t width) {
    if (options.file_systems) {
        sysprops::DiskInformation disks;
        if (!sysprops::ISysProps().GetDiskInformation(disks)) {
            return std::nullopt;
        }
        return options.json ? to_json(disks.mapFileSystems)
                            : file_system_table(disks.mapFileSystems, width);
    }
    Properties properties;
    FileSystems file_systems;
    if (options.properties.size() == 1) {
        const std::wstring& name = options.properties.front()->name;
        properties[name] = one_value(name);
    } else if (!sysprops::ISysProps().GetAllSystemProperties(properties, file_systems)) {
        return std::nullopt;
    }
    if (!options.properties.empty()) {
        return chosen_properties(options, properties);
    }
    return options.json ? to_json(properties) : property_table(properties, width);
}

int run(int count, char** arguments) {
    std::string error;
    const std::optional<Options> options = read_options(count, arguments, error);
    if (!options) {
        std::fprintf(stderr, "vlrprops: %s\nTry 'vlrprops --help'.\n", error.c_str());
        return exit_usage;
    }
    Output output;
    if (!output.is_apart()) {
        std::fprintf(stderr, "vlrprops: cannot keep the report apart from diagnostics: %s\n",
                     std::strerror(errno));
        return exit_failure;
    }
    std::optional<std::string> text;
    switch (options->action) {
        case Options::Action::help:
            text = help_text();
            break;
        case Options::Action::version:
            text = "vlrprops " VLRPROPS_VERSION "\n";
            break;
        case Options::Action::report:
            text = report(*options, output.width(unlimited));
            break;
    }
    if (!text) {
        std::fputs("vlrprops: out of memory\n", stderr);
        return exit_failure;
    }
    if (!output.finish(*text)) {
        std::fprintf(stderr, "vlrprops: cannot write to standard output: %s\n",
                     std::strerror(errno));
        return exit_failure;
    }
    return 0;
}

}  // namespace

}  // namespace vlrprops

int main(int count, char** arguments) {
    try {
        return vlrprops::run(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vlrprops: %s\n", error.what());
        return vlrprops::exit_failure;
    }
}
