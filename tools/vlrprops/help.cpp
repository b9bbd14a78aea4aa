#include "help.h"

#include <algorithm>
#include <sstream>

#include "options.h"
#include "properties.h"
#include "text.h"

namespace vlrprops {

namespace {

constexpr const char* introduction[] = {
    "Prints this machine's properties as the agent reports them to its server. With names, in "
    "upper or lower case, prints only the values of those properties, one on a line.",
};

constexpr const char* rules[] = {
    "A fact that is not found reads N/A, but for these: CPUType reads empty and CPUSpeed 0 MHz; "
    "IsPortable reads -1 or, without a CPUType, empty; OSBitMode -1; DomainName UnKnownDomain; "
    "UserName NA; disks 0.00 and 0; TimeZone what the C library makes of the zone, mostly UTC or "
    "its name. Disks are the local file systems, memory file systems left out.",
    "Text is UTF-8 in every locale. Control characters are printed as \\u000a for example. On a "
    "terminal long values are wrapped; in a pipe each property keeps one line.",
    "Exit status: 0 done, 1 the output could not be written or memory ran out, 2 unknown property "
    "or option.",
};

class Help {
public:
    explicit Help(size_t width) : width_(std::min<size_t>(width, 80)) {}

    // The words behind `line`, filled up to `column`, or below it where it is too long. Where they would be
    // squeezed they always stand below.
    void entry(std::string line, size_t column, const std::string& words) {
        column = width_ < 60 ? std::min<size_t>(column, 6) : column;
        if (line.size() > column) {
            text_ += line + '\n';
            line.clear();
        }
        line.resize(column, ' ');
        std::istringstream stream(words);
        size_t used = column;
        for (std::string word; stream >> word;) {
            if (used > column && used + 1 + word.size() > width_) {
                text_ += line + '\n';
                line.assign(column, ' ');
                used = column;
            }
            line += (used > column ? " " : "") + word;
            used = line.size();
        }
        text_ += line + '\n';
    }

    void title(const std::string& words) { text_ += '\n' + words + '\n'; }

    template <size_t count>
    void paragraphs(const char* const (&all)[count]) {
        for (const char* const paragraph : all) {
            text_ += '\n';
            entry("", 0, paragraph);
        }
    }

    const std::string& text() const { return text_; }

private:
    const size_t width_;
    std::string text_ =
        "Usage:\n"
        "  vlrprops [OPTION...] [PROPERTY...]\n"
        "  vlrprops [OPTION...] --file-systems\n";
};

}  // namespace

std::string help_text(size_t width) {
    Help help(width);
    help.paragraphs(introduction);
    help.title("Options:");
    for (const Option& option : known_options()) {
        const std::string also =
            option.short_name == nullptr ? "" : option.short_name + std::string(", ");
        help.entry("  " + also + option.name, 18, option.meaning);
    }
    help.paragraphs(rules);
    help.title("Properties:");
    for (const Property* const property : every_property()) {
        help.entry("  " + utf8(property->name), 24, property->meaning);
    }
    return help.text();
}

}  // namespace vlrprops
