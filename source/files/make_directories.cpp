#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <cwchar>

#include "support/fixed_text.h"
#include "vlrcomn/file_system.h"

using velora_com::qel::support::fixed_text_size;

namespace {

constexpr size_t last_index_without_directory = 3;

// Makes the directory that the '/' at `slash` ends.
bool make_directory(char* path, char* slash) {
    *slash = '\0';
    const bool made = ::mkdir(path, 0700) == 0;
    *slash = '/';
    return made;
}

void make_directories(char* path) {
    char* const first = path + last_index_without_directory + 1;
    if (std::strlen(path) <= last_index_without_directory + 1) {
        return;
    }
    // Most paths are there. When the last directory is, the others are.
    char* const last = std::strrchr(first, '/');
    if (last == nullptr || make_directory(path, last) || errno == EEXIST) {
        return;
    }
    for (char* slash = std::strchr(first, '/'); slash != nullptr;
         slash = std::strchr(slash + 1, '/')) {
        make_directory(path, slash);
    }
}

}  // namespace

// Both always return failure: callers look for the directory itself, as file_system.h tells them.

uint32_t orumcomn_MakeRecursiveDirectoryA(const char* path) {
    char copy[fixed_text_size];
    const size_t length = path != nullptr ? std::strlen(path) : sizeof copy;
    if (length >= sizeof copy) {
        return ORU_FAILURE;
    }
    std::memcpy(copy, path, length + 1);
    make_directories(copy);
    return ORU_FAILURE;
}

uint32_t orumcomn_MakeRecursiveDirectoryW(const wchar_t* path) {
    char copy[fixed_text_size] = "";
    if (path == nullptr || std::wcslen(path) >= sizeof copy) {
        return ORU_FAILURE;
    }
    for (size_t i = 0; path[i] != L'\0'; ++i) {
        copy[i] = static_cast<char>(static_cast<unsigned char>(path[i]));
        if (copy[i] == '\0') {
            return ORU_FAILURE;  // it would end the path in the middle
        }
    }
    make_directories(copy);
    return ORU_FAILURE;
}
