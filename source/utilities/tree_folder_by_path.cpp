// For hosts without openat. Every path may lead elsewhere from one call to the next, so a folder is compared
// with what was opened before each step that removes something from it.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "utilities/tree_folder.h"

namespace velora_com::qel {

namespace {

// What a path names itself, not what a link of that name leads to.
bool looks_like(const std::string& path, const FolderIdentity& expected) {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           FolderIdentity{status.st_dev, status.st_ino} == expected;
}

}  // namespace

TreeFolder TreeFolder::open_path(std::string path) {
    TreeFolder folder;
    folder.stream_.reset(::opendir(path.c_str()));
    struct stat status;
    if (folder && ::fstat(dirfd(folder.stream_.get()), &status) == 0) {
        folder.identity_ = {status.st_dev, status.st_ino};
        folder.path_ = std::move(path);
        return folder;
    }
    return TreeFolder();
}

TreeFolder TreeFolder::open_top(const char* path) {
    return open_path(std::string(path) + "/.");  // a link is followed here and nowhere else
}

TreeFolder TreeFolder::open_child(const char* name) const {
    TreeFolder child = open_path(path_ + '/' + name);
    // A link may have come in the place of the child, or of this folder.
    if (child && !(looks_like(child.path_, child.identity_) && looks_like(path_, identity_))) {
        errno = ENOTDIR;
        return TreeFolder();
    }
    return child;
}

TreeFolder TreeFolder::open_parent(const FolderIdentity& expected) const {
    TreeFolder parent = open_path(path_.substr(0, path_.rfind('/')));
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

}  // namespace velora_com::qel
