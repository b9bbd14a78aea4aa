// What changes or reads the C library's time-zone state, and the mutex that serialises it.
//
// The C library may open zone files under the mutex, so cancellation is off while it is held.
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "support/boundary.h"
#include "support/owners.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel {

// Of the system's type, as programs take it too, and over state of the C library, which bears no annotation:
// the analysis has nothing to follow.
pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;

namespace {

constexpr size_t max_kept_zone = 1024;
constexpr size_t max_zone_name = 63;

bool is_kept(const char* zone) {
    const size_t length = std::strlen(zone);
    return length >= 1 && length <= max_kept_zone;
}

}  // namespace

time_t vlrcomn_timegm(std::tm* time) {
    if (time == nullptr) {
        return -1;
    }
    const support::CancellationOff no_cancellation;
    const support::UncheckedMutexGuard lock(mutex);
    const time_t seconds = timegm(time);
    // NOLINTBEGIN(concurrency-mt-unsafe): the library's own calls take the mutex
    const char* const zone = std::getenv("TZ");
    if (zone != nullptr && !is_kept(zone)) {
        unsetenv("TZ");
    }
    tzset();
    // NOLINTEND(concurrency-mt-unsafe)
    return seconds;
}

bool vlrcomn_gettimezone(std::wstring& zone) {
    char name[max_zone_name + 1] = {};
    {
        const support::CancellationOff no_cancellation;
        const support::UncheckedMutexGuard lock(mutex);
        if (tzname[0] == nullptr) {
            return false;
        }
        std::strncpy(name, tzname[0], max_zone_name);
    }
    zone = support::or_failure(std::wstring(), [&] { return orumcomn_ansi_to_wide(name); });
    return true;
}

}  // namespace velora_com::qel
