#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "support/boundary.h"
#include "sysprops/additional_properties.h"
#include "sysprops/os_version_file.h"
#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

// The parts of `text` between dots. Dots in a row count as one, and dots at either end as none.
std::vector<std::string> dotted_parts(std::string_view text) {
    std::vector<std::string> parts;
    size_t start = text.find_first_not_of('.');
    while (start != std::string_view::npos) {
        const size_t end = std::min(text.find('.', start), text.size());
        parts.emplace_back(text.substr(start, end - start));
        start = text.find_first_not_of('.', end);
    }
    return parts;
}

// "1" for 64 bits, "0" for 32 bits, "-1" when it cannot be told. On PowerPC the machine name says
// nothing of the word size, so that the system's hardware list has to.
const wchar_t* bit_mode() {
    utsname host;
    const std::string_view machine = uname(&host) == 0 ? host.machine : "";
    if (machine.find("_64") != std::string_view::npos) {
        return L"1";
    }
    if (machine.find("86") != std::string_view::npos) {
        return L"0";
    }
    const auto output = platform::run_command("sysctl hw | grep 64bit | awk '{ print $2 }'", 4);
    if (!output) {
        return L"-1";
    }
    return std::strtol(output->c_str(), nullptr, 10) != 0 ? L"1" : L"0";
}

}  // namespace

bool ISysProps::GetOSInformation(OSInformation& info) {
    return support::or_failure(false, [&] {
        info.wstrPlatformID = platform_mac;
        info.wstrOSType = os_mac;
        info.wstrOSOEMId = os_mac_oemid;

        const std::optional<VersionFacts> facts = read_version_file();
        if (!facts) {
            return false;
        }
        std::vector<std::string> parts = dotted_parts(facts->version);
        // A version of fewer than two numbers has empty ones in their place.
        parts.resize(std::max<size_t>(parts.size(), 2));
        std::string version = parts[0] + "." + parts[1];
        if (parts.size() > 2) {
            version += "." + parts[2];
            info.wstrOSCsdVersion = sysprops_ansi_to_wide(parts[2]);
        }
        info.wstrOSVersion = sysprops_ansi_to_wide(version);
        info.wstrOSBuildNum = sysprops_ansi_to_wide(facts->build);
        const bool server = access(platform::server_version_file(), F_OK) == 0;
        info.wstrOSPlatform = server ? p_server : p_workstation;
        info.wstrOSBitMode = bit_mode();
        return true;
    });
}

std::wstring boot_time_words() {
    const std::optional<int64_t> seconds = platform::boot_time();
    return seconds ? std::to_wstring(*seconds) : DefaultProp_Val;
}

}  // namespace velora_com::qel::sysprops
