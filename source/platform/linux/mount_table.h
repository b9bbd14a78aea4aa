// The kernel's mount table, and what is decided from it before any file system is asked.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace velora_com::qel::platform {

struct MountEntry {
    std::string mount_point;
    std::string type;
};

// Reads the entries that are left in an open table, in their order.
std::vector<MountEntry> read_mount_table(FILE* table);

// Whether asking this file system for its size may wait for a server or a user's program, or have
// the system mount something.
bool may_wait(std::string_view type);

// Whether looking `path` up may lead through a file system that may wait. The root does not count:
// nothing runs on a machine whose root waits.
bool lies_in_waiting_mount(const std::vector<MountEntry>& table, std::string_view path);

}  // namespace velora_com::qel::platform
