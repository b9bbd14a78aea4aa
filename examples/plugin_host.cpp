// plugin_host PLUG-IN: looks at a plug-in's version, then loads it and calls it.
//
// Shows: the version stamp, loading, finding a function, unloading, and the message of each failure.
#include <vlrcomn/agent_identity.h>
#include <vlrcomn/dynamic_library.h>

#include <cstdio>
#include <cstring>

using Enforce = int (*)(const char* policy);

static int fail(const char* step, const char* message) {
    std::fprintf(stderr, "%s: %s\n", step, message);
    return 1;
}

int main(int count, char** arguments) {
    if (count != 2) {
        return fail("usage", "plugin_host PLUG-IN");
    }
    // A path with a slash: a bare name would be searched for in the system's folders.
    const char* path = arguments[1];

    // Sixteen digits, four for each part of the version, and the terminator. The plug-in is loaded and unloaded
    // on the way, its entry point called, so that only a trusted file may be asked.
    char version[17];
    if (orumcomn_GetFileResourceVersionStamp(path, version, sizeof version) != 1) {
        return fail(path, "no plug-in");
    }
    std::printf("host: version %s\n", version);
    if (std::strncmp(version, "0001", 4) != 0) {
        return fail(path, "not of version 1");
    }

    // Each function has its message in a static text of its own, to be read before the next call.
    const char* message = nullptr;
    void* module = oruLoadLibrary(path, &message);
    if (module == nullptr) {
        return fail("load", message);
    }
    int result = 1;
    if (void* address = oruGetProcAddress(module, "enforce", &message)) {
        result = reinterpret_cast<Enforce>(address)("update.policy");
    } else {
        fail("enforce", *message != '\0' ? message : "not a function");
    }
    // No address out of the plug-in may be used after this.
    if (oruFreeLibrary(module) != 1) {
        return fail("unload", path);
    }
    return result;
}
