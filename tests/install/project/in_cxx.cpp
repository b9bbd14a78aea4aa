#include <vlrcomn/policy_keys.h>
#include <vlrcomn/system_properties.h>

// A static initialiser of a program may already read the constants.
static const std::wstring read_early = velora_com::qel::section_general;

int main() {
    return read_early == L"General" && orumcomn_get_os_type() == L"Mac OS X" ? 0 : 1;
}
