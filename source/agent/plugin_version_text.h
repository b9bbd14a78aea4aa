// The texts of a plug-in's version, apart from where the version comes from.
#pragma once

#include <cstdint>

namespace velora_com::qel::agent {

struct Version {
    uint16_t major;
    uint16_t minor;
    uint16_t third;
    uint16_t fourth;
};

enum class VersionForm { binary, dotted };

// Writes the text and its terminator to `buffer`, cut at `size` bytes and then without terminator.
void write_version(const Version& version, VersionForm form, char* buffer, uint32_t size);

}  // namespace velora_com::qel::agent
