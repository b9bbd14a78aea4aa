// For hosts without Expat: no document can be read as a property list.
#include "platform/platform.h"

namespace velora_com::qel::platform {

std::optional<std::vector<std::optional<std::string>>> property_list_strings(
    std::string_view, const std::vector<std::string_view>&) {
    return std::nullopt;
}

}  // namespace velora_com::qel::platform
