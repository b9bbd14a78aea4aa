#include "vlrcomn/guid.h"

#include <sys/ioctl.h>
#include <sys/socket.h>
// After sys/socket.h, as older systems need it.
#include <net/if.h>

#include <cstdlib>

#include "support/open_socket.h"
#include "system/guid_generator.h"

using namespace velora_com::qel;

namespace {

timeval time_of_day() {
    timeval now = {};
    gettimeofday(&now, nullptr);
    return now;
}

// A leaf lock: nothing is called out of the library while it is held.
support::Mutex generator_mutex;
system::GuidGenerator generator VLRCOMN_GUARDED_BY(generator_mutex)(time_of_day, std::rand);

// Lists the interfaces, as the first GUID of a process always has; the list is not used.
void list_interfaces() {
    const support::FileDescriptor socket = support::open_socket(AF_INET, SOCK_DGRAM, 0);
    alignas(ifreq) char buffer[1024];
    ifconf list = {};
    list.ifc_len = sizeof buffer;
    list.ifc_buf = buffer;
    ioctl(socket.get(), SIOCGIFCONF, &list);
}

}  // namespace

GUID* oruCoCreateGuid(GUID* guid) {
    if (guid == nullptr) {
        return nullptr;
    }
    const support::ErrnoKeeper errno_keeper;
    const support::CancellationOff no_cancellation;  // of what the first GUID asks the system
    const support::MutexGuard lock(generator_mutex);
    if (!generator.started()) {
        list_interfaces();
    }
    *guid = generator.make();
    return guid;
}
