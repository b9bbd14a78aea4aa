// The session walk on record files, users and directory answers of the test's own, and its text half.
#include <gmock/gmock.h>
#include <grp.h>
#include <pwd.h>
#include <utmpx.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <thread>

#include "support/scripted_platform.h"
#include "support/temporary_folder.h"
#include "vlrcomn/agent_identity.h"
#include "vlrcomn/logged_on_users.h"

// The users of the database, each with the name of the primary group.
static const std::map<std::string, const char*> user_groups = {
    {"Bob", "CORP\\Domain Users"},      {"plain", "staff"},
    {"nobackslash", "domain users"},    {"odd", "\\domain users"},
    {"erin", "Corp\\EU\\Domain Users"},
};

extern "C" int __wrap_getpwnam_r(const char* name, passwd* record, char*, size_t size,
                                 passwd** found) {
    // A number behind the name makes another user of the same group.
    std::string base = name;
    base.erase(base.find_last_not_of("0123456789") + 1);
    const auto user = user_groups.find(base);
    *found = user == user_groups.end() || size != 16384 ? nullptr : record;
    record->pw_gid = static_cast<gid_t>(std::distance(user_groups.begin(), user));
    return 0;
}

extern "C" int __wrap_getgrgid_r(gid_t id, group* record, char* memory, size_t size,
                                 group** found) {
    const char* name = std::next(user_groups.begin(), static_cast<int>(id))->second;
    record->gr_name = std::strcpy(memory, name);
    *found = size == 16384 ? record : nullptr;
    return 0;
}

namespace velora_com::qel::session {
namespace {

using platform::script;
using testing::ElementsAre;

class Session : public testing::Test {
protected:
    Session() {
        script() = {};
        utmpxname(records_.c_str());
    }

    // Fields are filled to their ends, without terminator, when the text is long enough.
    void add(short type, const char* id, const std::string& user, const std::string& line) {
        utmpx record{};
        record.ut_type = type;
        std::strncpy(record.ut_id, id, sizeof record.ut_id);
        user.copy(record.ut_user, sizeof record.ut_user);
        line.copy(record.ut_line, sizeof record.ut_line);
        // What follows the line in the record must not be taken for a part of it.
        record.ut_exit.e_termination = 0x4141;
        std::ofstream(records_, std::ios::binary | std::ios::app)
            .write(reinterpret_cast<const char*>(&record), sizeof record);
    }

    const TemporaryFolder folder_;
    const std::string records_ = folder_ / "records";
    std::set<std::wstring> network_ = {L"kept"}, local_;
};

TEST_F(Session, SortsUsersAndWritesEveryRecord) {
    const std::string long_name(sizeof(utmpx::ut_user), 'L');
    const std::string low_name(sizeof(utmpx::ut_user), 'l');
    const std::string long_line(sizeof(utmpx::ut_line), 'l');
    add(BOOT_TIME, "~~", "reboot", "~");
    add(USER_PROCESS, "ts/2", "Bob", "pts/2");
    add(USER_PROCESS, "ts/3", "carol", "pts/3");
    add(USER_PROCESS, "ts/4", "dave", "pts/4");
    add(DEAD_PROCESS, "ts/5", "gone", "pts/5");
    add(USER_PROCESS, "abcd", long_name, long_line);
    const std::string in_directory = "/usr/bin/dscl /Search read /Users/";
    script().run_command = [&](const std::string& command) -> std::optional<std::string> {
        if (command == in_directory + "carol  |  /usr/bin/grep userPrincipalName") {
            return "userPrincipalName: Carol@Corp.Example\n";
        }
        if (command == in_directory + "dave  |  /usr/bin/grep OriginalAuthenticationAuthority") {
            return "x: ;Kerberosv5;;dave@EAST.EXAMPLE;EAST;\n";
        }
        return std::nullopt;
    };
    testing::internal::CaptureStdout();
    CollectLoggedonUsers(network_, local_, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Some changes happen in the logon sessions.\n"
              "2  ~~  reboot  ~ \n"
              "7  ts/2  Bob  pts/2 \n"
              "found group struct corp. \n"
              "Network User logged on corp\\bob \n"
              "7  ts/3  carol  pts/3 \n"
              "Network User logged on corp.example\\carol \n"
              "7  ts/4  dave  pts/4 \n"
              "Network User logged on east.example\\dave \n"
              "8  ts/5  gone  pts/5 \n"
              "7  abcd  " +
                  long_name + "  " + long_line +
                  " \n"
                  "Local User Logged on " +
                  low_name +
                  " \n"
                  "Coming out from the logon session collections.\n");
    EXPECT_THAT(network_,
                ElementsAre(L"corp.example\\carol", L"corp\\bob", L"east.example\\dave", L"kept"));
    EXPECT_THAT(local_, ElementsAre(std::wstring(low_name.begin(), low_name.end())));

    std::wstring network_text, local_text = L"as passed";
    CollectComaSepLoggedonUsers(network_text, local_text, true);
    EXPECT_EQ(network_text, L"corp.example\\carol,corp\\bob,east.example\\dave");
    EXPECT_EQ(local_text, L"as passed");
}

TEST_F(Session, GivesUserNameWithinItsBuffer) {
    char buffer[64] = "untouched";
    EXPECT_EQ(orumcomn_get_user_name(nullptr, 64), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_user_name(buffer, 2), ORU_FAILURE);
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(orumcomn_get_user_name(buffer, 3), ORU_SUCCESS);  // there is no record file yet
    EXPECT_STREQ(buffer, "NA");

    add(USER_PROCESS, "1", "plain", "tty1");
    add(USER_PROCESS, "2", "Bob", "tty2");
    EXPECT_EQ(orumcomn_get_user_name(buffer, sizeof buffer), ORU_SUCCESS);
    EXPECT_STREQ(buffer, "corp\\bob,plain");

    // Held to 128 characters and ended behind a name.
    std::wstring all;
    for (int i = 100; i < 140; ++i) {
        add(USER_PROCESS, "3", "user" + std::to_string(i), "tty3");
    }
    CollectAllLoggedonUsers(all);
    EXPECT_EQ(all.size(), 122U);
    EXPECT_EQ(all.substr(111), L"user112,...");
}

// Two walks on the one cursor would each see a part of the records. The file is long enough for walks
// that begin at once to overlap.
TEST_F(Session, CollectionsOnSeveralThreadsSeeEveryRecord) {
    constexpr int records = 1000;
    for (int i = 0; i < records; ++i) {
        add(USER_PROCESS, "1", "Bob" + std::to_string(i), "tty");
    }
    std::set<std::wstring> seen[3];
    std::atomic<size_t> waiting{std::size(seen)};
    std::vector<std::thread> threads;
    testing::internal::CaptureStdout();
    for (auto& users : seen) {
        threads.emplace_back([&] {
            for (--waiting; waiting != 0;) {
                std::this_thread::yield();
            }
            std::set<std::wstring> local;
            CollectLoggedonUsers(users, local, false);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    testing::internal::GetCapturedStdout();
    for (const auto& users : seen) {
        EXPECT_EQ(users.size(), records);
    }
}

TEST_F(Session, FindsDomains) {
    std::string domain;
    EXPECT_TRUE(FindDomainName("erin", domain));
    EXPECT_EQ(domain, "corp");
    EXPECT_TRUE(FindDomainName("odd", domain));
    EXPECT_EQ(domain, "");
    EXPECT_FALSE(FindDomainName("plain", domain) || FindDomainName("nobackslash", domain));

    constexpr const char upn[] = "userPrincipalName";
    constexpr const char oaa[] = "OriginalAuthenticationAuthority";
    const struct {
        const char* attribute;
        std::string output;
        const char* domain;
    } cases[] = {
        {upn, "a@first b@second.\n", "first b@second"},
        {upn, "no at sign", ""},
        {upn, std::string(1023, '.') + "@late", ""},  // the 1024 bytes end at the "@"
        {oaa, "u@EAST.EXAMPLE\n", ""},
        {"other", "u@corp;", ""},
    };
    for (const auto& c : cases) {
        script().run_command = [&c](const std::string&) { return c.output; };
        const int found = FindDomainNameViaDscl("u", c.attribute, domain);
        EXPECT_EQ(found, domain.empty() ? 0 : 1);
        EXPECT_EQ(domain, c.domain) << c.output;
    }
}

TEST_F(Session, KeepsShellCharactersOutOfCommands) {
    std::string special = "'\"\\;&|<>()$`*?[]#~=%!{} \x7f";
    for (char control = 0; control < 0x20; ++control) {
        special += control;
    }
    std::string domain;
    for (const char character : special) {
        const std::string text = std::string("u") + character + "x";
        FindDomainNameViaDscl(text, "userPrincipalName", domain);
        FindDomainNameViaDscl("u", text, domain);
    }
    EXPECT_THAT(script().asked, testing::IsEmpty());

    FindDomainNameViaDscl("j.doe-1_@+,:/^\xc3\xa9", "a", domain);
    FindDomainNameViaDscl(std::string(300, 'u'), "a", domain);
    const std::string prefix = "run_command: /usr/bin/dscl /Search read /Users/";
    EXPECT_THAT(script().asked, ElementsAre(prefix + "j.doe-1_@+,:/^\xc3\xa9  |  /usr/bin/grep a",
                                            prefix + std::string(255 - (prefix.size() - 13), 'u')));
}

TEST(UserText, IsSplitTrimmedAndLowered) {
    std::vector<std::string> pieces = {"kept"};
    split("none", ',', pieces);
    split(",a,,", ',', pieces);
    EXPECT_THAT(pieces, ElementsAre("kept", "", "a", "", ""));
    EXPECT_EQ(trimmer(" .a b;\n") + trimmer("...") + trimmer("\xc3\xa9x\xe9"), "a bx");
    std::string text = "AZaz@[09\xc3\x89";
    toLower(text);
    EXPECT_EQ(text, "azaz@[09\xc3\x89");
    std::wstring domain;
    std::wstring user = L"a\\b\\c";
    parseFullUserName(user, domain, user);  // the result may be the text itself
    EXPECT_EQ(domain + L'|' + user, L"a|b\\c");
}

}  // namespace
}  // namespace velora_com::qel::session
