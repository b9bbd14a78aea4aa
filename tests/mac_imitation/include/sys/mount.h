// Imitation of the Mac's header: what the library uses of it, with the Mac's values.
#pragma once

#include <cstdint>

// The host has a structure and a call of this name that differ.
#define statfs mac_statfs

#define MNT_WAIT 1
#define MNT_LOCAL 0x1000

struct statfs {
    uint32_t f_bsize;
    uint64_t f_blocks;
    uint64_t f_bfree;
    uint64_t f_bavail;
    uint32_t f_flags;
    char f_mntonname[90];
};

extern "C" {
int statfs(const char* path, struct statfs* answer);
int getfsstat(struct statfs* records, int bytes, int mode);
}
