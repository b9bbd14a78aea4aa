// What the host's cancellation can do.
#pragma once

#include <pthread.h>

// Whether a thread can be cancelled while it waits on a condition. On Mac OS X 10.4 it sleeps on.
inline bool condition_waits_can_be_cancelled() {
    pthread_t thread;
    const auto wait_cancelled = [](void*) -> void* {
        static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
        static pthread_cond_t cond = PTHREAD_COND_INITIALIZER;
        const timespec long_ago{1, 0};
        pthread_cancel(pthread_self());
        pthread_mutex_lock(&mutex);
        const auto unlock = [](void* locked) {
            pthread_mutex_unlock(static_cast<pthread_mutex_t*>(locked));
        };
        pthread_cleanup_push(unlock, &mutex);
        pthread_cond_timedwait(&cond, &mutex, &long_ago);
        pthread_cleanup_pop(1);
        return nullptr;
    };
    void* result = nullptr;
    return pthread_create(&thread, nullptr, wait_cancelled, nullptr) == 0 &&
           pthread_join(thread, &result) == 0 && result == PTHREAD_CANCELED;
}
