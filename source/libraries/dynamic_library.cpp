#include "vlrcomn/dynamic_library.h"

#include <cstring>
#include <new>
#include <string>

#include "libraries/library_list.h"
#include "libraries/library_message.h"
#include "support/boundary.h"
#include "sync/error_word.h"
#include "vlrcomn/time_text.h"

using namespace velora_com::qel::libraries;
using namespace velora_com::qel::sync;
namespace qel = velora_com::qel;
using qel::support::CancellationOff;

namespace {

constexpr const char out_of_memory[] = "out of memory";

SharedMessage<char> load_message;
SharedMessage<wchar_t> wide_load_message;

void set_message(LocalMessage& message, const char* text) {
    std::memcpy(message, text, std::strlen(text) + 1);
}

// Loads a library that has no entry yet into `slot`.
void* load_into(LibraryEntry** slot, const char* path, LocalMessage& message)
    VLRCOMN_REQUIRES(MutexDynamicLibraryList) {
    std::unique_ptr<LibraryEntry> entry(new (std::nothrow) LibraryEntry{});
    if (!entry) {
        note_error(ENOMEM);
        set_message(message, out_of_memory);
        return nullptr;
    }
    if (load_shared_object_image(&entry->module, path, message) != 1) {
        abandon(std::move(entry));
        return nullptr;
    }
    void* const module = entry->module;
    entry->entry_point =
        reinterpret_cast<oruDllMain>(oruGetProcAddress(module, "DllMain", nullptr));
    if (entry->entry_point != nullptr &&
        entry->entry_point(module, ORU_PROCESS_ATTACH, nullptr) != 1) {
        set_message(message, "dllmain returned false");
        return nullptr;  // it stays loaded: its code may already run in a thread
    }
    std::memcpy(entry->name, path, std::min(std::strlen(path), sizeof entry->name));
    publish_library(slot, std::move(entry));
    return module;
}

void* load(const char* path, LocalMessage& message) {
    const CancellationOff cancellation_off;
    const LibraryListHold list;
    if (!list) {
        note_error(EBUSY);
        set_message(message, "locked");
        return nullptr;
    }
    LibraryEntry** slot = nullptr;
    if (void* const module = reference_library(path, slot)) {
        return module;
    }
    if (slot == nullptr) {
        note_error(ENOMEM);
        set_message(message, "library list full");
        return nullptr;
    }
    return load_into(slot, path, message);
}

// oruLoadLibrary() whose message is also left in the caller's own buffer. The text is written after the load
// also when there is nothing to say: an entry point may have tried to load meanwhile.
void* load_and_tell(const char* path, LocalMessage& message) {
    void* const module = load(path, message);
    load_message.set(message, std::strlen(message));
    return module;
}

bool has_narrow_form(wchar_t character) {
    const wchar_t text[] = {character, L'\0'};
    char narrow[8];
    const uint32_t size = sizeof narrow;
    return orumcomn_unicode_to_utf8(text, narrow, &size) == ORU_SUCCESS && narrow[0] != '\0';
}

// Why a wide path cannot be loaded by what it was converted to; 0 when it can. The conversion ends at the first
// character that UTF-8 cannot hold, and the beginning of a path may name another library.
int conversion_error(const wchar_t* path, const std::string& narrow) {
    const std::wstring back = qel::orumcomn_ansi_to_wide(narrow);
    if (back == path) {
        return 0;
    }
    return back.empty() && has_narrow_form(*path) ? ENOMEM : EINVAL;
}

// The same by a wide path.
void* load_wide(const wchar_t* path, LocalMessage& message) {
    if (path == nullptr) {
        return load_and_tell(nullptr, message);
    }
    const std::string narrow =
        qel::support::or_failure(std::string(), [=] { return qel::orumcomn_wide_to_ansi(path); });
    if (const int error = conversion_error(path, narrow)) {
        note_error(error);
        set_message(message, error == ENOMEM ? out_of_memory : "path has no form in UTF-8");
        return nullptr;
    }
    return load_and_tell(narrow.c_str(), message);
}

}  // namespace

void* oruLoadLibrary(const char* path, const char** message) {
    load_message.clear();
    if (message != nullptr) {
        *message = load_message.text();
    }
    LocalMessage local = "";
    return load_and_tell(path, local);
}

void* oruLoadLibraryW(const wchar_t* path, const wchar_t** message) {
    wide_load_message.clear();
    if (message != nullptr) {
        *message = wide_load_message.text();
    }
    load_message.clear();
    LocalMessage local = "";
    void* const module = load_wide(path, local);
    if (message == nullptr) {
        local[0] = '\0';  // no message is wanted
    }
    qel::support::contained([&] {
        const std::wstring wide = qel::orumcomn_ansi_to_wide(local);
        wide_load_message.set(wide.data(), wide.size());
    });
    return module;
}

int oruFreeLibrary(void* module) {
    if (!is_listed(module)) {
        note_error(EINVAL);
        return 0;
    }
    const CancellationOff cancellation_off;
    const LibraryListHold list;
    if (!list) {
        note_error(EBUSY);
        return 0;
    }
    bool last = false;
    LibraryEntry** const slot = release_reference(module, last);
    if (slot == nullptr) {  // freed by another thread meanwhile
        note_error(EINVAL);
        return 0;
    }
    if (!last) {
        return 1;
    }
    // The entry stays listed, so that its entry point can still use it.
    if ((*slot)->entry_point != nullptr) {
        (*slot)->entry_point(module, ORU_PROCESS_DETACH, nullptr);
    }
    const int released = unload_shared_object_image(module);
    withdraw_library(slot);
    return released;
}
