#include "sync/wait.h"

#include <sys/time.h>

#include <limits>
#include <optional>

#include "support/watch.h"
#include "sync/error_word.h"
#include "sync/mutex_record.h"
#include "vlrcomn/sync.h"

using namespace velora_com::qel::sync;
using velora_com::qel::support::pause_between_looks;
using velora_com::qel::support::watch;
using velora_com::qel::support::watch_looks;

namespace {

constexpr int32_t nanoseconds_per_second = 1'000'000'000;
constexpr uint32_t poll_milliseconds = 10;

extern "C" void unlock_record(void* mutex) {
    pthread_mutex_unlock(static_cast<pthread_mutex_t*>(mutex));
}

// The moment when a wait that starts now ends, or nothing when the clock cannot be read or the
// nanoseconds reach a full second. They are not carried: sync.h has callers try again. The test is made
// here because hosts differ in what they do with such a deadline.
std::optional<timespec> deadline_after(uint32_t milliseconds) {
    timeval now;
    if (gettimeofday(&now, nullptr) != 0) {
        return std::nullopt;
    }
    const auto nanoseconds = static_cast<int32_t>(now.tv_usec) * 1000 +
                             static_cast<int32_t>(milliseconds % 1000) * 1'000'000;
    if (nanoseconds >= nanoseconds_per_second) {
        return std::nullopt;
    }
    const auto seconds = static_cast<time_t>(milliseconds / 1000);
    constexpr time_t last_second = std::numeric_limits<time_t>::max();
    timespec deadline{};
    deadline.tv_sec = now.tv_sec > last_second - seconds ? last_second : now.tv_sec + seconds;
    deadline.tv_nsec = nanoseconds;
    return deadline;
}

// Sleeps on the record's condition once, until `deadline` if there is one. The record's mutex is
// held before and after; a clean-up handler unlocks it when the thread is cancelled, since
// cancellation need not run destructors. For the same reason no guard object may own the mutex
// around this call: where destructors do run, both would unlock.
int sleep_on(_oruHandleObject_t& record, const std::optional<timespec>& deadline)
    VLRCOMN_REQUIRES(record.mutex) {
    int error = 0;
    pthread_cleanup_push(unlock_record, record.mutex.native());
    error = deadline ? pthread_cond_timedwait(&record.cond, record.mutex.native(), &*deadline)
                     : pthread_cond_wait(&record.cond, record.mutex.native());
    pthread_cleanup_pop(0);
    return error;
}

// Acquire: an ending thread stores its 1 without holding the mutex.
bool is_signalled(const _oruHandleObject_t& record) {
    return record.bSignalled.load(std::memory_order_acquire) == 1;
}

// Takes what needs no sleep, with the record's mutex held: 0 when the object is signalled, and then a mutex
// is the calling thread's; EBUSY when it is not; or what went wrong.
inline int try_object(_oruHandleObject_t& record) VLRCOMN_REQUIRES(record.mutex) {
    if (!is_signalled(record)) {
        return EBUSY;
    }
    if (record.nType != ORU_KIND_MUTEX) {
        return 0;
    }
    auto* mutex = static_cast<MutexRecord*>(record.pData);
    // Only tried, never waited for: the release needs the record's mutex, which is held here.
    const int error = pthread_mutex_trylock(&mutex->inner);
    if (error == 0) {
        mutex->owner = pthread_self();
        record.bSignalled.store(0, std::memory_order_relaxed);
    }
    return error;
}

// Sleeps for an object that is not signalled, with the record's mutex held. Apart from its caller, as is
// watch_and_lock: setting an event and waiting for it takes 47 ns so, else 56.
[[gnu::noinline]] uint32_t sleep_for_object(_oruHandleObject_t& record, uint32_t milliseconds)
    VLRCOMN_REQUIRES(record.mutex) {
    if (milliseconds == 0) {
        return ORU_WAIT_TIMEOUT;
    }
    std::optional<timespec> deadline;
    if (milliseconds != ORU_INFINITE) {
        deadline = deadline_after(milliseconds);
        if (!deadline) {
            return ORU_WAIT_FAILED;
        }
    }
    for (;;) {
        if (const int error = sleep_on(record, deadline); error != 0) {
            return error == ETIMEDOUT ? ORU_WAIT_TIMEOUT : ORU_WAIT_FAILED;
        }
        // Any wake-up counts as the signal of an event or thread. A broadcast wakes every waiter for a
        // mutex and only one gets it; the others sleep on until their one deadline.
        if (record.nType != ORU_KIND_MUTEX) {
            return ORU_WAIT_SIGNALLED;
        }
        if (const int error = try_object(record); error != EBUSY) {
            return error == 0 ? ORU_WAIT_SIGNALLED : ORU_WAIT_FAILED;
        }
    }
}

bool can_be_waited_for(oruHandle handle) {
    return names_object(handle) && handle->nType >= ORU_KIND_EVENT &&
           handle->nType <= ORU_KIND_MUTEX;
}

// Looks at an object that is not signalled, and then locks its record's mutex; false when that fails. The caller
// keeps the handle alive. What is seen is only a hint: it counts when it is seen again under the mutex, which
// whoever signals the object holds until it is done with the record. That takes an instant, for which the thread
// does not go to sleep: both would need a system call.
[[gnu::noinline]] bool watch_and_lock(_oruHandleObject_t& record)
    VLRCOMN_TRY_ACQUIRE(true, record.mutex) VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    int tries = watch([&record] { return is_signalled(record); }) ? watch_looks : 0;
    for (; tries > 0; --tries) {
        if (record.mutex.try_lock()) {
            return true;
        }
        pause_between_looks();
    }
    return record.mutex.lock();
}

// With the record's mutex held, which it gives back.
uint32_t take_or_sleep(_oruHandleObject_t& record, uint32_t milliseconds)
    VLRCOMN_RELEASE(record.mutex) {
    uint32_t result = ORU_WAIT_SIGNALLED;
    if (const int error = try_object(record); error != 0) {
        result = error == EBUSY ? sleep_for_object(record, milliseconds) : ORU_WAIT_FAILED;
    }
    const bool unlocked = record.mutex.unlock();
    return result == ORU_WAIT_SIGNALLED && !unlocked ? ORU_WAIT_FAILED : result;
}

}  // namespace

namespace velora_com::qel::sync {

uint32_t wait_asleep(oruHandle handle, uint32_t milliseconds) {
    if (!can_be_waited_for(handle)) {
        note_error(EINVAL);
        return ORU_WAIT_FAILED;
    }
    if (!handle->mutex.lock()) {
        return ORU_WAIT_FAILED;
    }
    return take_or_sleep(*handle, milliseconds);
}

}  // namespace velora_com::qel::sync

uint32_t oruWaitForSingleObject(oruHandle handle, uint32_t milliseconds) {
    if (!can_be_waited_for(handle)) {
        note_error(EINVAL);
        return ORU_WAIT_FAILED;
    }
    if (is_signalled(*handle)) {
        if (!handle->mutex.lock()) {
            return ORU_WAIT_FAILED;
        }
    } else if (milliseconds == 0) {
        return ORU_WAIT_TIMEOUT;
    } else if (!watch_and_lock(*handle)) {
        return ORU_WAIT_FAILED;
    }
    return take_or_sleep(*handle, milliseconds);
}

uint32_t oruWaitForMultipleObjects(uint32_t count, const oruHandle* handles, int wait_all,
                                   uint32_t milliseconds) {
    if (wait_all == 1) {
        return ORU_WAIT_FAILED;
    }
    if (milliseconds == 0) {
        return ORU_WAIT_TIMEOUT;
    }
    if (count == 0 || handles == nullptr) {
        note_error(EINVAL);
        return ORU_WAIT_FAILED;
    }
    // In 64 bits: a 32-bit count would pass the all-ones bound and begin anew.
    uint32_t index = 0;
    for (uint64_t elapsed = 0; elapsed < milliseconds; elapsed += poll_milliseconds) {
        const uint32_t result = wait_asleep(handles[index], poll_milliseconds);
        if (result == ORU_WAIT_SIGNALLED) {
            return ORU_WAIT_SIGNALLED + index;
        }
        if (result != ORU_WAIT_TIMEOUT) {
            return result == ORU_WAIT_RESERVED ? ORU_WAIT_RESERVED : ORU_WAIT_FAILED;
        }
        index = index + 1 == count ? 0 : index + 1;
    }
    return ORU_WAIT_TIMEOUT;
}
