// What the host's cancellation can do.
#pragma once

#include <gtest/gtest.h>
#include <pthread.h>

// Whether a thread can be cancelled while it waits on a condition. On Mac OS X 10.4 it sleeps on.
inline bool condition_waits_can_be_cancelled() {
    pthread_t thread;
    const auto wait_cancelled = [](void*) -> void* {
        static pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
        static pthread_cond_t cond = PTHREAD_COND_INITIALIZER;
        const timespec long_ago{1, 0};
        const auto unlock = [](void* of) {
            pthread_mutex_unlock(static_cast<pthread_mutex_t*>(of));
        };
        pthread_cancel(pthread_self());
        pthread_mutex_lock(&mutex);
        pthread_cleanup_push(unlock, &mutex);
        pthread_cond_timedwait(&cond, &mutex, &long_ago);
        pthread_cleanup_pop(1);
        return nullptr;
    };
    void* result = nullptr;
    return pthread_create(&thread, nullptr, wait_cancelled, nullptr) == 0 &&
           pthread_join(thread, &result) == 0 && result == PTHREAD_CANCELED;
}

#define NEEDS_CANCELLED_WAITS                \
    if (!condition_waits_can_be_cancelled()) \
    GTEST_SKIP() << "nobody can be cancelled while it waits on a condition"
