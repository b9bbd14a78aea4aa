#include <sys/utsname.h>

#include <cstring>

#include "vlrcomn/system.h"

namespace {

// Copies a constant with its terminator if it fits; returns its length, or the size that it needs.
template <uint32_t needed>
uint32_t hand_out(const char (&text)[needed], char* destination, uint32_t size) {
    if (destination == nullptr || size < needed) {
        return needed;
    }
    std::memcpy(destination, text, needed);
    return needed - 1;
}

}  // namespace

uint32_t oruGetWindowsDirectory(char* destination, uint32_t size) {
    return hand_out("/Library", destination, size);
}

uint32_t oruGetSystemDirectory(char* destination, uint32_t size) {
    return hand_out("/usr", destination, size);
}

int oruGetComputerName(char* destination, uint32_t* size) {
    utsname system = {};
    if (destination == nullptr || size == nullptr || uname(&system) < 0) {
        return 0;
    }
    const uint32_t length = static_cast<uint32_t>(std::strlen(system.nodename));
    if (*size < length + 1) {
        return 0;
    }
    std::memcpy(destination, system.nodename, length + 1);
    *size = length;
    return 1;
}
