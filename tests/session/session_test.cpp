// The session walk on record files, users and directory answers of the test's own.
#include <gmock/gmock.h>
#include <grp.h>
#include <pwd.h>
#include <utmpx.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <map>
#include <thread>

#include "support/scripted_platform.h"
#include "vlrcomn/agent_identity.h"
#include "vlrcomn/logged_on_users.h"

namespace {

// The users of the database, each with the name of the primary group; a null group does not exist.
const std::map<std::string, const char*> user_groups = {
    {"Bob", "CORP\\Domain Users"},   {"plain", "staff"},
    {"nobackslash", "domain users"}, {"lost", nullptr},
    {"odd", "\\domain users"},       {"erin", "Corp\\EU\\Domain Users"},
};

}  // namespace

extern "C" {
int __wrap_getpwnam_r(const char* name, passwd* record, char*, size_t size, passwd** found) {
    // A number behind the name makes another user of the same group.
    std::string base = name;
    base.erase(base.find_last_not_of("0123456789") + 1);
    const auto user = user_groups.find(base);
    *found = user == user_groups.end() || size != 16384 ? nullptr : record;
    record->pw_gid = static_cast<gid_t>(std::distance(user_groups.begin(), user));
    return 0;
}

int __wrap_getgrgid_r(gid_t id, group* record, char* memory, size_t size, group** found) {
    const char* name = std::next(user_groups.begin(), static_cast<int>(id))->second;
    *found = name == nullptr || size != 16384 ? nullptr : record;
    if (name != nullptr) {
        record->gr_name = std::strcpy(memory, name);
    }
    return 0;
}
}

namespace velora_com::qel::session {
namespace {

using platform::script;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Session : public testing::Test {
protected:
    Session() {
        script() = {};
        unsetenv("TZ");
        utmpxname(records_.c_str());
    }
    ~Session() override { std::remove(records_.c_str()); }

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

    const std::string records_ = testing::TempDir() + "records." + std::to_string(getpid());
};

TEST_F(Session, SortsUsersAndWritesEveryRecord) {
    const std::string long_name(sizeof(utmpx::ut_user), 'L');
    const std::string long_line(sizeof(utmpx::ut_line), 'l');
    add(BOOT_TIME, "~~", "reboot", "~");
    add(USER_PROCESS, "ts/0", "Alice", "pts/0");
    add(USER_PROCESS, "ts/2", "Bob", "pts/2");
    add(USER_PROCESS, "ts/3", "carol", "pts/3");
    add(USER_PROCESS, "ts/4", "dave", "pts/4");
    add(DEAD_PROCESS, "ts/5", "gone", "pts/5");
    add(USER_PROCESS, "abcd", long_name, long_line);
    add(USER_PROCESS, "x", "$(id)", "pts/6");
    script().run_command = [](const std::string& command) -> std::optional<std::string> {
        if (command ==
            "/usr/bin/dscl /Search read /Users/carol  |  /usr/bin/grep userPrincipalName") {
            return "userPrincipalName: Carol@Corp.Example\n";
        }
        if (command ==
            "/usr/bin/dscl /Search read /Users/dave  |  /usr/bin/grep "
            "OriginalAuthenticationAuthority") {
            return "x: ;Kerberosv5;;dave@EAST.EXAMPLE;EAST;\n";
        }
        return std::nullopt;
    };
    const std::string low_name(long_name.size(), 'l');
    const std::set<std::wstring> expected_local = {L"alice", L"$(id)",
                                                   std::wstring(long_name.size(), L'l')};

    for (const bool network_only : {false, true}) {
        SCOPED_TRACE(network_only);
        const auto local_line = [&](const std::string& name) {
            return network_only ? "" : "Local User Logged on " + name + " \n";
        };
        std::set<std::wstring> network = {L"kept"};
        std::set<std::wstring> local;
        testing::internal::CaptureStdout();
        CollectLoggedonUsers(network, local, network_only);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "Some changes happen in the logon sessions.\n"
                  "2  ~~  reboot  ~ \n"
                  "7  ts/0  Alice  pts/0 \n" +
                      local_line("alice") +
                      "7  ts/2  Bob  pts/2 \n"
                      "found group struct corp. \n"
                      "Network User logged on corp\\bob \n"
                      "7  ts/3  carol  pts/3 \n"
                      "Network User logged on corp.example\\carol \n"
                      "7  ts/4  dave  pts/4 \n"
                      "Network User logged on east.example\\dave \n"
                      "8  ts/5  gone  pts/5 \n"
                      "7  abcd  " +
                      long_name + "  " + long_line + " \n" + local_line(low_name) +
                      "7  x  $(id)  pts/6 \n" + local_line("$(id)") +
                      "Coming out from the logon session collections.\n");
        EXPECT_THAT(network, ElementsAre(L"corp.example\\carol", L"corp\\bob",
                                         L"east.example\\dave", L"kept"));
        EXPECT_EQ(local, network_only ? std::set<std::wstring>() : expected_local);
    }
    EXPECT_THAT(script().asked, testing::Not(testing::Contains(HasSubstr("id)"))));

    std::wstring network_text;
    std::wstring local_text = L"as passed";
    CollectComaSepLoggedonUsers(network_text, local_text, true);
    EXPECT_EQ(network_text, L"corp.example\\carol,corp\\bob,east.example\\dave");
    EXPECT_EQ(local_text, L"as passed");
}

TEST_F(Session, GivesUserNameWithinItsBuffer) {
    char buffer[64] = "untouched";
    EXPECT_EQ(orumcomn_get_user_name(nullptr, 64), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_user_name(buffer, 2), ORU_FAILURE);
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(orumcomn_get_user_name(buffer, 3), ORU_SUCCESS);
    EXPECT_STREQ(buffer, "NA");  // there is no record file yet

    add(USER_PROCESS, "1", "plain", "tty1");
    add(USER_PROCESS, "2", "Bob", "tty2");
    EXPECT_EQ(orumcomn_get_user_name(buffer, sizeof buffer), ORU_SUCCESS);
    EXPECT_STREQ(buffer, "corp\\bob,plain");
}

// Two walks on the one cursor would each see a part of the records. The file is long enough for walks
// that begin at once to overlap.
TEST_F(Session, CollectionsOnSeveralThreadsSeeEveryRecord) {
    constexpr int records = 1000;
    constexpr int walks = 3;
    for (int i = 0; i < records; ++i) {
        add(USER_PROCESS, "1", "Bob" + std::to_string(i), "tty");
    }
    std::atomic<int> waiting{walks};
    const auto walk = [&] {
        std::set<std::wstring> network;
        std::set<std::wstring> local;
        for (--waiting; waiting != 0;) {
            std::this_thread::yield();
        }
        CollectLoggedonUsers(network, local, false);
        EXPECT_EQ(network.size(), records);
    };
    testing::internal::CaptureStdout();
    std::vector<std::thread> threads;
    for (int i = 0; i < walks; ++i) {
        threads.emplace_back(walk);
    }
    for (auto& thread : threads) {
        thread.join();
    }
    testing::internal::GetCapturedStdout();
}

TEST_F(Session, FindsDomainInPrimaryGroup) {
    const std::pair<const char*, const char*> domains[] = {
        {"Bob", "corp"}, {"erin", "corp"}, {"odd", ""}};
    std::string domain;
    for (const auto& [user, expected] : domains) {
        EXPECT_TRUE(FindDomainName(user, domain)) << user;
        EXPECT_EQ(domain, expected);
    }
    domain = "before";
    for (const char* const user : {"plain", "nobackslash", "lost", "unknown"}) {
        EXPECT_FALSE(FindDomainName(user, domain)) << user;
    }
    EXPECT_EQ(domain, "before");
}

TEST_F(Session, FindsDomainInDirectoryRecord) {
    constexpr const char upn[] = "userPrincipalName";
    constexpr const char oaa[] = "OriginalAuthenticationAuthority";
    const struct {
        const char* attribute;
        std::optional<std::string> output;
        int result;
        const char* domain;
    } cases[] = {
        {upn, "userPrincipalName: u@Corp.Example\n", 1, "corp.example"},
        {upn, "a@first b@second.\n", 1, "first b@second"},
        {upn, "no at sign", 0, ""},
        {upn, std::nullopt, 0, "before"},
        {upn, std::string(1023, '.') + "@late", 0, ""},  // the 1024 bytes end at the "@"
        {oaa, ";Kerberosv5;;u@EAST.EXAMPLE;rest;\n", 1, "east.example"},
        {oaa, "u@EAST.EXAMPLE\n", 0, ""},
        {"other", "u@corp;", 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.attribute << ' ' << c.output.value_or("nothing"));
        script().run_command = [&](const std::string&) { return c.output; };
        std::string domain = "before";
        EXPECT_EQ(FindDomainNameViaDscl("u", c.attribute, domain), c.result);
        EXPECT_EQ(domain, c.domain);
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
    EXPECT_THAT(script().asked, IsEmpty());

    FindDomainNameViaDscl("j.doe-1_@+,:/^\xc3\xa9", "a", domain);
    FindDomainNameViaDscl(std::string(300, 'u'), "a", domain);
    const std::string prefix = "run_command: /usr/bin/dscl /Search read /Users/";
    EXPECT_THAT(script().asked, ElementsAre(prefix + "j.doe-1_@+,:/^\xc3\xa9  |  /usr/bin/grep a",
                                            prefix + std::string(255 - (prefix.size() - 13), 'u')));
}

}  // namespace
}  // namespace velora_com::qel::session
