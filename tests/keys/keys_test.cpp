#include <gtest/gtest.h>

#include "vlrcomn/policy_keys.h"

using namespace velora_com::qel;

// Read before main, by an initialiser that may run before those of the library's own files.
static const std::wstring first = section_general, last = props_loggedon_user;
static const std::string with_space = DependenciesSection;

TEST(PolicyKeys, AreCompleteForStaticInitialisers) {
    EXPECT_EQ(first, L"General");
    EXPECT_EQ(with_space, "Task Dependencies");
    EXPECT_EQ(last, L"UserName");
}

TEST(PolicyKeys, KeepTheirUnobviousTexts) {
    EXPECT_EQ(key_sl_protocol, L"uiSiteType");
    EXPECT_EQ(TaskNameKey, "DisplayName");
    EXPECT_EQ(StopTimeSpecified_Key, "StopDateValid");
    EXPECT_EQ(DaysOfWeek_Key, "MaskDaysOfWeek");
}
