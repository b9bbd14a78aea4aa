#include "portability/find_data.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "support/config.h"

static_assert(sizeof(oruFindData) == 284, "the record has one layout on every host");
static_assert(offsetof(oruFindData, name) == 20);

namespace velora_com::qel::portability {

namespace {

// Directory and name as one path.
class JoinedName {
public:
    JoinedName(const char* directory, const char* name) {
        const char* const separator = std::strcmp(directory, ".") == 0 ? "/" : "";
        for (const char* part : {directory, separator, name}) {
            append(part);
        }
    }

    explicit operator bool() const { return fits_; }
    const char* c_str() const { return text_; }

private:
    void append(const char* part) {
        const size_t length = std::strlen(part);
        fits_ = fits_ && length < sizeof text_ - length_;
        if (fits_) {
            std::memcpy(text_ + length_, part, length + 1);
            length_ += length;
        }
    }

    char text_[260] = "";
    size_t length_ = 0;
    bool fits_ = true;
};

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
    const JoinedName path(directory, entry.d_name);
    if (!path) {
        return;
    }
    struct stat status;
#if defined(VLRCOMN_HAVE_OPENAT)
    const bool known = ::fstatat(dirfd(stream), entry.d_name, &status, 0) == 0;
#else
    const bool known = ::stat(path.c_str(), &status) == 0;
#endif
    if (known) {
        copy_status(data, status);
    }
}

}  // namespace velora_com::qel::portability

oruFindData* oruSetFindDataDirEnt(oruFindData* data, const dirent* entry, const char* directory) {
    using namespace velora_com::qel::portability;
    if (data == nullptr || entry == nullptr || directory == nullptr) {
        return nullptr;
    }
    copy_name(*data, entry->d_name);
    const JoinedName path(directory, entry->d_name);
    struct stat status;
    if (path && ::stat(path.c_str(), &status) == 0) {
        copy_status(*data, status);
    }
    return data;
}
