#include "support/watch.h"

#include <sched.h>
#include <sys/time.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>

#include "support/config.h"
#include "support/owners.h"
#if !defined(VLRCOMN_HAVE_SC_NPROCESSORS_ONLN)
#include <sys/sysctl.h>
#endif

namespace velora_com::qel::support {
namespace {

long ask_for_processors() noexcept {
#if defined(VLRCOMN_HAVE_SC_NPROCESSORS_ONLN)
    const ReleaseScope scope;  // where the answer is read from a file
    return sysconf(_SC_NPROCESSORS_ONLN);
#else
    int name[] = {CTL_HW, HW_NCPU};
    int32_t count = 0;
    size_t size = sizeof count;
    return sysctl(name, 2, &count, &size, nullptr, 0) == 0 ? count : 1;
#endif
}

// Microseconds on a clock that may be set, which costs a wrong guess and nothing else.
int64_t now() noexcept {
    timeval time{};
    gettimeofday(&time, nullptr);
    return int64_t{time.tv_sec} * 1'000'000 + time.tv_usec;
}

// How many waits have passed since looks last ended one. Threads may miss each other's: it is a guess.
std::atomic<uint32_t> looks_in_vain{0};

}  // namespace

bool has_several_processors() noexcept {
    static std::atomic<int32_t> known{0};  // 1 or, for any number above, 2
    int32_t processors = known.load(std::memory_order_relaxed);
    if (processors == 0) {
        processors = ask_for_processors() > 1 ? 2 : 1;
        known.store(processors, std::memory_order_relaxed);
    }
    return processors > 1;
}

bool looks_pay() noexcept {
    constexpr uint32_t patience = 16;
    return looks_in_vain.load(std::memory_order_relaxed) < patience;
}

bool looks_are_due() noexcept {
    constexpr uint32_t left_out = 64;
    return looks_in_vain.load(std::memory_order_relaxed) % left_out == 0;
}

void note_looks(bool paid) noexcept {
    const uint32_t in_vain = looks_in_vain.load(std::memory_order_relaxed);
    if (paid && in_vain == 0) {
        return;  // nothing to store: the word is every processor's
    }
    looks_in_vain.store(paid ? 0 : in_vain + 1, std::memory_order_relaxed);
}

bool yield_for_a_moment() noexcept {
    constexpr int64_t moment = 100;
    constexpr int32_t leave_out = 1000;
    static std::atomic<int32_t> left_out{0};
    const int32_t still = left_out.load(std::memory_order_relaxed);
    if (still > 0) {
        left_out.store(still - 1, std::memory_order_relaxed);
        return false;
    }
    const int64_t begin = now();
    sched_yield();
    const bool brief = now() - begin < moment;
    if (!brief) {
        left_out.store(leave_out, std::memory_order_relaxed);
    }
    return brief;
}

}  // namespace velora_com::qel::support
