#include "vlrcomn/logged_on_users.h"

#include "session/login_records.h"
#include "session/user_list.h"
#include "support/boundary.h"
#include "vlrcomn/time_text.h"

namespace velora_com::qel::session {

namespace {

bool is_network_user(const std::string& user, std::string& domain) {
    return FindDomainName(user, domain) ||
           FindDomainNameViaDscl(user, "userPrincipalName", domain) != 0 ||
           FindDomainNameViaDscl(user, "OriginalAuthenticationAuthority", domain) != 0;
}

// Adds a name in lower case to its set and writes it after the words of its kind.
void add(std::string name, std::set<std::wstring>& users, const char* words) {
    toLower(name);
    users.insert(orumcomn_ansi_to_wide(name));
    std::fprintf(myfd(), "%s %s \n", words, name.c_str());
}

void collect(std::set<std::wstring>& network_users, std::set<std::wstring>& local_users,
             bool network_users_only) {
    for (const LoginRecord& record : login_records()) {
        std::fprintf(myfd(), "%d  %s  %s  %s \n", record.type, record.id.c_str(),
                     record.user.c_str(), record.line.c_str());
        if (!record.is_user()) {
            continue;
        }
        std::string domain;
        if (is_network_user(record.user, domain)) {
            add(domain + "\\" + record.user, network_users, "Network User logged on");
        } else if (!network_users_only) {
            add(record.user, local_users, "Local User Logged on");
        }
    }
}

}  // namespace

std::FILE* myfd() {
    return stdout;
}

void CollectLoggedonUsers(std::set<std::wstring>& networkUsers, std::set<std::wstring>& localUsers,
                          bool networkUsersOnly) {
    std::fprintf(myfd(), "Some changes happen in the logon sessions.\n");
    support::contained([&] { collect(networkUsers, localUsers, networkUsersOnly); });
    std::fprintf(myfd(), "Coming out from the logon session collections.\n");
}

void CollectComaSepLoggedonUsers(std::wstring& networkUsers, std::wstring& localUsers,
                                 bool networkUsersOnly) {
    support::contained([&] {
        std::set<std::wstring> network_set;
        std::set<std::wstring> local_set;
        CollectLoggedonUsers(network_set, local_set, networkUsersOnly);
        if (!network_set.empty()) {
            networkUsers = joined(network_set);
        }
        if (!networkUsersOnly && !local_set.empty()) {
            localUsers = joined(local_set);
        }
    });
}

void CollectAllLoggedonUsers(std::wstring& allUsers) {
    support::contained([&] {
        std::wstring network_users;
        std::wstring local_users;
        CollectComaSepLoggedonUsers(network_users, local_users, false);
        allUsers = bounded_list(network_users, local_users);
    });
}

}  // namespace velora_com::qel::session
