#include <sys/stat.h>

#include <cstring>

#include "support/assertion.h"
#include "support/fixed_text.h"
#include "vlrcomn/file_system.h"

int orFolderExists(const char* lpszFolder) {
    if (lpszFolder == nullptr) {
        velora_com::qel::support::assertion_failed("orFolderExists", "../source/orufio", 190,
                                                   "lpszFolder");
    }
    char folder[velora_com::qel::support::fixed_text_size];
    size_t length = std::strlen(lpszFolder);
    if (length == 0 || length >= sizeof folder) {
        return 0;
    }
    std::memcpy(folder, lpszFolder, length + 1);
    if (folder[length - 1] == '\\') {
        folder[--length] = '\0';
    }
    struct stat status;
    return ::stat(folder, &status) == 0 && S_ISDIR(status.st_mode) ? 1 : 0;
}
