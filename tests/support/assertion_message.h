// What the C library says of a failed assertion.
#pragma once

#include <string>

// A regular expression for a death test: the message as glibc, Mac OS X and musl put it.
inline std::string assertion_message(const std::string& file, const std::string& line,
                                     const std::string& function, const std::string& text) {
    return file + ":" + line + ": " + function + ": Assertion `" + text + "' failed|\\(" + text +
           "\\), function " + function + ", file " + file + ", line " + line + "|" + text + " \\(" +
           file + ": " + function + ": " + line + "\\)";
}
