// unloading_host PLUG-IN: a program without the library, which unloads the plug-in that brings it as soon as the
// plug-in has waited for its thread.
#include <dlfcn.h>

#include <cstdio>

int main(int count, char** arguments) {
    for (int round = 0; count == 2 && round < 200; ++round) {
        void* const plugin = dlopen(arguments[1], RTLD_NOW);
        void* const symbol = plugin != nullptr ? dlsym(plugin, "use_a_thread") : nullptr;
        const auto use_a_thread = reinterpret_cast<int (*)()>(symbol);
        if (use_a_thread == nullptr || use_a_thread() != 1 || dlclose(plugin) != 0) {
            std::fprintf(stderr, "round %d failed\n", round);
            return 1;
        }
    }
    return count == 2 ? 0 : 2;
}
