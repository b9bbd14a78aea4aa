// The slots of the open directory searches.
#pragma once

#include "support/fixed_text.h"
#include "support/owners.h"
#include "vlrcomn/file.h"

namespace velora_com::qel::files {

// Guards the choice of a free slot; nothing but that slot's mutex is taken under it.
extern support::Mutex MutexDirEnt;

struct SearchEntry {
    support::Directory stream;
    char pattern[support::fixed_text_size];
    char directory[support::fixed_text_size];  // with its '/', or "."
};

// One lock for each datum. Only a taken slot holds a search; it is emptied before it is given back. Who reads
// on keeps the slot's mutex, so that a search that is closed meanwhile is freed after the reading.
struct SearchSlot {
    bool taken VLRCOMN_GUARDED_BY(MutexDirEnt) = false;
    SearchEntry* entry VLRCOMN_GUARDED_BY(mutex) VLRCOMN_PT_GUARDED_BY(mutex) = nullptr;
    support::Mutex mutex;
};

extern SearchSlot pDirEntTable[ORU_MAX_SEARCHES];

}  // namespace velora_com::qel::files
