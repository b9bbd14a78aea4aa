// A library that reads the constants while it is being initialised, before its users' code runs.
#include "vlrcomn/policy_keys.h"
#include "vlrcomn/system_properties.h"

using namespace velora_com::qel;

extern const std::wstring early_copies;
const std::wstring early_copies = [] {
    orumcomn_set_local_ip_addr(L"192.0.2.1");
    return sysprops::SystemInfo_Key + L' ' + sysprops::FileSystemTotalSpace + L' ' +
           sysprops::sysprops_ansi_to_wide(sysprops::redhat_release_file) + L' ' + section_general +
           L' ' + sysprops::sysprops_ansi_to_wide(TaskSection) + L' ' + props_loggedon_user + L' ' +
           sysprops::CPUInformation().wstrCPUType;
}();
