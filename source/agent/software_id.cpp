#include <cstring>
#include <cwchar>
#include <string_view>

#include "vlrcomn/agent_identity.h"

namespace {

// The product, its version 4.8.0 with a closing zero, and the platform.
constexpr std::string_view software_id =
    "KSVAGENT"
    "4800"
    "MACX";
constexpr wchar_t wide_software_id[] =
    L"KSVAGENT"
    L"4800"
    L"MACX";

}  // namespace

void orumcomn_get_agent_softwareid(char* buffer, uint32_t size) {
    if (buffer == nullptr || size <= software_id.size()) {
        return;
    }
    std::memcpy(buffer, software_id.data(), software_id.size());
    std::memset(buffer + software_id.size(), 0, size - 1 - software_id.size());
}

void orumcomn_get_agent_softwareid_W(wchar_t* buffer, uint32_t size) {
    if (buffer != nullptr && size > software_id.size()) {
        std::wcscpy(buffer, wide_software_id);
    }
}
