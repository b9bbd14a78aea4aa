#include "lists/process_id.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>

namespace velora_com::qel::lists {
namespace {

constexpr uint32_t kUnknown = 0;  // no process that runs this code has the id 0

std::atomic<uint32_t> cached{kUnknown};
std::atomic<bool> child_forgets{false};
pthread_once_t watch_once = PTHREAD_ONCE_INIT;

void forget() {
    cached.store(kUnknown, std::memory_order_relaxed);
}

void watch_forks() {
    child_forgets = pthread_atfork(nullptr, nullptr, forget) == 0;
}

}  // namespace

uint32_t process_id() {
    const uint32_t known = cached.load(std::memory_order_relaxed);
    if (known != kUnknown) {
        return known;
    }
    pthread_once(&watch_once, watch_forks);
    const auto current = static_cast<uint32_t>(getpid());
    if (child_forgets) {
        cached.store(current, std::memory_order_relaxed);
    }
    return current;
}

}  // namespace velora_com::qel::lists
