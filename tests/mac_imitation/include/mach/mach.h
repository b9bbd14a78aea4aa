// Imitation of the Mac's header: what the library uses of it, with the Mac's values.
#pragma once

#include <cstdint>

typedef int kern_return_t, integer_t;
typedef unsigned natural_t, mach_port_t, mach_msg_type_number_t;
typedef uintptr_t vm_size_t;
typedef integer_t* host_info_t;

#define KERN_SUCCESS 0
#define HOST_VM_INFO 2

struct vm_statistics_data_t {
    natural_t free_count, others[14];
};
#define HOST_VM_INFO_COUNT \
    (static_cast<mach_msg_type_number_t>(sizeof(vm_statistics_data_t) / sizeof(integer_t)))

extern "C" {
mach_port_t mach_host_self();
mach_port_t mach_task_self();
kern_return_t mach_port_deallocate(mach_port_t task, mach_port_t port);
kern_return_t host_page_size(mach_port_t host, vm_size_t* size);
kern_return_t host_statistics(mach_port_t host, int flavour, host_info_t info,
                              mach_msg_type_number_t* words);
}
