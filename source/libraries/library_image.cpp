#include <dlfcn.h>

#include <cstring>

#include "libraries/library_message.h"
#include "support/owners.h"
#include "vlrcomn/dynamic_library.h"

namespace velora_com::qel::libraries {

void append_loader_words(char* message) {
    const char* const words = ::dlerror();  // NOLINT(concurrency-mt-unsafe): kept per thread
    if (words == nullptr || message == nullptr) {
        return;
    }
    const char* const end = std::find(message, message + ORU_LIBRARY_MESSAGE_SIZE - 1, '\0');
    const auto used = static_cast<size_t>(end - message);
    const size_t room = ORU_LIBRARY_MESSAGE_SIZE - 1 - used;
    const size_t length = std::min({std::strlen(words), max_loader_words, room});
    std::memcpy(message + used, words, length);
    message[used + length] = '\0';
}

}  // namespace velora_com::qel::libraries

using velora_com::qel::support::CancellationOff;

int load_shared_object_image(void** module, const char* path, char* message) {
    if (module == nullptr || path == nullptr) {
        return 0;
    }
    const CancellationOff cancellation_off;  // constructors run in there
    void* const image = ::dlopen(path, RTLD_LAZY);
    if (image == nullptr) {
        velora_com::qel::libraries::append_loader_words(message);
        return 0;
    }
    *module = image;
    return 1;
}

int unload_shared_object_image(void* module) {
    const CancellationOff cancellation_off;
    return module != nullptr && ::dlclose(module) == 0 ? 1 : 0;
}
