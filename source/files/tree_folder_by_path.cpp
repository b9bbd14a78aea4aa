// For hosts without openat. Every path may lead elsewhere from one call to the next, so a folder is compared
// with what was opened before each step that removes something from it.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

#include "files/tree_folder.h"

namespace velora_com::qel {

namespace {

// Whatever lies in a folder with such a path can be named by a path.
constexpr size_t max_folder_path = PATH_MAX - 1 - (NAME_MAX + 1);

// What a path names itself, not what a link of that name leads to.
bool looks_like(const std::string& path, const FolderIdentity& expected) {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           FolderIdentity{status.st_dev, status.st_ino} == expected;
}

}  // namespace

TreeFolder TreeFolder::open_top(const char* path) {
    const std::string top = std::string(path) + "/.";  // a link is followed here and nowhere else
    return TreeFolder(::opendir(top.c_str()), top, top.size());
}

TreeFolder TreeFolder::open_child(const char* name) const {
    const std::string path = path_ + '/' + name;
    if (path.size() > max_folder_path) {
        errno = ENAMETOOLONG;
        return TreeFolder();
    }
    TreeFolder child(::opendir(path.c_str()), path, top_length_);
    // A link may have replaced the child, or this folder.
    if (child && !(looks_like(child.path_, child.identity_) && looks_like(path_, identity_))) {
        errno = ENOTDIR;
        return TreeFolder();
    }
    return child;
}

TreeFolder TreeFolder::open_parent(const FolderIdentity& expected) const {
    const std::string path = path_.substr(0, path_.rfind('/'));
    TreeFolder parent(::opendir(path.c_str()), path, top_length_);
    return parent && parent.identity() == expected ? std::move(parent) : TreeFolder();
}

bool TreeFolder::is_no_folder(const dirent& entry) const {
    struct stat status;
    return ::lstat((path_ + '/' + entry.d_name).c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

// Nothing comes between the look and the removal.

bool TreeFolder::remove_file(const char* name) const {
    const std::string path = path_ + '/' + name;
    return looks_like(path_, identity_) && ::unlink(path.c_str()) == 0;
}

bool TreeFolder::remove_folder(const char* name) const {
    const std::string path = path_ + '/' + name;
    return looks_like(path_, identity_) && ::rmdir(path.c_str()) == 0;
}

std::string TreeFolder::move_up(const char* name, const FolderIdentity& top, uint32_t& next) const {
    const std::string from = path_ + '/' + name, top_path = path_.substr(0, top_length_);
    struct stat folder;
    if (::lstat(from.c_str(), &folder) != 0) {
        return {};
    }
    while (looks_like(path_, identity_) && looks_like(top_path, top)) {
        std::string new_name = std::to_string(next++);
        const std::string to = (top_path + '/').append(new_name);
        if (::rename(from.c_str(), to.c_str()) == 0) {
            if (looks_like(to, {folder.st_dev, folder.st_ino})) {
                return new_name;
            }
            // A stranger, moved through a link: it goes back.
            static_cast<void>(::rename(to.c_str(), from.c_str()));
            return {};
        }
        if (errno != ENOTEMPTY && errno != EEXIST && errno != ENOTDIR) {
            return {};
        }
    }
    return {};
}

}  // namespace velora_com::qel
