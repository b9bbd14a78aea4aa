// The loaded libraries: 50 slots, the mutex that loading and freeing take turns with, and the leaf lock of
// the slots.
#pragma once

#include <cstdint>
#include <memory>

#include "support/fixed_text.h"
#include "support/mutex.h"
#include "vlrcomn/dynamic_library.h"

namespace velora_com::qel::libraries {

// Guards the slots and what their entries say. Taken last and held over no call out, so that an entry point
// may use what takes no more than this.
extern support::Mutex slots_mutex;

struct LibraryEntry {
    char name[support::fixed_text_size];  // without a terminator when the path is longer than 259
    void* module;
    oruDllMain entry_point;  // null when the library has none
    int32_t references VLRCOMN_GUARDED_BY(slots_mutex);
    int32_t thread_calls_disabled VLRCOMN_GUARDED_BY(slots_mutex);
    LibraryEntry* next_abandoned;  // see abandon()
};

extern LibraryEntry* pDynamicLibraryList[ORU_MAX_LIBRARIES] VLRCOMN_GUARDED_BY(slots_mutex);
extern support::Mutex MutexDynamicLibraryList;

// The list's mutex, held through constructors, destructors and entry points, which may come back: a thread
// that holds the list already does not get it again. Cancellation has to be off in the scope.
class VLRCOMN_SCOPED_CAPABILITY LibraryListHold {
public:
    LibraryListHold() VLRCOMN_ACQUIRE(MutexDynamicLibraryList);
    ~LibraryListHold() VLRCOMN_RELEASE();
    LibraryListHold(const LibraryListHold&) = delete;
    LibraryListHold& operator=(const LibraryListHold&) = delete;

    explicit operator bool() const noexcept { return held_; }

private:
    bool held_ = false;
};

// Counts one more reference to the library of exactly this path and returns its module, null when it is
// not loaded (as under a null path). `free_slot` receives the lowest empty slot, null when there is none.
void* reference_library(const char* path, LibraryEntry**& free_slot);

// Fills an empty slot. The entry has one reference then.
void publish_library(LibraryEntry** slot, std::unique_ptr<LibraryEntry> entry);

// Whether a library has this module handle.
bool is_listed(void* module);

// Gives one reference of the module's first entry back. Returns the slot, null when there is none;
// `last` tells whether no reference is left, and the slot then has to be withdrawn.
LibraryEntry** release_reference(void* module, bool& last);

// Empties a slot.
std::unique_ptr<LibraryEntry> withdraw_library(LibraryEntry** slot);

// Keeps the memory of an entry whose library could not be opened until the process ends, within reach, so that
// no leak is reported.
void abandon(std::unique_ptr<LibraryEntry> entry) VLRCOMN_REQUIRES(MutexDynamicLibraryList);

}  // namespace velora_com::qel::libraries
