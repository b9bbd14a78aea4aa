#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "sync/error_word.h"
#include "sync/file_record.h"
#include "vlrcomn/file.h"

using namespace velora_com::qel::sync;

namespace {

uint32_t low_word(off_t value) {
    return static_cast<uint32_t>(static_cast<uint64_t>(value));
}

// The file behind a handle, or null with EINVAL noted.
FileRecord* required_file(oruHandle handle) {
    FileRecord* const file = file_of(handle);
    if (file == nullptr) {
        note_error(EINVAL);
    }
    return file;
}

// The same for a call that tells how many bytes it moved, which needs a place for that.
FileRecord* required_file(oruHandle handle, const uint32_t* count) {
    if (count == nullptr) {
        note_error(EINVAL);
        return nullptr;
    }
    return required_file(handle);
}

// Tells the result of read or write: true unless it is negative.
int tell_moved(ssize_t moved, uint32_t* count) {
    if (moved < 0) {
        return 0;
    }
    *count = static_cast<uint32_t>(moved);
    return 1;
}

// The descriptor behind a handle; one that no system call takes for a handle without one.
int descriptor_of(oruHandle handle) {
    const FileRecord* const file = file_of(handle);
    return file != nullptr ? file->descriptor : -1;
}

}  // namespace

int oruReadFile(oruHandle handle, void* buffer, uint32_t count, uint32_t* bytes_read, void*) {
    FileRecord* const file = required_file(handle, bytes_read);
    if (file == nullptr) {
        return 0;
    }
    const ssize_t received = ::read(file->descriptor, buffer, count);
    if (received == 0) {
        file->end_of_file = 1;
    }
    return tell_moved(received, bytes_read);
}

int oruWriteFile(oruHandle handle, const void* buffer, uint32_t count, uint32_t* bytes_written,
                 void*) {
    const FileRecord* const file = required_file(handle, bytes_written);
    return file != nullptr ? tell_moved(::write(file->descriptor, buffer, count), bytes_written)
                           : 0;
}

uint32_t oruSetFilePointer(oruHandle handle, int32_t distance, int32_t*, uint32_t method) {
    const off_t position = ::lseek(descriptor_of(handle), distance, static_cast<int>(method));
    return position < 0 ? ORU_INVALID_SIZE : low_word(position);
}

int oruSetEndOfFile(oruHandle handle) {
    const int descriptor = descriptor_of(handle);
    const off_t position = ::lseek(descriptor, 0, SEEK_CUR);
    return position >= 0 && ::ftruncate(descriptor, position) == 0 ? 1 : 0;
}

uint32_t oruGetFileSize(oruHandle handle, uint32_t* high) {
    const FileRecord* const file = required_file(handle);
    struct stat status;
    if (file == nullptr || ::fstat(file->descriptor, &status) != 0) {
        return ORU_INVALID_SIZE;
    }
    if (high != nullptr) {
        *high = low_word(status.st_size / 65535);  // callers compute with this divisor
    }
    return low_word(status.st_size);
}
