#include "files/flat_path.h"

#include <unistd.h>

#include <algorithm>

namespace velora_com::qel::files {

std::string working_directory() {
    char buffer[buffer_size];
    return ::getcwd(buffer, sizeof buffer) == nullptr ? std::string() : std::string(buffer);
}

bool is_relative(std::string_view path) {
    return path.empty() || path[0] != '/' || path == "/";
}

namespace {

// Takes "." and ".." out of a path that begins and ends with a slash. One pass over the pieces between
// slashes, empty ones included; the result grows over what has been read.
bool remove_dots(std::string& path) {
    size_t end = 1;  // of the result, which ends in a slash as the path does
    for (size_t piece = 1; piece < path.size();) {
        const size_t next = path.find('/', piece) + 1;
        const std::string_view text(path.data() + piece, next - 1 - piece);
        if (text == "..") {
            if (end == 1) {
                return false;
            }
            end = path.rfind('/', end - 2) + 1;
        } else if (text != ".") {
            std::copy(path.data() + piece, path.data() + next, path.data() + end);
            end += next - piece;
        }
        piece = next;
    }
    path.resize(end);
    return true;
}

}  // namespace

bool flatten(std::string& path, std::string_view base) {
    const bool relative = is_relative(path);
    if (!path.empty() && path.back() == '/') {
        path.pop_back();
    }
    if (relative) {
        path.reserve(base.size() + path.size() + 2);
        path.insert(0, 1, '/').insert(0, base);
    }
    path += '/';
    if (!remove_dots(path)) {
        return false;
    }
    path.pop_back();
    return true;
}

}  // namespace velora_com::qel::files
