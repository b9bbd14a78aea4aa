#include <cstring>
#include <string>

#include "session/user_list.h"
#include "support/boundary.h"
#include "vlrcomn/agent_identity.h"
#include "vlrcomn/time_text.h"

uint32_t orumcomn_get_user_name(char* buffer, uint32_t size) {
    if (buffer == nullptr) {
        return ORU_FAILURE;
    }
    return velora_com::qel::support::or_failure(ORU_FAILURE, [&] {
        const std::string text =
            velora_com::qel::orumcomn::wide_to_ansi(velora_com::qel::session::reported_users());
        if (text.size() + 1 > size) {
            return ORU_FAILURE;
        }
        std::memcpy(buffer, text.c_str(), text.size() + 1);
        return ORU_SUCCESS;
    });
}
