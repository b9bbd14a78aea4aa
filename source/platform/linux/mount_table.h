// The kernel's mount table, and what is decided from it before any file system is asked.
#pragma once

#include <sys/statvfs.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace velora_com::qel::platform {

// One line of /proc/self/mountinfo.
struct Mount {
    int32_t id;
    int32_t parent;      // the mount on which this one is mounted; maybe outside the table
    std::string device;  // major and minor number of the file system, one for all its subvolumes
    std::string mount_point;
    std::string type;
};

// The mounts in the order of the text. A line that is no entry is left out.
std::vector<Mount> parse_mount_table(std::string_view text);

// What the table says of the file systems, with their sizes asked of `size_of`, which answers as statvfs
// does. A mount that is hidden by others is left out, and so is a further one of the same file system.
// `size_of` is not called for what is not local, which gets no figures: memory, and whatever may wait for a
// server or a user's program or have the system mount something. The root is different: nothing runs on a
// machine whose root waits, so that what is mounted below it is asked.
std::vector<MountedFileSystem> file_systems_of(const std::vector<Mount>& table,
                                               int (*size_of)(const char* path,
                                                              struct statvfs* answer));

}  // namespace velora_com::qel::platform
