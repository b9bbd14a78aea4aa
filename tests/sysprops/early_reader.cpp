// A library that reads the constants while it is being initialised, before its users' code runs.
#include "early_reader.h"

#include "vlrcomn/policy_keys.h"
#include "vlrcomn/system_properties.h"

namespace {

using namespace velora_com::qel;

EarlyCopies copy_constants() {
    EarlyCopies copies;
    copies.first_key = sysprops::SystemInfo_Key;
    copies.last_key = sysprops::FileSystemTotalSpace;
    copies.release_file = sysprops::redhat_release_file;
    copies.policy_section = section_general;
    copies.last_policy_key = props_loggedon_user;
    copies.task_section = TaskSection;
    copies.record_field = sysprops::CPUInformation().wstrCPUType;
    orumcomn_set_local_ip_addr(L"192.0.2.1");
    return copies;
}

const EarlyCopies copies = copy_constants();

}  // namespace

const EarlyCopies& early_copies() {
    return copies;
}
