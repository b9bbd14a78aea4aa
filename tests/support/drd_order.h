// Put before every source that is compiled for valgrind's drd, which follows POSIX calls: an exchange or a
// store then tells it what it orders.
#pragma once

#include <valgrind/drd.h>

#include <atomic>  // whose own exchanges stay as they are

template <typename Word>
Word ordered_exchange(volatile Word* word, Word value, int order) {
    if (order != __ATOMIC_ACQUIRE) {
        ANNOTATE_HAPPENS_BEFORE(word);
    }
    const Word previous = __atomic_exchange_n(word, value, order);
    if (order != __ATOMIC_RELEASE) {
        ANNOTATE_HAPPENS_AFTER(word);
    }
    return previous;
}
#define __atomic_exchange_n(word, value, order) ordered_exchange(word, value, order)
// It takes plain stores for races, exchanges not.
#define __atomic_store_n(word, value, order) ordered_exchange(word, value, order)
