#include "libraries/library_list.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <iterator>

#include "support/owners.h"
#include "vlrcomn/thread.h"

namespace velora_com::qel::libraries {

LibraryEntry* pDynamicLibraryList[ORU_MAX_LIBRARIES];
support::Mutex slots_mutex;
support::Mutex MutexDynamicLibraryList;

namespace {

using support::MutexGuard;

// Who holds the list's mutex. The flag is set after the holder: a thread that reads its own name behind a
// set flag is the holder, since nobody else writes that name.
std::atomic<bool> list_is_held{false};
std::atomic<pthread_t> list_holder{};
static_assert(std::atomic<pthread_t>::is_always_lock_free);

LibraryEntry* abandoned VLRCOMN_GUARDED_BY(MutexDynamicLibraryList);

template <typename Predicate>
LibraryEntry** find_slot(Predicate predicate) VLRCOMN_REQUIRES(slots_mutex) {
    LibraryEntry** const slot =
        std::find_if(std::begin(pDynamicLibraryList), std::end(pDynamicLibraryList), predicate);
    return slot != std::end(pDynamicLibraryList) ? slot : nullptr;
}

LibraryEntry** slot_of(void* module) VLRCOMN_REQUIRES(slots_mutex) {
    return find_slot([=](const LibraryEntry* entry) { return entry && entry->module == module; });
}

bool held_by_this_thread() {
    return list_is_held.load(std::memory_order_acquire) &&
           pthread_equal(list_holder.load(std::memory_order_relaxed), pthread_self()) != 0;
}

}  // namespace

// Neither is analysed: a hold may be refused.

LibraryListHold::LibraryListHold() VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (held_by_this_thread() || !MutexDynamicLibraryList.lock()) {
        return;
    }
    list_holder.store(pthread_self(), std::memory_order_relaxed);
    list_is_held.store(true, std::memory_order_release);
    held_ = true;
}

LibraryListHold::~LibraryListHold() VLRCOMN_NO_THREAD_SAFETY_ANALYSIS {
    if (held_) {
        list_is_held.store(false, std::memory_order_release);
        MutexDynamicLibraryList.unlock();
    }
}

void* reference_library(const char* path, LibraryEntry**& free_slot) {
    const bool may_be_listed = path != nullptr && std::strlen(path) < support::fixed_text_size;
    const MutexGuard lock(slots_mutex);
    LibraryEntry** const slot =
        !may_be_listed ? nullptr : find_slot([=](const LibraryEntry* entry) {
            return entry && std::strncmp(entry->name, path, support::fixed_text_size) == 0;
        });
    if (slot != nullptr) {
        ++(*slot)->references;
        return (*slot)->module;
    }
    free_slot = find_slot([](const LibraryEntry* entry) { return entry == nullptr; });
    return nullptr;
}

void publish_library(LibraryEntry** slot, std::unique_ptr<LibraryEntry> entry) {
    const MutexGuard lock(slots_mutex);
    entry->references = 1;
    *slot = entry.release();
}

bool is_listed(void* module) {
    const MutexGuard lock(slots_mutex);
    return slot_of(module) != nullptr;
}

LibraryEntry** release_reference(void* module, bool& last) {
    const MutexGuard lock(slots_mutex);
    LibraryEntry** const slot = slot_of(module);
    if (slot != nullptr) {
        last = --(*slot)->references <= 0;
    }
    return slot;
}

std::unique_ptr<LibraryEntry> withdraw_library(LibraryEntry** slot) {
    const MutexGuard lock(slots_mutex);
    return std::unique_ptr<LibraryEntry>(std::exchange(*slot, nullptr));
}

void abandon(std::unique_ptr<LibraryEntry> entry) {
    entry->next_abandoned = abandoned;
    abandoned = entry.release();
}

}  // namespace velora_com::qel::libraries

int oruDisableThreadLibraryCalls(void* module) {
    using namespace velora_com::qel::libraries;
    if (module == nullptr) {
        return 0;
    }
    const velora_com::qel::support::MutexGuard lock(slots_mutex);
    LibraryEntry** const slot = slot_of(module);
    if (slot == nullptr) {
        return 0;
    }
    (*slot)->thread_calls_disabled = 1;
    return 1;
}
