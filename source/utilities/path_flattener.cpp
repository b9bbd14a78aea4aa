#include <unistd.h>

#include <algorithm>

#include "support/boundary.h"
#include "utilities/path_text.h"
#include "vlrcomn/path_resolution.h"

namespace velora_com::qel {

namespace paths {

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

}  // namespace paths

namespace {

// Stands in the place of a base that could not be flattened. No flattened base reads like this, since
// all of them are empty or begin with a slash.
constexpr const char unusable_base[] = "..";

}  // namespace

FileNameFlattener::FileNameFlattener(const std::string& path) {
    support::or_failure(false, [&] {
        input_ = path;
        if (paths::is_relative(path)) {
            base_ = paths::working_directory();
        }
        return Flatten();
    });
}

FileNameFlattener::FileNameFlattener(const std::string& path, const std::string& base) {
    support::or_failure(false, [&] {
        input_ = path;
        if (!FileNameFlattener(base).GetFlatPath(base_)) {
            base_ = unusable_base;
        }
        return Flatten();
    });
}

bool FileNameFlattener::Flatten() {
    const bool flattened = support::or_failure(false, [&] {
        flat_ = input_;
        return base_ != unusable_base && paths::flatten(flat_, base_);
    });
    ok_ = flattened ? 1 : 0;
    return flattened;
}

bool FileNameFlattener::GetFlatPath(std::string& out) const {
    return ok_ == 1 && support::or_failure(false, [&] {
               out = flat_;
               return true;
           });
}

}  // namespace velora_com::qel
