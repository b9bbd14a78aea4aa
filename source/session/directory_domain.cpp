#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>

#include "platform/platform.h"
#include "support/boundary.h"
#include "vlrcomn/logged_on_users.h"

namespace velora_com::qel::session {

namespace {

// Memory for one record of the user or the group database.
constexpr size_t record_size = 16384;

constexpr const char* directory_client = "/usr/bin/dscl";

// How much of the directory client's command line is run, terminator included, and how much of its
// output is looked at.
constexpr size_t command_size = 256;
constexpr size_t max_output = 1024;

std::optional<std::string> primary_group(const std::string& user) {
    std::vector<char> memory(record_size);
    passwd user_record;
    passwd* found_user = nullptr;
    if (getpwnam_r(user.c_str(), &user_record, memory.data(), memory.size(), &found_user) != 0 ||
        found_user == nullptr) {
        return std::nullopt;
    }
    group group_record;
    group* found_group = nullptr;
    if (getgrgid_r(user_record.pw_gid, &group_record, memory.data(), memory.size(), &found_group) !=
            0 ||
        found_group == nullptr) {
        return std::nullopt;
    }
    return found_group->gr_name;
}

// Whether the shell takes a text for what it is.
bool is_plain_word(const std::string& text) {
    constexpr std::string_view special = " '\"\\;&|<>()$`*?[]#~=%!{}\x7f";
    return std::none_of(text.begin(), text.end(), [&](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte < 0x20 || special.find(character) != std::string_view::npos;
    });
}

// The lines of a user's directory record that name an attribute. Where there is no client the shell would
// only complain on standard error.
std::string directory_lines(const std::string& user, const std::string& attribute) {
    if (!is_plain_word(user) || !is_plain_word(attribute) || access(directory_client, X_OK) != 0) {
        return {};
    }
    char command[command_size];
    std::snprintf(command, sizeof command, "%s /Search read /Users/%s  |  /usr/bin/grep %s",
                  directory_client, user.c_str(), attribute.c_str());
    return platform::run_command(command, max_output).value_or(std::string());
}

}  // namespace

bool FindDomainName(const std::string& user, std::string& domain) {
    return support::or_failure(false, [&] {
        std::string group_name = primary_group(user).value_or(std::string());
        toLower(group_name);
        if (group_name.find("domain users") == std::string::npos) {
            return false;
        }
        std::vector<std::string> pieces;
        split(group_name, '\\', pieces);
        if (pieces.size() < 2) {
            return false;
        }
        domain = pieces.front();
        std::fprintf(myfd(), "found group struct %s. \n", domain.c_str());
        return true;
    });
}

int FindDomainNameViaDscl(const std::string& user, const std::string& attribute,
                          std::string& domain) {
    return support::or_failure(0, [&] {
        std::string output = directory_lines(user, attribute);
        if (output.empty()) {
            return 0;
        }
        domain.clear();
        toLower(output);
        const size_t at = output.find('@');
        if (at == std::string::npos) {
            return 0;
        }
        const std::string realm = output.substr(at + 1);
        if (attribute == "userPrincipalName") {
            domain = trimmer(realm.c_str());
        } else if (attribute == "OriginalAuthenticationAuthority") {
            const size_t semicolon = realm.find(';');
            if (semicolon != std::string::npos) {
                domain = trimmer(realm.substr(0, semicolon).c_str());
            }
        }
        return domain.empty() ? 0 : 1;
    });
}

}  // namespace velora_com::qel::session
