#include <gtest/gtest.h>

#include "vlrcomn/policy_keys.h"

namespace {

using namespace velora_com::qel;

// Read before main, by an initialiser that may run before those of the library's own files.
struct Early {
    std::wstring first = section_general;
    std::wstring wide_twin = props_section_general;
    std::string narrow_twin = GeneralSection;
    std::string with_space = DependenciesSection;
    std::wstring last = props_loggedon_user;
} early;

TEST(PolicyKeys, AreCompleteForStaticInitialisers) {
    EXPECT_EQ(early.first, L"General");
    EXPECT_EQ(early.wide_twin, L"General");
    EXPECT_EQ(early.narrow_twin, "General");
    EXPECT_EQ(early.with_space, "Task Dependencies");
    EXPECT_EQ(early.last, L"UserName");
}

// Names that do not follow from their texts, and those that share one.
TEST(PolicyKeys, KeepTheirUnobviousTexts) {
    EXPECT_EQ(key_sl_protocol, L"uiSiteType");
    EXPECT_EQ(key_events_EnableEventTrigger, L"AgPlcyEnableEventTrigger");
    EXPECT_EQ(TaskNameKey, "DisplayName");
    EXPECT_EQ(StopTimeSpecified_Key, "StopDateValid");
    EXPECT_EQ(DaysOfWeek_Key, "MaskDaysOfWeek");
    EXPECT_EQ(key_network_asci_interval, props_key_asci);
    EXPECT_EQ(key_relay_service_enabled, key_ls_bEnableRelayService);
}

}  // namespace
