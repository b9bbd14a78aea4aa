#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/tree_folder.h"
#include "support/config.h"
#include "support/open_file.h"

namespace velora_com::qel {

namespace {

#if defined(VLRCOMN_HAVE_O_CLOEXEC)
constexpr int folder_flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int folder_flags = O_RDONLY | O_DIRECTORY;
#endif

// Null with errno set on failure.
DIR* stream_of(support::FileDescriptor descriptor) {
    DIR* const stream = descriptor ? ::fdopendir(descriptor.get()) : nullptr;
    if (stream != nullptr) {
        descriptor.release();
    }
    return stream;
}

}  // namespace

TreeFolder TreeFolder::open_top(const char* path) {
    return TreeFolder(stream_of(support::open_file(path, folder_flags)));
}

TreeFolder TreeFolder::open_child(const char* name) const {
    return TreeFolder(stream_of(
        support::FileDescriptor(::openat(dirfd(stream_.get()), name, folder_flags | O_NOFOLLOW))));
}

TreeFolder TreeFolder::open_parent(const FolderIdentity& expected) const {
    TreeFolder parent = open_child("..");
    return parent && parent.identity() == expected ? std::move(parent) : TreeFolder();
}

bool TreeFolder::is_no_folder(const dirent& entry) const {
#if defined(DT_UNKNOWN)
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type != DT_DIR;
    }
#endif
    struct stat status;
    return ::fstatat(dirfd(stream_.get()), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           !S_ISDIR(status.st_mode);
}

bool TreeFolder::remove_file(const char* name) const {
    return ::unlinkat(dirfd(stream_.get()), name, 0) == 0;
}

bool TreeFolder::remove_folder(const char* name) const {
    return ::unlinkat(dirfd(stream_.get()), name, AT_REMOVEDIR) == 0;
}

// Descriptors reach any depth, so that nobody asks for this.
std::string TreeFolder::move_up(const char*, const FolderIdentity&, uint32_t&) const {
    return {};
}

}  // namespace velora_com::qel
