// The session walk on record files, users and directory answers of the test's own, and its text half.
#include <grp.h>
#include <pwd.h>
#include <utmpx.h>

#include "session/user_list.h"
#include "support/scripted_platform.h"
#include "support/test.h"
#include "vlrcomn/agent_identity.h"
#include "vlrcomn/logged_on_users.h"

// The primary groups of users by the first letter of their names. Other users are not in the database.
static const std::map<gid_t, const char*> groups = {{'B', "CORP\\Domain Users"},
                                                    {'p', "CORP\\Staff"},
                                                    {'n', "domain users"},
                                                    {'g', nullptr},  // nor is that group
                                                    {'e', "Corp\\EU\\Domain Users"}};

extern "C" int __wrap_getpwnam_r(const char* name, passwd* user, char*, size_t size, passwd** out) {
    user->pw_gid = static_cast<gid_t>(*name);
    *out = groups.count(user->pw_gid) == 1 && size == 16384 ? user : nullptr;
    return 0;
}

extern "C" int __wrap_getgrgid_r(gid_t id, group* entry, char* memory, size_t size, group** out) {
    const char* const name = groups.at(id);
    *out = size == 16384 && name != nullptr ? entry : nullptr;
    entry->gr_name = name != nullptr ? std::strcpy(memory, name) : nullptr;
    return 0;
}

static bool has_client = true;

extern "C" int __wrap_access(const char* path, int mode) {
    EXPECT_TRUE(std::string(path) == "/usr/bin/dscl" && mode == X_OK) << path << mode;
    return has_client ? 0 : -1;
}

using namespace velora_com::qel::session;
using velora_com::qel::platform::script;

struct Session : testing::Test {
    Session() {
        script() = {};
        has_client = true;
        utmpxname(records_.c_str());
    }

    void add(short type, const std::string& id, const std::string& user, const std::string& line) {
        utmpx record{};
        record.ut_type = type;
        id.copy(record.ut_id, sizeof record.ut_id);
        user.copy(record.ut_user, sizeof record.ut_user);
        line.copy(record.ut_line, sizeof record.ut_line);
        record.ut_exit.e_termination = 0x4141;  // behind the line, which may have no terminator
        std::ofstream(records_, std::ios::binary | std::ios::app)
            .write(reinterpret_cast<const char*>(&record), sizeof record);
    }

    const TemporaryFolder folder_;
    const std::string records_ = folder_ / "records";
    std::set<std::wstring> network_ = {L"kept"}, local_;
};

TEST_F(Session, SortsUsersAndWritesEveryRecord) {
    const std::string name(sizeof(utmpx::ut_user), 'u'), line(sizeof(utmpx::ut_line), 'l');
    add(BOOT_TIME, "~~", "reboot", "~");
    add(USER_PROCESS, "ts/2", "Bob", "pts/2");
    add(USER_PROCESS, "ts/3", "carol", "pts/3");
    add(USER_PROCESS, "abcd", name, line);
    script().run_command = [](const std::string& command) {
        const bool known = command.find("/carol  |  /usr/bin/grep Orig") != std::string::npos;
        return known ? std::optional(";Kerberosv5;;c@EAST.EXAMPLE;EAST;\n") : std::nullopt;
    };
    CollectLoggedonUsers(network_, local_, true);
    EXPECT_TRUE(local_.empty());
    EXPECT_THAT(script().asked.at(0),
                testing::EndsWith("/carol  |  /usr/bin/grep userPrincipalName"));
    EXPECT_THAT(script().asked.at(1), testing::EndsWith(" OriginalAuthenticationAuthority"));
    getutxent();  // wherever the cursor stands, the walk sees every record
    testing::internal::CaptureStdout();
    CollectLoggedonUsers(network_, local_, false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Some changes happen in the logon sessions.\n2  ~~  reboot  ~ \n"
              "7  ts/2  Bob  pts/2 \nfound group struct corp. \nNetwork User logged on corp\\bob \n"
              "7  ts/3  carol  pts/3 \nNetwork User logged on east.example\\carol \n7  abcd  " +
                  name + "  " + line + " \nLocal User Logged on " + name +
                  " \nComing out from the logon session collections.\n");
    EXPECT_THAT(network_, ElementsAre(L"corp\\bob", L"east.example\\carol", L"kept"));
    std::wstring network_text, local_text = L"as passed";
    utmpxname("/nonexistent");
    CollectComaSepLoggedonUsers(network_text, local_text, false);
    EXPECT_EQ(network_text + L'|' + local_text, L"|as passed") << "without users";
    utmpxname(records_.c_str());
    CollectComaSepLoggedonUsers(network_text, local_text, true);
    EXPECT_EQ(network_text + L'|' + local_text, L"corp\\bob,east.example\\carol|as passed");
}

TEST_F(Session, RunsNothingWithoutADirectoryClient) {
    has_client = false;
    std::string domain = "as passed";
    EXPECT_EQ(FindDomainNameViaDscl("carol", "userPrincipalName", domain), 0);
    EXPECT_EQ(domain, "as passed");
    EXPECT_THAT(script().asked, testing::IsEmpty());
}

TEST_F(Session, GivesUserNameWithinItsBuffer) {
    char buffer[64] = "####";
    EXPECT_EQ(orumcomn_get_user_name(nullptr, 64), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_user_name(buffer, 2), ORU_FAILURE);
    EXPECT_EQ(orumcomn_get_user_name(buffer, 3), ORU_SUCCESS);  // there is no record file yet
    EXPECT_EQ(std::string(buffer, 4), std::string("NA\0#", 4));
    add(USER_PROCESS, "1", "plain", "tty1");
    add(USER_PROCESS, "2", "Bob", "tty2");
    EXPECT_EQ(orumcomn_get_user_name(buffer, sizeof buffer), ORU_SUCCESS);
    EXPECT_STREQ(buffer, "corp\\bob,plain");
}

// Two walks on the one cursor would each see a part; the file is long enough for walks to overlap.
TEST_F(Session, CollectionsOnTwoThreadsSeeEveryRecord) {
    for (int i = 0; i < 1000; ++i) {
        add(USER_PROCESS, "1", "Bob" + std::to_string(i), "tty");
    }
    testing::internal::CaptureStdout();
    together(2, [](int) {
        std::set<std::wstring> users, local;
        CollectLoggedonUsers(users, local, false);
        EXPECT_EQ(users.size(), 1000U);
    });
    testing::internal::GetCapturedStdout();
}

TEST_F(Session, FindsDomains) {
    std::string domain;
    EXPECT_TRUE(FindDomainName("erin", domain) && domain == "corp") << domain;
    EXPECT_FALSE(FindDomainName("plain", domain) || FindDomainName("nobackslash", domain) ||
                 FindDomainName("groupless", domain));
    const std::string cases[][3] = {
        {"userPrincipalName", "a@First b@second.\n", "first b@second"},
        {"OriginalAuthenticationAuthority", "u@EAST.EXAMPLE\n", ""},
        {"other", "u@EAST.EXAMPLE;\n", ""},
        {"userPrincipalName", std::string(1024, '.') + "@late", ""}};  // 1024 bytes are read
    for (const auto& [attribute, output, expected] : cases) {
        script().run_command = [text = output](const std::string&) { return text; };
        EXPECT_EQ(FindDomainNameViaDscl("u", attribute, domain), expected.empty() ? 0 : 1);
        EXPECT_EQ(domain, expected);
    }
}

TEST_F(Session, KeepsShellCharactersOutOfCommands) {
    std::string domain, special = "'\"\\;&|<>()$`*?[]#~=%!{} \x7f";
    for (char control = 0; control < 0x20; ++control) {
        special += control;
    }
    for (const char character : special) {
        const std::string text = {'u', character, 'x'};
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
    std::string text =
        trimmer(" .A z;\n") + trimmer("...") + trimmer(nullptr) + "@[09" + trimmer("\xc3\x89Z\xe9");
    toLower(text += "\xc3\x89");
    EXPECT_EQ(text, "a z@[09z\xc3\x89");
    std::wstring domain, user = L"a\\b\\c";
    parseFullUserName(user, domain, user);  // the result may be the text itself
    EXPECT_EQ(domain + L'|' + user, L"a|b\\c");
}
