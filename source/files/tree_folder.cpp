#include "files/tree_folder.h"

#include <sys/stat.h>

#include <utility>

namespace velora_com::qel {

TreeFolder::TreeFolder(DIR* stream, std::string path, size_t top_length)
    : stream_(stream), path_(std::move(path)), top_length_(top_length) {
    struct stat status;
    if (stream_ && ::fstat(dirfd(stream), &status) == 0) {
        identity_ = {status.st_dev, status.st_ino};
    } else {
        stream_.reset();
    }
}

}  // namespace velora_com::qel
