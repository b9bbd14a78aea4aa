// Interlocked operations on one word.
#include <benchmark/benchmark.h>
#include <pthread.h>

#include "support/registering.h"
#include "vlrcomn/sync.h"

namespace {

int32_t word = 0;

struct OurWord {
    static constexpr const char* name = "ours";
    static int32_t increment() { return oruInterlockedIncrement(&word); }
    static int32_t exchange(int32_t value) { return oruInterlockedExchange(&word, value); }
};

pthread_mutex_t word_mutex = PTHREAD_MUTEX_INITIALIZER;

struct PosixWord {
    static constexpr const char* name = "limit";
    static int32_t increment() {
        pthread_mutex_lock(&word_mutex);
        ++word;
        pthread_mutex_unlock(&word_mutex);
        return word;
    }
    static int32_t exchange(int32_t value) {
        pthread_mutex_lock(&word_mutex);
        const int32_t previous = word;
        word = value;
        pthread_mutex_unlock(&word_mutex);
        return previous;
    }
};

struct AtomicWord {
    static constexpr const char* name = "std_atomic";
    static int32_t increment() { return __atomic_add_fetch(&word, 1, __ATOMIC_SEQ_CST); }
    static int32_t exchange(int32_t value) {
        return __atomic_exchange_n(&word, value, __ATOMIC_SEQ_CST);
    }
};

template <typename Word>
void increment(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(Word::increment());
    }
}

template <typename Word>
void exchange(benchmark::State& state) {
    int32_t value = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Word::exchange(++value));
    }
}

template <typename Word>
void add_word() {
    add_contender("interlocked_increment", Word::name, increment<Word>);
    add_contender("interlocked_exchange", Word::name, exchange<Word>);
}

void add() {
    add_word<OurWord>();
    add_word<PosixWord>();
    add_word<AtomicWord>();
}
REGISTER_BENCHMARKS(add);

}  // namespace
