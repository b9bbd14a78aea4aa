// Imitation of the Mac's header: what the library uses of it, with the Mac's values.
#pragma once

#include <sys/types.h>

#define CTL_KERN 1
#define KERN_BOOTTIME 21
#define KERN_NISDOMAINNAME 22
#define CTL_HW 6
#define HW_NCPU 3
#define HW_MEMSIZE 24

extern "C" {
int sysctl(int* name, u_int levels, void* old_value, size_t* old_size, void* new_value,
           size_t new_size);
int sysctlbyname(const char* name, void* old_value, size_t* old_size, void* new_value,
                 size_t new_size);
}
