// The text half: joining, bounding, splitting, trimming.
#include <gtest/gtest.h>

#include "session/user_list.h"
#include "vlrcomn/logged_on_users.h"

namespace velora_com::qel::session {
namespace {

TEST(UserList, HoldsItsBoundAndEndsBeforeAName) {
    const auto w = [](size_t length) { return std::wstring(length, L'n'); };
    const struct {
        const char* what;
        std::wstring network;
        std::wstring local;
        std::wstring expected;
    } cases[] = {
        {"nobody", L"", L"", L""},
        {"both kinds", L"d\\a", L"b", L"d\\a,b"},
        {"longest whole", w(100), w(26), w(100) + L"," + w(26)},
        {"exactly 128", w(100), w(27), w(100) + L",..."},
        {"comma at 125", w(20) + L"," + w(104), w(300), w(20) + L",..."},
        {"comma at 127", w(127), w(1), L",..."},
        {"one long name", w(200), L"", L",..."},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(bounded_list(c.network, c.local), c.expected) << c.what;
    }
}

TEST(UserText, SplitsTrimsAndLowers) {
    std::vector<std::string> pieces = {"kept"};
    split("none", ',', pieces);
    split(",a,,", ',', pieces);
    EXPECT_EQ(pieces, (std::vector<std::string>{"kept", "", "a", "", ""}));

    EXPECT_EQ(trimmer(" .a b;\n"), "a b");
    EXPECT_EQ(trimmer("..."), "");
    EXPECT_EQ(trimmer("\xc3\xa9x\xe9"), "x");
    EXPECT_EQ(trimmer(nullptr), "");

    std::string text = "AZaz@[09\xc3\x89";
    toLower(text);
    EXPECT_EQ(text, "azaz@[09\xc3\x89");
}

TEST(UserText, ParsesFullNames) {
    const std::wstring cases[][3] = {
        {L"bob", L"", L"bob"}, {L"a\\b\\c", L"a", L"b\\c"}, {L"a\\", L"a", L""}};
    for (const auto& [full, expected_domain, expected_user] : cases) {
        std::wstring domain = L"before";
        std::wstring user = full;
        parseFullUserName(user, domain, user);  // the result may be the text itself
        EXPECT_EQ(domain, expected_domain);
        EXPECT_EQ(user, expected_user);
    }
}

}  // namespace
}  // namespace velora_com::qel::session
