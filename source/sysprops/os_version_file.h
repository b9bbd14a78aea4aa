// The system's version property list.
#pragma once

#include <optional>
#include <string>

namespace velora_com::qel::sysprops {

struct VersionFacts {
    std::string version;  // for example "10.4.11"
    std::string build;    // for example "8S165"; the version when the file names no build
};

// Reads the version file of the system. Nothing when there is none, when it is empty, unreadable or
// unreasonably large, or no property list that names a version. Holds one copy of the file at most.
std::optional<VersionFacts> read_version_file();

}  // namespace velora_com::qel::sysprops
