#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "files/wildcard_model.h"
#include "vlrcomn/file.h"

namespace {

TEST(Wildcard, FollowsItsRules) {
    const struct {
        const char* pattern;
        const char* name;
        int result;
    } cases[] = {
        {nullptr, "a", 0},        {"", "anything", 0},  {"a", nullptr, 1}, {"*", nullptr, 0},
        {"*.txt", "a.txt", 0},    {"abc", "abcdef", 0}, {"a?c", "ab", 1},  {"a*x", "a", 0},
        {"*.txt", "a.text", 1},   {"ABC", "abc", 1},    {"?", "", 1},      {"*b*c", "bab", 0},
        {"\xff?", "\xff\x80", 0}, {"a**b", "axxb", 0},  {"*?", "ab", 0},   {"a*b*c", "abab", 0},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(testing::Message() << (each.pattern ? each.pattern : "null") << " on "
                                        << (each.name ? each.name : "null"));
        EXPECT_EQ(oruWildCardMatch(each.pattern, each.name), each.result);
    }
}

// Every text of at most `length` letters of `alphabet`.
std::vector<std::string> all_texts(const std::string& alphabet, size_t length) {
    std::vector<std::string> texts{""};
    for (size_t from = 0; length > 0; --length) {
        const size_t to = texts.size();
        for (; from < to; ++from) {
            for (const char letter : alphabet) {
                texts.push_back(texts[from] + letter);
            }
        }
    }
    return texts;
}

TEST(Wildcard, EqualsTheModelOnEveryShortText) {
    const auto names = all_texts("ab", 6);
    size_t matches = 0;
    for (const std::string& pattern : all_texts("ab?*", 6)) {
        for (const std::string& name : names) {
            const bool expected = wildcard_model(pattern.c_str(), name.c_str());
            ASSERT_EQ(oruWildCardMatch(pattern.c_str(), name.c_str()), expected ? 0 : 1)
                << pattern << " on " << name;
            matches += expected;
        }
    }
    EXPECT_GT(matches, names.size());
}

// Trying every way through this would take longer than the test may run.
TEST(Wildcard, ManyStarsAndLongTextsCostLittle) {
    std::string pattern;
    for (int i = 0; i < 100; ++i) {
        pattern += "*a";
    }
    EXPECT_EQ(oruWildCardMatch((pattern + "*b").c_str(), (std::string(260, 'a') + 'c').c_str()), 1);
    const std::string long_name = std::string(1 << 20, 'a') + 'c';
    EXPECT_EQ(oruWildCardMatch((pattern + "b").c_str(), long_name.c_str()), 1);
    EXPECT_EQ(oruWildCardMatch(long_name.c_str(), long_name.c_str()), 0);
}

}  // namespace
