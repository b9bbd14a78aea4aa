#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "files/find_data.h"
#include "files/find_table.h"
#include "support/owners.h"
#include "sync/error_word.h"
#include "vlrcomn/file.h"

namespace velora_com::qel::files {

SearchSlot pDirEntTable[ORU_MAX_SEARCHES];
support::Mutex MutexDirEnt;

namespace {

using support::CancellationOff;
using support::MutexGuard;
using sync::note_error;

// Copies a text that fits and tells whether it does.
bool copy_text(char (&to)[support::fixed_text_size], const char* from, size_t length) {
    if (length >= sizeof to) {
        return false;
    }
    std::memcpy(to, from, length);
    to[length] = '\0';
    return true;
}

bool split_path(const char* path, SearchEntry& search) {
    const char* const slash = std::strrchr(path, '/');
    const char* const pattern = slash != nullptr ? slash + 1 : path;
    const bool directory_fits =
        slash != nullptr ? copy_text(search.directory, path, static_cast<size_t>(pattern - path))
                         : copy_text(search.directory, ".", 1);
    return directory_fits && copy_text(search.pattern, pattern, std::strlen(pattern));
}

// The slot of a handle, or null.
SearchSlot* slot_of(intptr_t search) {
    return search >= 1 && search <= ORU_MAX_SEARCHES ? &pDirEntTable[search - 1] : nullptr;
}

// Puts the search into the lowest free slot and returns its handle; without one the search stays the
// caller's.
intptr_t claim_slot(std::unique_ptr<SearchEntry>& search) {
    const MutexGuard choice(MutexDirEnt);
    for (intptr_t handle = 1; choice && handle <= ORU_MAX_SEARCHES; ++handle) {
        SearchSlot& slot = *slot_of(handle);
        if (slot.taken) {
            continue;
        }
        const MutexGuard lock(slot.mutex);
        if (!lock) {
            break;
        }
        slot.taken = true;
        slot.entry = search.release();
        return handle;
    }
    return ORU_INVALID_SEARCH;
}

void give_back(SearchSlot& slot) {
    const MutexGuard choice(MutexDirEnt);
    slot.taken = false;
}

intptr_t refused(int error) {
    note_error(error);
    return ORU_INVALID_SEARCH;
}

bool read_next(const SearchEntry& search, oruFindData& data) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the stream is that of one search
    while (const dirent* const entry = ::readdir(search.stream.get())) {
        if (std::strlen(entry->d_name) < sizeof data.name &&
            oruWildCardMatch(search.pattern, entry->d_name) == 0) {
            fill_find_data(data, *entry, search.directory, search.stream.get());
            return true;
        }
    }
    return false;
}

}  // namespace

}  // namespace velora_com::qel::files

using namespace velora_com::qel::files;
using namespace velora_com::qel::sync;

intptr_t oruFindFirstDirEnt(const char* path, oruFindData* data) {
    if (path == nullptr || data == nullptr) {
        return refused(EINVAL);
    }
    const CancellationOff cancellation_off;
    std::unique_ptr<SearchEntry> search(new (std::nothrow) SearchEntry{});
    if (!search) {
        return refused(EAGAIN);
    }
    if (!split_path(path, *search)) {
        errno = ENAMETOOLONG;
        return refused(EINVAL);
    }
    search->stream.reset(::opendir(search->directory));
    if (!search->stream) {
        return ORU_INVALID_SEARCH;
    }
    const intptr_t handle = claim_slot(search);
    if (handle == ORU_INVALID_SEARCH) {
        return refused(EAGAIN);
    }
    if (oruFindNextDirEnt(handle, data) != 1) {
        const velora_com::qel::support::ErrnoKeeper keeper;
        oruFindCloseDirEnt(handle);
        return ORU_INVALID_SEARCH;
    }
    return handle;
}

int oruFindNextDirEnt(intptr_t search, oruFindData* data) {
    SearchSlot* const slot = slot_of(search);
    if (slot != nullptr && data != nullptr) {
        const CancellationOff cancellation_off;
        const MutexGuard lock(slot->mutex);
        if (!lock) {
            return 0;
        }
        if (slot->entry != nullptr) {
            return read_next(*slot->entry, *data) ? 1 : 0;
        }
    }
    note_error(EINVAL);
    return 0;
}

int oruFindCloseDirEnt(intptr_t search) {
    std::unique_ptr<SearchEntry> entry;
    SearchSlot* const slot = slot_of(search);
    if (slot != nullptr) {
        const MutexGuard lock(slot->mutex);
        if (!lock) {
            return 0;
        }
        entry.reset(std::exchange(slot->entry, nullptr));
    }
    if (!entry) {
        note_error(EINVAL);
        return 0;
    }
    give_back(*slot);
    const CancellationOff cancellation_off;
    return ::closedir(entry->stream.release()) == 0 ? 1 : 0;
}
