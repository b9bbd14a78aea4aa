#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/platform.h"
#include "support/open_file.h"
#include "vlrcomn/file_system.h"

namespace {

namespace platform = velora_com::qel::platform;
using velora_com::qel::support::CancellationOff;
using velora_com::qel::support::FileDescriptor;
using velora_com::qel::support::open_file;

constexpr mode_t new_file_mode = 0666;

bool is_readable(const char* name) {
    return static_cast<bool>(open_file(name, O_RDONLY | O_NONBLOCK));  // a pipe does not hold it up
}

FileDescriptor fail(int reason) {
    errno = reason;
    return FileDescriptor();
}

// The file to read; no directory, which would be found out only after the destination was emptied.
FileDescriptor open_source(const char* name, struct stat& status) {
    FileDescriptor source = open_file(name, O_RDONLY);
    if (!source || ::fstat(source.get(), &status) != 0) {
        return FileDescriptor();
    }
    return S_ISDIR(status.st_mode) ? fail(EISDIR) : std::move(source);
}

FileDescriptor create_destination(const char* name) {
    return open_file(name, O_RDWR | O_CREAT | O_EXCL, new_file_mode);
}

// The file that is there, emptied, unless it is the source.
FileDescriptor open_existing(const char* name, const struct stat& source, bool overwrite) {
    if (!overwrite && is_readable(name)) {
        return fail(EEXIST);
    }
    FileDescriptor existing = open_file(name, O_RDWR | O_CREAT, new_file_mode);
    struct stat status;
    if (!existing || ::fstat(existing.get(), &status) != 0) {
        return FileDescriptor();
    }
    if (status.st_dev == source.st_dev && status.st_ino == source.st_ino) {
        return fail(EINVAL);
    }
    if (!overwrite && status.st_size != 0) {
        return fail(EEXIST);  // made by somebody else meanwhile
    }
    if (S_ISREG(status.st_mode) && ::ftruncate(existing.get(), 0) != 0) {
        return FileDescriptor();
    }
    return existing;
}

}  // namespace

bool orumcomn_copy_file(const char* source, const char* destination, int overwrite) {
    if (source == nullptr || destination == nullptr) {
        return false;
    }
    const CancellationOff cancellation_off;
    struct stat status;
    FileDescriptor from = open_source(source, status);
    // The destination's directories are made also when the source is missing. Most are there, so they are made
    // only when a file cannot be opened. It is then tried again, since its path may lead through them.
    if (!from) {
        orumcomn_MakeRecursiveDirectoryA(destination);
        from = open_source(source, status);
        if (!from) {
            return false;
        }
    }
    FileDescriptor to = create_destination(destination);
    if (!to && errno != EEXIST) {  // not ENOENT for a name that ends in a slash
        orumcomn_MakeRecursiveDirectoryA(destination);
        to = create_destination(destination);
    }
    if (!to && errno == EEXIST) {
        to = open_existing(destination, status, overwrite == 1);
    }
    return to && platform::copy_contents(from.get(), to.get()) && to.close();
}
