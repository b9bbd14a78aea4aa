// hello: prints the name and the processor of this machine.

#include <vlrcomn/system_properties.h>
#include <vlrcomn/time_text.h>

#include <cstdio>
#include <string>

int main() {
    const std::wstring text = orumcomn_get_computer_name() + L": " + orumcomn_get_cpu_type();
    std::puts(velora_com::qel::orumcomn_wide_to_ansi(text).c_str());
}
