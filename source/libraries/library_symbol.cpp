#include <dlfcn.h>

#include <cstring>

#include "libraries/library_message.h"
#include "vlrcomn/dynamic_library.h"

using namespace velora_com::qel::libraries;

namespace {

SharedMessage<char> symbol_message;

// Why the look-up of a symbol gave null: nothing for a symbol whose address is null. The look-up is done
// again between two readings of the loader's state, which may hold an older failure.
void explain_missing_symbol(void* module, const char* name) {
    ::dlerror();  // NOLINT(concurrency-mt-unsafe): kept per thread
    if (::dlsym(module, name) == nullptr) {
        LocalMessage words = "";
        append_loader_words(words);
        symbol_message.set(words, std::strlen(words));
    }
}

}  // namespace

void* oruGetProcAddress(void* module, const char* name, const char** message) {
    symbol_message.clear();
    if (message != nullptr) {
        *message = symbol_message.text();
    }
    // Some loaders take a null module for the whole program.
    if (module == nullptr || name == nullptr) {
        return nullptr;
    }
    void* const address = ::dlsym(module, name);
    if (address == nullptr) {
        explain_missing_symbol(module, name);
    }
    return address;
}

int oruLoadString(void* module, uint32_t id, void* buffer, int size) {
    void* const address = module != nullptr ? ::dlsym(module, "loadString") : nullptr;
    if (address == nullptr) {
        return 0;
    }
    return reinterpret_cast<oruLoadStringFunction>(address)(module, id, buffer, size);
}

uint32_t oruGetModuleFileName(void*, char*, uint32_t) {
    return 0;
}
