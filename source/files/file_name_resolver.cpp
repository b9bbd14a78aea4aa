#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <utility>

#include "files/flat_path.h"
#include "support/boundary.h"
#include "support/interrupted.h"
#include "vlrcomn/path_resolution.h"

namespace velora_com::qel {

namespace {

constexpr int max_links = 50;

bool look_at(const std::string& path, struct stat& status) {
    return support::retry_interrupted([&] { return ::lstat(path.c_str(), &status); }) == 0;
}

// The folder that holds a flat path, in the form that flatten() takes as a base. The root's is empty:
// the text before the slash must not count as relative there.
std::string_view folder_of(std::string_view path) {
    std::string_view folder = path.substr(0, path.rfind('/'));
    if (!folder.empty() && folder.back() == '/') {
        folder.remove_suffix(1);
    }
    return folder;
}

// Puts what the link `path` points to in its place. A text that fills the buffer may have been cut.
bool follow(std::string& path) {
    char buffer[files::buffer_size];
    const ssize_t size =
        support::retry_interrupted([&] { return ::readlink(path.c_str(), buffer, sizeof buffer); });
    if (size < 0 || static_cast<size_t>(size) >= sizeof buffer) {
        return false;
    }
    std::string target(buffer, static_cast<size_t>(size));
    if (!files::flatten(target, folder_of(path))) {
        return false;
    }
    path = std::move(target);
    return true;
}

// Follows links until `path` names a regular file.
bool resolve(std::string& path) {
    struct stat status;
    for (int links = 0; look_at(path, status); ++links) {
        if (S_ISREG(status.st_mode)) {
            return true;
        }
        if (!S_ISLNK(status.st_mode) || links == max_links || !follow(path)) {
            return false;
        }
    }
    return false;
}

}  // namespace

FileNameResolver::FileNameResolver(const std::string& path) {
    const bool resolved = support::or_failure(false, [&] {
        input_ = path;
        // The system would stop reading at a zero byte and find another file.
        if (path.find('\0') != std::string::npos) {
            return false;
        }
        absolute_ = path;
        const std::string base =
            files::is_relative(path) ? files::working_directory() : std::string();
        return files::flatten(absolute_, base) && resolve(absolute_);
    });
    ok_ = resolved ? 1 : 0;
}

bool FileNameResolver::GetAbsolutePath(std::string& out) const {
    return ok_ == 1 && support::or_failure(false, [&] {
               out = absolute_;
               return true;
           });
}

}  // namespace velora_com::qel

using velora_com::qel::FileNameResolver;
using velora_com::qel::support::or_failure;

uint32_t orumcomn_filenameresolver_create(const char* path, void** handle) {
    if (path == nullptr || handle == nullptr) {
        return ORU_FAILURE;
    }
    return or_failure(ORU_FAILURE, [&] {
        *handle = new FileNameResolver(path);
        return ORU_SUCCESS;
    });
}

uint32_t orumcomn_filenameresolver_get_absolute_filename(void* handle, char* buffer,
                                                         unsigned* size) {
    std::string path;
    if (handle == nullptr || buffer == nullptr || size == nullptr ||
        !static_cast<const FileNameResolver*>(handle)->GetAbsolutePath(path)) {
        return ORU_FAILURE;
    }
    const unsigned available = *size;
    *size = static_cast<unsigned>(path.size()) + 1;
    if (available < *size) {
        return ORU_FAILURE;
    }
    std::memcpy(buffer, path.c_str(), *size);
    return ORU_SUCCESS;
}

uint32_t orumcomn_filenameresolver_destroy(void* handle) {
    delete static_cast<FileNameResolver*>(handle);
    return ORU_SUCCESS;
}
