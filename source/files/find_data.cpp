#include "files/find_data.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "files/find_table.h"
#include "support/config.h"

static_assert(sizeof(oruFindData) == 284, "the record has one layout on every host");
static_assert(offsetof(oruFindData, name) == 20);
static_assert(sizeof oruFindData::name == velora_com::qel::support::fixed_text_size);

namespace velora_com::qel::files {

namespace {

// What stands between a directory, as a search keeps it, and a name.
const char* separator_behind(const char* directory) {
    return std::strcmp(directory, ".") == 0 ? "/" : "";
}

// Whether directory and name make a path that is looked at.
bool is_path(const char* directory, const char* name) {
    return std::strlen(directory) + std::strlen(separator_behind(directory)) + std::strlen(name) <
           support::fixed_text_size;
}

bool status_of_path(const char* directory, const char* name, struct stat& status) {
    if (!is_path(directory, name)) {
        return false;
    }
    char path[support::fixed_text_size];
    char* end = path;
    for (const std::string_view part : {directory, separator_behind(directory), name}) {
        end = std::copy(part.begin(), part.end(), end);
    }
    *end = '\0';
    return ::stat(path, &status) == 0;
}

void copy_name(oruFindData& data, const char* name) {
    data = {};
    std::memcpy(data.name, name, std::min(std::strlen(name), sizeof data.name - 1));
}

void copy_status(oruFindData& data, const struct stat& status) {
    data.access_time = static_cast<uint32_t>(status.st_atime);
    data.modification_time = static_cast<uint32_t>(status.st_mtime);
    data.size = static_cast<uint32_t>(status.st_size);
    data.attributes = S_ISDIR(status.st_mode) ? ORU_ATTRIBUTE_DIRECTORY : 0;
}

}  // namespace

void fill_find_data(oruFindData& data, const dirent& entry, const char* directory,
                    [[maybe_unused]] DIR* stream) {
    copy_name(data, entry.d_name);
    struct stat status;
#if defined(VLRCOMN_HAVE_OPENAT)
    // No path is put together for each of the many entries of a search.
    const bool known =
        is_path(directory, entry.d_name) && ::fstatat(dirfd(stream), entry.d_name, &status, 0) == 0;
#else
    const bool known = status_of_path(directory, entry.d_name, status);
#endif
    if (known) {
        copy_status(data, status);
    }
}

}  // namespace velora_com::qel::files

oruFindData* oruSetFindDataDirEnt(oruFindData* data, const dirent* entry, const char* directory) {
    using namespace velora_com::qel::files;
    if (data == nullptr || entry == nullptr || directory == nullptr) {
        return nullptr;
    }
    copy_name(*data, entry->d_name);
    struct stat status;
    if (status_of_path(directory, entry->d_name, status)) {
        copy_status(*data, status);
    }
    return data;
}
