// A whole machine for the scripted platform.
#pragma once

#include "support/scripted_platform.h"

// A PowerBook with two file systems and without a network.
inline void script_machine() {
    auto& script = velora_com::qel::platform::script();
    script = {};
    script.processor_count = 2;
    script.processor_facts = {1333000000, 2, {}};
    script.hardware_model = "PowerBook5,6";
    script.memory_facts = {1000000, {{57, 10000}}};
    script.mounted_file_systems = {{"/", 4096, 25600, 14669, true},
                                   {"/a\"b c", 4096, 256, 0, true}};
    script.system_version_file = "/etc/passwd";  // any file: what it says is scripted
    script.property_list = {{{"ProductVersion", "10.4.11"}, {"ProductBuildVersion", "8S165"}}};
    script.nis_domain = "nis.example";
}
