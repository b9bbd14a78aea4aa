#include "vlrcomn/system_properties.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel::sysprops {

// NOLINTBEGIN(performance-unnecessary-value-param): the interface takes copies
std::string sysprops_wide_to_ansi(std::wstring text) {
    return orumcomn_wide_to_ansi(text);
}

std::wstring sysprops_ansi_to_wide(std::string text) {
    return orumcomn_ansi_to_wide(text);
}
// NOLINTEND(performance-unnecessary-value-param)

}  // namespace velora_com::qel::sysprops
