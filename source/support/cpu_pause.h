// A word to the processor in the turns of a loop that looks at memory until it changes.
#pragma once

namespace velora_com::qel::support {

// Leaves the shared parts of the processor to others for so many moments, and spares it a wrong guess at the
// loop's end. Nothing where the processor has no such hint; the home machine's run one thread each.
inline void cpu_pause(int moments) noexcept {
    for (; moments > 0; --moments) {
#if defined(__POWERPC__)
        // First of all: Mac headers without a branch for it are read as those of i386.
#elif defined(__x86_64__) || defined(__i386__)
        __builtin_ia32_pause();
#elif defined(__aarch64__)
        __asm__ __volatile__("yield");
#endif
    }
}

}  // namespace velora_com::qel::support
