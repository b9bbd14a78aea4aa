#include <cstring>
#include <memory>

#include "agent/plugin_version_text.h"
#include "support/boundary.h"
#include "support/owners.h"
#include "vlrcomn/agent_identity.h"
#include "vlrcomn/dynamic_library.h"

namespace velora_com::qel::agent {

namespace {

using Module = std::unique_ptr<void, support::Releaser<&oruFreeLibrary>>;

int version_stamp(const char* path, VersionForm form, char* buffer, uint32_t size) {
    if (buffer == nullptr) {
        return 0;
    }
    std::memset(buffer, 0, size);
    const Module module(path == nullptr ? nullptr : oruLoadLibrary(path, nullptr));
    if (!module) {
        return 0;
    }
    const auto get_version = reinterpret_cast<orumcomn_PluginGetVersion>(
        oruGetProcAddress(module.get(), "SVPLUGIN_GetVersion", nullptr));
    if (get_version == nullptr) {
        return 0;
    }
    Version version{};
    // A plug-in that throws is taken for one that fails.
    const int failure = support::or_failure(1, [&] {
        return get_version(&version.major, &version.minor, &version.third, &version.fourth);
    });
    if (failure != 0) {
        return 0;
    }
    write_version(version, form, buffer, size);
    return 1;
}

}  // namespace

}  // namespace velora_com::qel::agent

using velora_com::qel::agent::version_stamp;
using velora_com::qel::agent::VersionForm;

int orumcomn_GetFileResourceVersionStamp(const char* path, char* buffer, uint32_t size) {
    return version_stamp(path, VersionForm::binary, buffer, size);
}

int orumcomn_GetFileResourceStringVersionStamp(const char* path, char* buffer, uint32_t size) {
    return version_stamp(path, VersionForm::dotted, buffer, size);
}
