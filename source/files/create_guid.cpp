#include <cstdio>
#include <cstring>

#include "support/ascii.h"
#include "vlrcomn/file_system.h"

bool orumcomn_create_guid(GUID* guid, char* text, size_t size) {
    GUID created{};
    char plain[ORU_GUID_TEXT_SIZE] = "";
    if ((text == nullptr && size != 0) || oruCoCreateGuid(&created) == nullptr ||
        oruUuidToStringA(&created, plain) == nullptr) {
        return false;
    }
    for (char& letter : plain) {
        letter = velora_com::qel::support::to_upper(letter);
    }
    char braced[sizeof plain + 2];
    std::snprintf(braced, sizeof braced, "{%s}", plain);
    if (size != 0) {
        std::strncpy(text, braced,
                     size);  // a short buffer gets no terminator: file_system.h says so
    }
    if (guid != nullptr) {
        *guid = created;
    }
    return true;
}
