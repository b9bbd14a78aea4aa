// Collects everything and prints nothing: what appears on its standard output is the library's own. Ends
// with 1 when the library has started a thread, with 2 when it has left a descriptor open.
#include <dirent.h>

#include "vlrcomn/system_properties.h"

namespace {

int entries(const char* folder) {
    int count = 0;
    DIR* const directory = opendir(folder);
    while (directory != nullptr && readdir(directory) != nullptr) {
        ++count;
    }
    if (directory != nullptr) {
        closedir(directory);
    }
    return count;
}

}  // namespace

int main() {
    const int descriptors = entries("/proc/self/fd");
    velora_com::qel::sysprops::ISysProps properties;
    std::map<std::wstring, std::wstring> report;
    properties.GetAllSystemProperties(report);
    orumcomn_get_file_system_name(0);
    if (entries("/proc/self/task") != 3) {  // ".", ".." and this thread
        return 1;
    }
    // The record file of the users may stay open in the C library between walks, but no more.
    properties.GetAllSystemProperties(report);
    return entries("/proc/self/fd") > descriptors + 1 ? 2 : 0;
}
