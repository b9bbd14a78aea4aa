// The slots of the open directory searches.
#pragma once

#include <pthread.h>

#include <atomic>

#include "support/owners.h"
#include "vlrcomn/file.h"

namespace velora_com::qel::portability {

constexpr size_t search_text_size = 260;  // of a directory or a pattern, terminator included

struct SearchEntry {
    support::Directory stream;
    char pattern[search_text_size];
    char directory[search_text_size];  // with its '/', or "."
};

// A slot is filled with MutexDirEnt held and emptied with its own mutex held, and the search is read with
// the slot's mutex held: a search that is closed meanwhile is freed after the reading.
struct SearchSlot {
    std::atomic<SearchEntry*> entry{nullptr};
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
};

extern SearchSlot pDirEntTable[ORU_MAX_SEARCHES];
extern pthread_mutex_t MutexDirEnt;  // guards the choice of a free slot; nothing is taken under it

}  // namespace velora_com::qel::portability
