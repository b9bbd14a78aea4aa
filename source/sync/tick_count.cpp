#include <sys/times.h>
#include <unistd.h>

#include "support/owners.h"
#include "vlrcomn/thread.h"

uint32_t oruGetTickCount(void) {
    const velora_com::qel::support::ErrnoKeeper keeper;
    tms unused;
    const auto ticks = static_cast<uint32_t>(times(&unused));
    const auto ticks_per_second = static_cast<uint32_t>(sysconf(_SC_CLK_TCK));
    // The product wraps at 32 bits, as thread.h says. A system that does not know its rate has no ticks.
    return ticks_per_second == 0 ? 0 : ticks * 1000u / ticks_per_second;
}
