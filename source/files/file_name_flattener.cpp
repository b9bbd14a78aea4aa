#include "files/flat_path.h"
#include "support/boundary.h"
#include "vlrcomn/path_resolution.h"

namespace velora_com::qel {

namespace {

// Stands for a base that could not be flattened. No flattened base reads like this, since
// all of them are empty or begin with a slash.
constexpr const char unusable_base[] = "..";

}  // namespace

FileNameFlattener::FileNameFlattener(const std::string& path) {
    support::or_failure(false, [&] {
        input_ = path;
        if (files::is_relative(path)) {
            base_ = files::working_directory();
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
        return base_ != unusable_base && files::flatten(flat_, base_);
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
