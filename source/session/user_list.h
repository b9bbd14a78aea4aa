// How the names of users become one text.
#pragma once

#include <set>
#include <string>

namespace velora_com::qel::session {

// The names in order with "," between.
std::wstring joined(const std::set<std::wstring>& names);

// The two texts with "," between, as far as they are not empty, held to 128 characters: a longer text
// ends before one of its names with ",...".
std::wstring bounded_list(const std::wstring& network_users, const std::wstring& local_users);

// What reports say of the logged-on users: the list, or "NA" when nobody is logged on.
std::wstring reported_users();

}  // namespace velora_com::qel::session
