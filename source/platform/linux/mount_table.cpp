#include "platform/linux/mount_table.h"

#include <mntent.h>

#include <algorithm>

namespace velora_com::qel::platform {

namespace {

// Network and cluster file systems by their names in the mount table.
constexpr std::string_view network_types[] = {
    "9p",    "acfs",  "afs",       "auristorfs", "beegfs", "ceph",  "cifs", "coda",
    "davfs", "gfs2",  "gpfs",      "lustre",     "ncpfs",  "nfs",   "nfs4", "ocfs2",
    "smb3",  "smbfs", "glusterfs", "orangefs",   "panfs",  "pvfs2",
};

bool is_network_type(std::string_view type) {
    // A program serves such a file system, often for a server. "fuseblk" is one on a local disk.
    if (type == "fuse" || type.substr(0, 5) == "fuse.") {
        return true;
    }
    return std::find(std::begin(network_types), std::end(network_types), type) !=
           std::end(network_types);
}

}  // namespace

std::vector<MountEntry> read_mount_table(FILE* table) {
    std::vector<MountEntry> entries;
    // Room for two paths with every byte escaped; what does not fit is the end of the options.
    std::vector<char> line(size_t{64} * 1024);
    mntent entry;
    while (getmntent_r(table, &entry, line.data(), static_cast<int>(line.size())) != nullptr) {
        entries.push_back({entry.mnt_dir, entry.mnt_type});
    }
    return entries;
}

bool may_wait(std::string_view type) {
    return type == "autofs" || is_network_type(type);
}

bool lies_in_waiting_mount(const std::vector<MountEntry>& table, std::string_view path) {
    return std::any_of(table.begin(), table.end(), [&](const MountEntry& entry) {
        const std::string& outer = entry.mount_point;
        return is_network_type(entry.type) && outer != "/" &&
               path.substr(0, outer.size()) == outer &&
               (path.size() == outer.size() || path[outer.size()] == '/');
    });
}

}  // namespace velora_com::qel::platform
