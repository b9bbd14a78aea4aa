// Which mounts are asked for their size.
#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "platform/linux/mount_table.h"
#include "platform/posix/block_counts.h"

namespace velora_com::qel::platform {

namespace {

// Network and cluster file systems by their names in the mount table.
constexpr std::string_view network_types[] = {
    "9p",    "acfs",  "afs",       "auristorfs", "beegfs", "ceph",  "cifs", "coda",
    "davfs", "gfs2",  "gpfs",      "lustre",     "ncpfs",  "nfs",   "nfs4", "ocfs2",
    "smb3",  "smbfs", "glusterfs", "orangefs",   "panfs",  "pvfs2",
};
constexpr std::string_view memory_types[] = {"tmpfs", "devtmpfs", "ramfs"};

template <size_t count>
bool is_one_of(const std::string_view (&types)[count], std::string_view type) {
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

bool is_network_type(std::string_view type) {
    // A program serves such a file system, often for a server. "fuseblk" is one on a local disk.
    return type == "fuse" || type.substr(0, 5) == "fuse." || is_one_of(network_types, type);
}

// Asking an "autofs" has the system mount something.
bool is_local_type(std::string_view type) {
    return type != "autofs" && !is_network_type(type) && !is_one_of(memory_types, type);
}

std::string_view folder_above(std::string_view path) {
    const size_t slash = path.rfind('/');
    return path.substr(0, slash == std::string_view::npos ? 0 : std::max<size_t>(slash, 1));
}

// The mounts as the tree that they form. Whatever it is asked, it follows a path once.
class MountTree {
public:
    explicit MountTree(const std::vector<Mount>& table) {
        by_id_.reserve(table.size());
        occupied_.reserve(table.size());
        for (const Mount& mount : table) {
            by_id_.emplace(mount.id, &mount);
            if (mount.id != mount.parent) {  // the root may name itself
                occupied_.insert({mount.parent, mount.mount_point});
            }
        }
    }

    enum class Way { open, waits, hidden };

    // What looking the mount's path up meets on the way from the root: another mount that hides this one, or
    // a file system that may wait.
    Way way_to(const Mount& mount) const {
        if (is_occupied(mount.id, mount.mount_point)) {
            return Way::hidden;
        }
        bool waits = false;
        const Mount* inner = &mount;
        // Bounded, since a table that changes while it is read may name its mounts in a circle.
        for (size_t steps = 0; steps < by_id_.size(); ++steps) {
            const Mount* const outer = find(inner->parent);
            if (is_hidden_within(inner->parent, outer == nullptr ? "/" : outer->mount_point,
                                 inner->mount_point)) {
                return Way::hidden;
            }
            if (outer == nullptr || outer == inner) {
                break;
            }
            waits = waits || (is_network_type(outer->type) && outer->mount_point != "/");
            inner = outer;
        }
        return waits ? Way::waits : Way::open;
    }

private:
    // A folder of the file system of one mount.
    struct Place {
        int32_t mount;
        std::string_view path;

        bool operator==(const Place& other) const {
            return mount == other.mount && path == other.path;
        }
    };
    struct PlaceHash {
        size_t operator()(const Place& place) const {
            return std::hash<std::string_view>()(place.path) +
                   size_t{31} * static_cast<uint32_t>(place.mount);
        }
    };

    const Mount* find(int32_t id) const {
        const auto found = by_id_.find(id);
        return found == by_id_.end() ? nullptr : found->second;
    }

    // Whether something is mounted there.
    bool is_occupied(int32_t mount, std::string_view path) const {
        return occupied_.count({mount, path}) != 0;
    }

    // Whether something is mounted on `mount`, whose own place is `top`, over a folder above `path`.
    bool is_hidden_within(int32_t mount, std::string_view top, std::string_view path) const {
        while (path.size() > top.size()) {
            path = folder_above(path);
            if (is_occupied(mount, path)) {
                return true;
            }
        }
        return false;
    }

    std::unordered_map<int32_t, const Mount*> by_id_;
    std::unordered_set<Place, PlaceHash> occupied_;
};

}  // namespace

std::vector<MountedFileSystem> file_systems_of(const std::vector<Mount>& table,
                                               int (*size_of)(const char* path,
                                                              struct statvfs* answer)) {
    const MountTree tree(table);
    std::vector<MountedFileSystem> result;
    std::unordered_set<std::string_view> devices;
    for (const Mount& mount : table) {
        const MountTree::Way way = tree.way_to(mount);
        if (way == MountTree::Way::hidden || devices.count(mount.device) != 0) {
            continue;
        }
        MountedFileSystem file_system{mount.mount_point, 0, 0, 0, true};
        if (way == MountTree::Way::waits || !is_local_type(mount.type)) {
            file_system.local = false;
        } else {
            struct statvfs answer;
            if (size_of(mount.mount_point.c_str(), &answer) != 0) {
                continue;  // another mount of it may be within this user's reach
            }
            set_block_counts(file_system, answer.f_frsize, answer.f_blocks, answer.f_bfree);
            devices.insert(mount.device);
        }
        result.push_back(std::move(file_system));
    }
    return result;
}

}  // namespace velora_com::qel::platform
