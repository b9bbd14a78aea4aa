// vlrprops: prints this machine's property report.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>

#include "help.h"
#include "options.h"
#include "output.h"
#include "report.h"
#include "table.h"
#include "text.h"

namespace vlrprops {

namespace {

constexpr int exit_failure = 1;
constexpr int exit_usage = 2;

std::string names_text() {
    std::string lines;
    for (const Property* const property : every_property()) {
        lines += utf8(property->name) + '\n';
    }
    return lines;
}

// NOLINTBEGIN(concurrency-mt-unsafe): no other thread has been started
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
            text = help_text(output.width(unlimited));
            break;
        case Options::Action::list:
            text = names_text();
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
// NOLINTEND(concurrency-mt-unsafe)

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
