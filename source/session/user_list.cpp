#include "session/user_list.h"

#include <string_view>

#include "vlrcomn/logged_on_users.h"

namespace velora_com::qel::session {

namespace {

constexpr size_t max_list = 128;  // in characters
constexpr std::wstring_view cut_mark = L",...";

}  // namespace

std::wstring joined(const std::set<std::wstring>& names) {
    std::wstring text;
    for (const std::wstring& name : names) {
        if (&name != &*names.begin()) {
            text += L',';
        }
        text += name;
    }
    return text;
}

std::wstring bounded_list(const std::wstring& network_users, const std::wstring& local_users) {
    std::wstring all = network_users;
    if (!all.empty() && !local_users.empty()) {
        all += L',';
    }
    all += local_users;
    if (all.size() >= max_list) {
        const size_t comma = all.rfind(L',', max_list - cut_mark.size());
        all.replace(comma == std::wstring::npos ? 0 : comma, std::wstring::npos, cut_mark);
    }
    return all;
}

std::wstring reported_users() {
    std::wstring users;
    CollectAllLoggedonUsers(users);
    return users.empty() ? L"NA" : users;
}

}  // namespace velora_com::qel::session
