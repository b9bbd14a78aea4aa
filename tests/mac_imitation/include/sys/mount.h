// Imitation of the Mac's header, with the widths that "long" has on the home machine.
#pragma once

#include <cstdint>

// The host has a structure and a call of this name that differ.
#define statfs mac_statfs

#define MNT_WAIT 1
#define MNT_LOCAL 0x1000

struct statfs {
    int32_t f_bsize, f_blocks, f_bfree, f_bavail, f_flags;
    char f_mntonname[90];
};

extern "C" {
int statfs(const char* path, struct statfs* answer);
int getfsstat(struct statfs* records, int bytes, int mode);
}
