// Standard output, kept for the program alone.
#pragma once

#include <cstddef>
#include <string>

namespace vlrprops {

// While the library lists the logged-on users it writes diagnostic lines to standard output. They must
// not get between the lines of the report, so the program moves its own output to a duplicate of
// descriptor 1, before the library's first call, and points descriptor 1 to the null device for the
// rest of its life. What the library writes, also what stdio still buffers at exit, ends there.
class Output {
public:
    Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Whether the library's own output goes elsewhere; without that nothing may be collected. errno says why
    // it is not so.
    bool is_apart() const { return apart_; }

    // Width of the terminal in columns, at most `otherwise` when the output is no terminal.
    size_t width(size_t otherwise) const;

    // Writes the text and closes the output, so that a full disk is noticed. False with errno set when
    // not everything could be written.
    bool finish(const std::string& text);

private:
    bool apart_ = false;
    int descriptor_;  // -1 when the program was started without standard output
};

}  // namespace vlrprops
