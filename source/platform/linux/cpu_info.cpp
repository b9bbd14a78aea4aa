#include "platform/linux/cpu_info.h"

#include <algorithm>
#include <charconv>

namespace velora_com::qel::platform {

namespace {

constexpr int32_t powerpc = 2;
constexpr int32_t intel = 10;
constexpr int32_t intel_type = 0x69787878;  // the four characters "ixxx"

// Beginnings of the kernel's names for PowerPC models; of two that fit, the first counts.
struct Model {
    std::string_view name;
    int32_t type;
};
constexpr Model models[] = {
    {"601", 257},  {"603ev", 263}, {"603e", 262}, {"603", 259}, {"604ev", 266}, {"604e", 265},
    {"604r", 265}, {"604", 260},   {"740/", 264}, {"750", 264}, {"755", 264},   {"745/755", 264},
    {"7400", 268}, {"7410", 268},  {"G4", 268},   {"744", 272}, {"745", 272},
};

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool begins_with(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

std::optional<int32_t> powerpc_type(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(models), std::end(models),
                     [&](const Model& model) { return begins_with(name, model.name); });
    return found == std::end(models) ? std::nullopt : std::optional(found->type);
}

// "1499.999000MHz" or "2445.422": decimal megahertz, counted in hertz without rounding.
std::optional<uint64_t> clock_hz(std::string_view text) {
    const char* const end = text.data() + text.size();
    uint32_t megahertz = 0;
    auto [rest, error] = std::from_chars(text.data(), end, megahertz);
    if (error != std::errc()) {
        return std::nullopt;
    }
    uint64_t hertz = uint64_t{megahertz} * 1'000'000;
    if (rest != end && *rest == '.') {
        ++rest;
        for (uint32_t place = 100'000; place > 0 && rest != end && *rest >= '0' && *rest <= '9';
             place /= 10, ++rest) {
            hertz += static_cast<uint64_t>(*rest - '0') * place;
        }
    }
    return hertz;
}

}  // namespace

ProcessorFacts parse_cpu_info(std::string_view text) {
    ProcessorFacts info;
    bool has_vendor = false;
    bool has_numbered_family = false;
    bool has_version_register = false;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const size_t colon = line.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        const std::string_view name = trimmed(line.substr(0, colon));
        const std::string_view value = trimmed(line.substr(colon + 1));
        if (name == "cpu MHz" || name == "clock") {
            info.clock_hz = std::max(info.clock_hz, clock_hz(value));
        } else if (name == "vendor_id") {
            has_vendor = true;
        } else if (name == "cpu family") {
            has_numbered_family =
                !value.empty() && value.find_first_not_of("0123456789") == std::string_view::npos;
        } else if (name == "cpu" && !info.type) {
            info.type = powerpc_type(value);
        } else if (name == "revision") {
            has_version_register |= value.find("(pvr ") != std::string_view::npos;
        }
    }
    // Other architectures share single names of these, none of them a whole group.
    if (has_vendor && has_numbered_family) {
        info.architecture = intel;
        info.type = intel_type;
    } else if (info.type || has_version_register) {
        info.architecture = powerpc;
    }
    return info;
}

}  // namespace velora_com::qel::platform
