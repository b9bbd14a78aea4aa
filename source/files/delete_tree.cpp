#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "files/tree_folder.h"
#include "support/boundary.h"
#include "support/fixed_text.h"
#include "vlrcomn/file_system.h"

namespace velora_com::qel {

namespace {

// So many of the innermost folders stay open. The others are opened again from below.
constexpr size_t max_open_folders = 16;

// Some file systems skip entries when others are removed while a folder is read, and other programs make
// new ones. A folder is read again as long as that removes something, but not for ever.
constexpr int max_passes = 16;

// A folder between the top and the one that is being read.
struct Level {
    explicit Level(TreeFolder opened, std::string its_name = {})
        : folder(std::move(opened)), identity(folder.identity()), name(std::move(its_name)) {}

    TreeFolder folder;
    FolderIdentity identity;
    std::string name;                   // in the folder above
    std::vector<std::string> to_enter;  // folders in it that are still to be deleted
    std::set<std::string> kept;         // folders in it that could not be deleted
    int passes = 0;
    bool is_read = false;
    bool removed_something = false;  // since it was last read
};

// Depth costs memory on the heap only: no recursion, and a bounded number of descriptors.
class TreeDeletion {
public:
    explicit TreeDeletion(TreeFolder top) { levels_.emplace_back(std::move(top)); }

    // Deletes everything in the top folder.
    void run() {
        while (!levels_.empty()) {
            Level& level = levels_.back();
            if (!level.is_read) {
                remove_files(level);
            } else if (!level.to_enter.empty()) {
                enter(level);
            } else if (!leave(level)) {
                return;
            }
        }
    }

private:
    // Removes what is no folder and notes the folders.
    static void remove_files(Level& level) {
        level.is_read = true;
        ++level.passes;
        while (const dirent* const entry = level.folder.next()) {
            const char* const name = entry->d_name;
            if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0) {
                continue;
            }
            if (level.folder.is_no_folder(*entry)) {
                level.removed_something |= level.folder.remove_file(name);
            } else if (level.kept.count(name) == 0) {
                level.to_enter.emplace_back(name);
            }
        }
    }

    void enter(Level& level) {
        std::string name = std::move(level.to_enter.back());
        level.to_enter.pop_back();
        TreeFolder folder = level.folder.open_child(name.c_str());
        while (!folder && (errno == EMFILE || errno == ENFILE) && close_outermost()) {
            folder = level.folder.open_child(name.c_str());
        }
        if (!folder) {
            const int reason = errno;
            if (reason != ENAMETOOLONG || !move_up(level, name)) {
                remove_unopened(level, name, reason);
            }
            return;
        }
        levels_.emplace_back(std::move(folder), std::move(name));
        if (levels_.size() - outermost_open_ > max_open_folders) {
            close_outermost();
        }
    }

    // Moves a folder that no path reaches up to the top, where it is deleted like the others.
    bool move_up(Level& level, const std::string& name) {
        Level& top = levels_.front();
        std::string new_name = level.folder.move_up(name.c_str(), top.identity, moved_up_);
        if (new_name.empty()) {
            return false;
        }
        level.removed_something = true;
        top.to_enter.push_back(std::move(new_name));
        return true;
    }

    // An empty folder can be removed though it must not be read; something else is in its place when a
    // folder was replaced meanwhile.
    static void remove_unopened(Level& level, const std::string& name, int reason) {
        const bool is_no_folder = reason == ENOTDIR || reason == ELOOP;
        if (is_no_folder ? level.folder.remove_file(name.c_str())
                         : level.folder.remove_folder(name.c_str())) {
            level.removed_something = true;
        } else {
            level.kept.insert(name);
        }
    }

    // Goes back to the folder above, from where this one is removed. False when there is no way back.
    bool leave(Level& level) {
        if (levels_.size() == 1) {
            if (!read_again(level)) {
                levels_.pop_back();
            }
            return true;
        }
        Level& above = levels_[levels_.size() - 2];
        if (!above.folder) {
            above.folder = level.folder.open_parent(above.identity);
            if (!above.folder) {
                return false;
            }
            outermost_open_ = levels_.size() - 2;
        }
        if (above.folder.remove_folder(level.name.c_str())) {
            above.removed_something = true;
        } else if (read_again(level)) {
            return true;
        } else {
            above.kept.insert(level.name);
        }
        levels_.pop_back();
        return true;
    }

    // Whether another pass over a folder is worth while; prepares it.
    static bool read_again(Level& level) {
        if (!level.removed_something || level.passes == max_passes) {
            return false;
        }
        level.removed_something = false;
        level.is_read = false;
        level.folder.rewind();
        return true;
    }

    bool close_outermost() {
        if (outermost_open_ + 1 >= levels_.size()) {
            return false;
        }
        levels_[outermost_open_++].folder = TreeFolder();
        return true;
    }

    std::vector<Level> levels_;  // from the top down to the folder being read
    size_t outermost_open_ = 0;  // this level and those below it are open
    uint32_t moved_up_ = 0;      // numbers used for names of folders moved up
};

bool is_deletable(const char* path) {
    return path != nullptr && *path != '\0' && std::strlen(path) < support::fixed_text_size;
}

void delete_contents(const char* path) {
    support::contained([=] {
        if (TreeFolder top = TreeFolder::open_top(path)) {
            TreeDeletion(std::move(top)).run();
        }
    });
}

}  // namespace

}  // namespace velora_com::qel

using namespace velora_com::qel;

void orumcomn_deltree(const char* path) {
    if (is_deletable(path)) {
        const support::CancellationOff cancellation_off;
        delete_contents(path);
        ::rmdir(path);
    }
}

void orumcomn_delsubtree(const char* path) {
    if (is_deletable(path)) {
        const support::CancellationOff cancellation_off;
        delete_contents(path);
    }
}
