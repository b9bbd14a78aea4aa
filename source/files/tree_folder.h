// An open folder of a tree that is being deleted.
//
// Walked by descriptors where the host has openat (tree_folder_at.cpp), so that what a path leads to meanwhile
// does not matter, and by paths elsewhere (tree_folder_by_path.cpp), where what was opened is compared with what
// was looked at.
#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <cstdint>
#include <string>

#include "support/owners.h"

namespace velora_com::qel {

// Says which folder it is, whatever its name.
struct FolderIdentity {
    dev_t device = 0;
    ino_t file = 0;
};

inline bool operator==(const FolderIdentity& one, const FolderIdentity& other) {
    return one.device == other.device && one.file == other.file;
}

class TreeFolder {
public:
    // The folder that `path` leads to, through a link too. Not open with errno set on failure.
    static TreeFolder open_top(const char* path);

    TreeFolder() = default;
    explicit operator bool() const { return static_cast<bool>(stream_); }
    const FolderIdentity& identity() const { return identity_; }

    // The folder `name` in this one, never through a link. Not open with errno set on failure.
    TreeFolder open_child(const char* name) const;
    // The folder above, if it is the one expected.
    TreeFolder open_parent(const FolderIdentity& expected) const;

    // The next entry, "." and ".." included, null at the end; valid until the next call.
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is that of one deletion
    const dirent* next() const { return ::readdir(stream_.get()); }
    // Back to the first entry.
    void rewind() const { ::rewinddir(stream_.get()); }

    // Whether an entry is certainly no folder, so that it can be removed without trying to enter it.
    bool is_no_folder(const dirent& entry) const;

    bool remove_file(const char* name) const;
    bool remove_folder(const char* name) const;

    // Moves the folder `name` in this one, whose opening failed with ENAMETOOLONG, up to the top folder. It
    // gets the first number from `next` on that is free there; returns that, or an empty text on failure.
    std::string move_up(const char* name, const FolderIdentity& top, uint32_t& next) const;

private:
    // Takes the stream over; not open when that is null or cannot tell which folder it reads.
    explicit TreeFolder(DIR* stream, std::string path = {}, size_t top_length = 0);

    support::Directory stream_;
    FolderIdentity identity_;
    // Both unused where descriptors are enough.
    std::string path_;
    size_t top_length_ = 0;  // so much of the path is that of the top folder
};

}  // namespace velora_com::qel
