#include "portability/tls_index.h"

#include <pthread.h>
#include <unistd.h>

#include "portability/errors.h"
#include "support/config.h"
#include "support/owners.h"

namespace velora_com::qel::portability {

// Both start as all zeros, every index free: there is nothing to clear on the first call.
std::atomic<uintptr_t> pTlsKeyTable[ORU_TLS_INDICES];
uint32_t nTlsOwnerTable[ORU_TLS_INDICES];

namespace {

// Guards changes of the tables, and the use of a key for storing. Taken last.
pthread_mutex_t tables_lock = PTHREAD_MUTEX_INITIALIZER;

uintptr_t word_of(uint32_t index) noexcept {
    return __builtin_expect(index < ORU_TLS_INDICES, 1)
               ? pTlsKeyTable[index].load(std::memory_order_acquire)
               : 0;
}

// Keys are small numbers everywhere; an index whose key is not is refused.
constexpr uintptr_t key_mask = 0xFFFF;

pthread_key_t key_of(uintptr_t word) noexcept {
    return static_cast<pthread_key_t>((word & key_mask) - 1);
}

// The word of an index that comes into use, with the tables locked.
uintptr_t new_word(pthread_key_t key) noexcept {
    static uintptr_t uses = 0;
    return ++uses * (key_mask + 1) + static_cast<uintptr_t>(key) + 1;
}

#ifdef VLRCOMN_HAVE_STATIC_TLS
// The values that this thread met last, by the word of their index: reading one again costs no more than
// the system's own look-up. An index that comes into use again has another word, so that an old value is
// never found; hosts whose words have no room for that many uses do without.
constexpr uint32_t cached_values = 8;
struct Cache {
    uintptr_t words[cached_values];  // never 0 once filled
    void* values[cached_values];
};
thread_local __attribute__((tls_model("initial-exec"))) Cache cache;

bool recall(uint32_t index, uintptr_t word, void*& value) noexcept {
    value = cache.values[index % cached_values];
    return cache.words[index % cached_values] == word;
}

void remember(uint32_t index, uintptr_t word, void* value) noexcept {
    cache.words[index % cached_values] = word;
    cache.values[index % cached_values] = value;
}
#else
bool recall(uint32_t, uintptr_t, void*&) noexcept {
    return false;
}
void remember(uint32_t, uintptr_t, void*) noexcept {}
#endif

uint32_t process_id() noexcept {
    return static_cast<uint32_t>(getpid());
}

// Frees an index that is in use, with the tables locked; false when the system keeps the key.
bool free_index(uint32_t index) noexcept {
    const pthread_key_t key = key_of(word_of(index));
    pTlsKeyTable[index].store(0, std::memory_order_release);
    nTlsOwnerTable[index] = 0;
    return pthread_key_delete(key) == 0;
}

// Asks the system for this thread's value, without the lock. When the key is freed in between, the system
// still holds the old value or none, and should somebody else have got the same key, this thread cannot
// have stored a value for it yet: the answer is that of a call before or after the freeing, never a
// stranger's value. Apart from its caller, which is the shorter for it.
[[gnu::noinline]] void* look_up(uint32_t index, uintptr_t word) noexcept {
    if (word == 0) {
        note_error(EINVAL);
        return nullptr;
    }
    void* const value = pthread_getspecific(key_of(word));
    remember(index, word, value);
    return value;
}

}  // namespace

void free_tls_indices_of_process() noexcept {
    const uint32_t process = process_id();
    const support::MutexGuard lock(tables_lock);
    for (uint32_t index = 0; index < ORU_TLS_INDICES; ++index) {
        if (word_of(index) != 0 && nTlsOwnerTable[index] == process) {
            free_index(index);
        }
    }
}

}  // namespace velora_com::qel::portability

using namespace velora_com::qel::portability;
using velora_com::qel::support::MutexGuard;

uint32_t oruTlsAlloc(void) {
    const MutexGuard lock(tables_lock);
    if (!lock) {
        return ORU_TLS_OUT_OF_INDEXES;
    }
    for (uint32_t index = 0; index < ORU_TLS_INDICES; ++index) {
        if (word_of(index) == 0) {
            pthread_key_t key;
            if (pthread_key_create(&key, nullptr) != 0) {
                return ORU_TLS_OUT_OF_INDEXES;
            }
            if (key >= key_mask) {
                pthread_key_delete(key);
                return ORU_TLS_OUT_OF_INDEXES;
            }
            nTlsOwnerTable[index] = process_id();
            pTlsKeyTable[index].store(new_word(key), std::memory_order_release);
            return index;
        }
    }
    note_error(EAGAIN);
    return ORU_TLS_OUT_OF_INDEXES;
}

int oruTlsFree(uint32_t index) {
    const MutexGuard lock(tables_lock);
    if (!lock) {
        return 0;
    }
    if (word_of(index) == 0) {
        note_error(EINVAL);
        return 0;
    }
    return free_index(index) ? 1 : 0;
}

// Under the lock: a key freed in between may already be somebody else's, whose value would be lost.
int oruTlsSetValue(uint32_t index, void* value) {
    const MutexGuard lock(tables_lock);
    if (!lock) {
        return 0;
    }
    const uintptr_t word = word_of(index);
    if (word == 0) {
        note_error(EINVAL);
        return 0;
    }
    if (pthread_setspecific(key_of(word), value) != 0) {
        return 0;
    }
    remember(index, word, value);
    return 1;
}

// Aligned to a line of instructions, as the system's own look-up is: a split costs a fifth of the call.
__attribute__((aligned(64))) void* oruTlsGetValue(uint32_t index) {
    const uintptr_t word = word_of(index);
    void* value = nullptr;
    if (__builtin_expect(word != 0 && recall(index, word, value), 1)) {
        return value;
    }
    return look_up(index, word);
}
