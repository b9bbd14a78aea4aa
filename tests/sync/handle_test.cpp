#include <fcntl.h>

#include <cstring>
#include <fstream>

#include "sync_support.h"

using namespace velora_com::qel::portability;

namespace {

class FileHandle : public testing::Test {
protected:
    void make(int delete_on_close) {
        std::snprintf(path_, sizeof path_, "%s/vlrcomn-handle-XXXXXX", testing::TempDir().c_str());
        record_ = make_handle_record(ORU_KIND_FILE).release();
        file_ = new FileRecord{mkstemp(path_), delete_on_close, 0, {}};
        std::memcpy(file_->path, path_, sizeof path_);
        record_->pData = file_;
    }
    void TearDown() override { unlink(path_); }
    bool file_exists() { return access(path_, F_OK) == 0; }

    char path_[200] = {};
    oruHandle record_ = nullptr;
    FileRecord* file_ = nullptr;
};

TEST(CloseHandle, FreesOnTheLastReferenceOfAKnownKind) {
    EXPECT_EQ(oruCloseHandle(nullptr), 1);
    EXPECT_EQ(oruCloseHandle(ORU_INVALID_HANDLE), 1);
    const HandleRecordOwner unknown = make_handle_record(4);
    EXPECT_EQ(oruCloseHandle(unknown.get()), 0);
    const oruHandle event = oruCreateEvent(nullptr, 1, 0, nullptr);
    event->nRefCount = 2;
    EXPECT_EQ(oruCloseHandle(event), 1);
    EXPECT_EQ(oruSetEvent(event), 1);
    EXPECT_EQ(oruCloseHandle(event), 1);
}

TEST_F(FileHandle, ClosesTheDescriptorAndDeletesOnlyForExactlyOne) {
    for (const int delete_on_close : {0, 1, 2}) {
        make(delete_on_close);
        const int descriptor = file_->descriptor;
        EXPECT_EQ(oruCloseHandle(record_), 1);
        EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
        EXPECT_EQ(file_exists(), delete_on_close != 1);
        unlink(path_);
    }
}

TEST_F(FileHandle, KeepsTheRecordWhenAStepFails) {
    make(1);
    const int descriptor = file_->descriptor;
    unlink(path_);
    EXPECT_EQ(oruCloseHandle(record_), 0);
    EXPECT_EQ(oruGetLastError(), ORU_ERROR_HANDLE_EOF);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    EXPECT_EQ(oruCloseHandle(record_), 0) << "spent: a second close has no effect";
    delete file_;
    HandleRecordDeleter()(record_);
}

TEST(LastError, TranslatesByName) {
    const struct {
        uint32_t code;
        std::initializer_list<int> errors;
    } groups[] = {
        {0, {0}},
        {38, {ENOENT, EIO, ENXIO, ENOLCK}},
        {126, {ESRCH, EINTR, EBADF, ENODEV}},
        {259, {E2BIG, ENOMEM, ENFILE, EMFILE, EFBIG, ENOSPC, EMLINK}},
        {997, {EDEADLK, EBUSY, ETXTBSY, EAGAIN}},
        {5, {EACCES}},
        {1010, {EINVAL, ENOTTY}},
        {19, {EROFS}},
        {0x80000008, {EPERM, EEXIST, ENOTDIR, EPIPE, ERANGE, ENOSYS, ETIMEDOUT, 4000, -1}},
    };
    for (const auto& group : groups) {
        for (const int error : group.errors) {
            errno = error;
            EXPECT_EQ(oruGetLastError(), group.code) << std::strerror(error);
            EXPECT_EQ(errno, error);
        }
    }
}

}  // namespace
