#include "support/test.h"
#include "vlrcomn/policy_keys.h"

// Read before main, by an initialiser that may run before those of the library's own files.
static const std::wstring early = velora_com::qel::section_general;

TEST(PolicyKeys, AreCompleteForStaticInitialisers) {
    EXPECT_EQ(early, L"General");
}
