#include <mach/mach.h>

#include "platform/macosx/sysctl_value.h"
#include "platform/platform.h"

namespace velora_com::qel::platform {

namespace {

// Owns the right to the host's port.
class HostPort {
public:
    HostPort() noexcept : port_(mach_host_self()) {}
    ~HostPort() { mach_port_deallocate(mach_task_self(), port_); }
    HostPort(const HostPort&) = delete;
    HostPort& operator=(const HostPort&) = delete;

    mach_port_t get() const noexcept { return port_; }

private:
    mach_port_t port_;
};

std::optional<FreePages> free_pages() {
    const HostPort host;
    vm_size_t page_size = 0;
    if (host_page_size(host.get(), &page_size) != KERN_SUCCESS) {
        return std::nullopt;
    }
    vm_statistics_data_t statistics = {};
    mach_msg_type_number_t words = HOST_VM_INFO_COUNT;
    if (host_statistics(host.get(), HOST_VM_INFO, reinterpret_cast<host_info_t>(&statistics),
                        &words) != KERN_SUCCESS) {
        return std::nullopt;
    }
    return FreePages{statistics.free_count, page_size};
}

}  // namespace

MemoryFacts memory_facts() {
    return {sysctl_value<uint64_t>(CTL_HW, HW_MEMSIZE), free_pages()};
}

}  // namespace velora_com::qel::platform
