#include "agent/plugin_version_text.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstring>

namespace velora_com::qel::agent {

void write_version(const Version& version, VersionForm form, char* buffer, uint32_t size) {
    char text[100];
    const auto joined = [](uint16_t high, uint16_t low) { return uint32_t{high} << 16 | low; };
    const int length = form == VersionForm::binary
                           ? std::snprintf(text, sizeof text, "%08" PRIx32 "%08" PRIx32,
                                           joined(version.major, version.minor),
                                           joined(version.third, version.fourth))
                           : std::snprintf(text, sizeof text, "%d.%d.%d.%d", version.major,
                                           version.minor, version.third, version.fourth);
    std::memcpy(buffer, text, std::min<size_t>(static_cast<size_t>(length) + 1, size));
}

}  // namespace velora_com::qel::agent
