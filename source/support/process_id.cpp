#include "support/process_id.h"

#include <pthread.h>
#include <unistd.h>

namespace velora_com::qel::support {

std::atomic<uint32_t> cached_process_id{unknown_process};

namespace {

std::atomic<bool> child_forgets{false};
pthread_once_t watch_once = PTHREAD_ONCE_INIT;

void forget() {
    cached_process_id.store(unknown_process, std::memory_order_relaxed);
}

void watch_forks() {
    child_forgets = pthread_atfork(nullptr, nullptr, forget) == 0;
}

}  // namespace

uint32_t ask_process_id() {
    pthread_once(&watch_once, watch_forks);
    const auto current = static_cast<uint32_t>(getpid());
    if (child_forgets) {
        cached_process_id.store(current, std::memory_order_relaxed);
    }
    return current;
}

}  // namespace velora_com::qel::support
