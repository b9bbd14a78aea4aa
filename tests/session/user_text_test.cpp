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
        {"one kind", L"", L"a,b", L"a,b"},
        {"both kinds", L"d\\a", L"b", L"d\\a,b"},
        {"longest whole", w(100), w(26), w(100) + L"," + w(26)},
        {"exactly 128", w(100), w(27), w(100) + L",..."},
        {"comma at 124", w(124), w(300), w(124) + L",..."},
        {"comma at 125", w(20) + L"," + w(104), w(300), w(20) + L",..."},
        {"comma at 127", w(127), w(1), L",..."},
        {"one long name", w(200), L"", L",..."},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(bounded_list(c.network, c.local), c.expected) << c.what;
    }
}

TEST(UserText, SplitsTrimsAndLowers) {
    using Pieces = std::vector<std::string>;
    const std::pair<const char*, Pieces> splits[] = {{"none", {"kept"}},
                                                     {"", {"kept"}},
                                                     {"a,b", {"kept", "a", "b"}},
                                                     {",", {"kept", "", ""}},
                                                     {",a,,", {"kept", "", "a", "", ""}}};
    for (const auto& [text, expected] : splits) {
        Pieces pieces = {"kept"};
        split(text, ',', pieces);
        EXPECT_EQ(pieces, expected) << text;
    }

    const std::pair<const char*, const char*> trims[] = {{" .a b;\n", "a b"},
                                                         {"x", "x"},
                                                         {"..x", "x"},
                                                         {"x..", "x"},
                                                         {"...", ""},
                                                         {"", ""},
                                                         {"\xc3\xa9"
                                                          "1\xe9",
                                                          "1"}};
    for (const auto& [text, expected] : trims) {
        EXPECT_EQ(trimmer(text), expected) << text;
    }
    EXPECT_EQ(trimmer(nullptr), "");

    std::string text = "AZaz@[09\xc3\x89";
    toLower(text);
    EXPECT_EQ(text, "azaz@[09\xc3\x89");
}

TEST(UserText, ParsesFullNames) {
    const std::wstring cases[][3] = {{L"corp\\bob", L"corp", L"bob"},
                                     {L"bob", L"", L"bob"},
                                     {L"\\bob", L"", L"bob"},
                                     {L"a\\b\\c", L"a", L"b\\c"},
                                     {L"a\\", L"a", L""}};
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
