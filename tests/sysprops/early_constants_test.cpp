// The constants are complete before any other code, static initialisers included.
#include <gtest/gtest.h>

#include "early_reader.h"
#include "vlrcomn/system_properties.h"

namespace {

TEST(EarlyConstants, AreReadByAnotherLibrarysStaticInitialiser) {
    EXPECT_EQ(early_copies().first_key, L"SystemInfo");
    EXPECT_EQ(early_copies().last_key, L"Total_Disk_Space_in_MB");
    EXPECT_EQ(early_copies().release_file, "/etc/redhat-release");
    EXPECT_EQ(early_copies().policy_section, L"General");
    EXPECT_EQ(early_copies().last_policy_key, L"UserName");
    EXPECT_EQ(early_copies().task_section, "Task");
    EXPECT_EQ(early_copies().record_field, L"N/A");
}

TEST(EarlyConstants, AnAddressHandedInThatEarlyIsKept) {
    EXPECT_EQ(velora_com::qel::sysprops::ISysProps::GetLastKnownLocalIP(), L"192.0.2.1");
}

// The same texts for the agent's other parts: spelled out once more, since a slip in the table would
// otherwise show on the server only.
TEST(Vocabulary, IrregularNamesAreKept) {
    namespace keys = velora_com::qel::sysprops;
    EXPECT_EQ(keys::CPUPortable_Key, L"IsPortable");
    EXPECT_EQ(keys::NumFileSystems_Key, L"NumberOfFileSystems");
    EXPECT_EQ(keys::unknown_domain, L"UnKnownDomain");
    EXPECT_EQ(keys::workstation, L"Linux");
    EXPECT_EQ(keys::platform_solaris, L"SLR");
    EXPECT_EQ(keys::os_solaris, L"SunOS Sparc");
    EXPECT_EQ(keys::server_strings, ", Server , Enterprise , AS , ES , WS ");
    EXPECT_EQ(keys::suse_server_strings, ", Server ");
    EXPECT_EQ(keys::os_platform_ini, L"/etc/qel.d/osinfo.ini");
}

}  // namespace
