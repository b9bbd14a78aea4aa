// The shared library in a process that has loaded much else.
#include <dlfcn.h>

#include "support/test.h"

// A loader keeps room for the static thread-local storage of some libraries that come late, not of all.
TEST(LateLoad, NeedsNoSpareRoom) {
    const TemporaryFolder folder;
    for (int copy = 0; copy < 200; ++copy) {
        const std::string path = folder / std::to_string(copy);
        std::filesystem::copy_file(STATIC_ROOM, path);
        if (dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL) == nullptr) {
            EXPECT_NE(dlopen(LIBRARY, RTLD_NOW | RTLD_LOCAL), nullptr) << dlerror();
            return;
        }
    }
    ADD_FAILURE() << "the room lasted";
}
