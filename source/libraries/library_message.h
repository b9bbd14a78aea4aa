// The texts in which the functions of dynamic_library.h explain a failure.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>

#include "support/owners.h"
#include "vlrcomn/dynamic_library.h"

namespace velora_com::qel::libraries {

// How much of the loader's own words is handed out.
constexpr size_t max_loader_words = 510;

// A message composed by one thread.
using LocalMessage = char[ORU_LIBRARY_MESSAGE_SIZE];

// Appends at most max_loader_words of the loader's last words to `message`, which has room for
// ORU_LIBRARY_MESSAGE_SIZE characters in all; null takes none.
void append_loader_words(char* message);

// A static text that callers read without a lock, whoever writes it next. Its last character is always the
// terminator, so that no reader runs past it.
template <typename Character>
class SharedMessage {
public:
    const Character* text() const { return text_; }

    void clear() { set(&terminator, 0); }

    // Most calls succeed and find an empty text: that costs one load.
    void set(const Character* from, size_t length) {
        if (length == 0 && !filled_.load(std::memory_order_relaxed)) {
            return;
        }
        const support::MutexGuard lock(mutex_);
        const size_t kept = std::min(length, size_t{ORU_LIBRARY_MESSAGE_SIZE - 1});
        std::copy_n(from, kept, text_);
        text_[kept] = 0;
        filled_.store(kept != 0, std::memory_order_relaxed);
    }

private:
    static constexpr Character terminator = 0;

    Character text_[ORU_LIBRARY_MESSAGE_SIZE] = {};
    std::atomic<bool> filled_{false};
    support::Mutex mutex_;  // of writers alone: text_ is read without it
};

}  // namespace velora_com::qel::libraries
