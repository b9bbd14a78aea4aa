// The machine's login records, read in one go.
#pragma once

#include <string>
#include <vector>

namespace velora_com::qel::session {

struct LoginRecord {
    int type;
    std::string id;
    std::string user;
    std::string line;

    bool is_user() const;
};

// Every record as the database holds it now, wherever the process's record cursor stands; the cursor is
// at the start afterwards. Collections on several threads take turns.
std::vector<LoginRecord> login_records();

}  // namespace velora_com::qel::session
