#include "sysprops/os_version_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

#include "platform/platform.h"
#include "support/open_file.h"
#include "support/read_bytes.h"

namespace velora_com::qel::sysprops {

namespace {

// A version file has some hundred bytes. What is larger than this is none and is not worth the memory.
constexpr off_t largest_version_file = off_t{64} << 20;

// The bytes of a file, at most as many as it has at the start. What another process cuts off
// meanwhile is missing from the result. Empty when there is nothing to read.
std::string read_file(const char* path) {
    struct stat status;
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0 ||
        status.st_size > largest_version_file) {
        return {};
    }
    const support::CancellationOff no_cancellation;
    const support::FileDescriptor file = support::open_file(path, O_RDONLY | O_NOCTTY);
    if (!file) {
        return {};
    }
    const auto size = static_cast<size_t>(status.st_size);
    std::string bytes;
    bytes.reserve(size);
    support::read_bytes(file.get(), bytes, size);
    return bytes;
}

}  // namespace

std::optional<VersionFacts> read_version_file() {
    const std::string document = read_file(platform::system_version_file());
    if (document.empty() || document.front() == '\0') {
        return std::nullopt;
    }
    auto strings =
        platform::property_list_strings(document, {"ProductVersion", "ProductBuildVersion"});
    if (!strings || !strings->at(0)) {
        return std::nullopt;
    }
    VersionFacts facts{std::move(*strings->at(0)), {}};
    facts.build = strings->at(1).value_or(facts.version);
    return facts;
}

}  // namespace velora_com::qel::sysprops
