#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "portability/errors.h"
#include "portability/handle_object.h"
#include "support/temporary_folder.h"
#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

namespace {

using velora_com::qel::portability::FileRecord;
using velora_com::qel::portability::nErrno;

oruHandle open_file(const std::string& name, uint32_t access, uint32_t disposition,
                    uint32_t flags = 0) {
    return oruCreateFileAW(name.c_str(), access, 0, nullptr, disposition, flags, nullptr);
}

const FileRecord& record_of(oruHandle handle) {
    return *static_cast<FileRecord*>(handle->pData);
}

class Files : public testing::Test {
protected:
    const TemporaryFolder folder_;
    uint32_t count_ = 77;
    char buffer_[8] = "";
};

TEST_F(Files, RefusesWhatItDoesNotKnowBeforeTouchingAnything) {
    const std::string name = folder_ / "new";
    const std::string long_name = folder_ / std::string(258 - folder_.path().size(), '/') + "x";
    const struct {
        const std::string& name;
        uint32_t access, disposition, flags;
    } cases[] = {
        {name, ORU_ACCESS_WRITE | 1, ORU_CREATE_ALWAYS, 0},
        {name, ORU_ACCESS_WRITE, 5, 0},
        {name, ORU_ACCESS_WRITE, ORU_CREATE_ALWAYS, ORU_DELETE_ON_CLOSE | 128},
        {long_name, ORU_ACCESS_WRITE, ORU_CREATE_ALWAYS, ORU_DELETE_ON_CLOSE},
    };
    for (const auto& each : cases) {
        nErrno = 0;
        EXPECT_EQ(open_file(each.name, each.access, each.disposition, each.flags), nullptr);
        EXPECT_EQ(nErrno, static_cast<uint32_t>(EINVAL));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
}

TEST_F(Files, DispositionsDecideWhatIsMadeAndEmptied) {
    const std::string there = folder_.write("there", "old"), missing = folder_ / "missing";
    const struct {
        uint32_t disposition;
        const std::string& name;
        int error;
        const char* left;
    } cases[] = {
        {ORU_CREATE_NEW, there, EEXIST, "old"}, {ORU_OPEN_ALWAYS, there, 0, "old"},
        {ORU_OPEN_EXISTING, there, 0, "old"},   {ORU_OPEN_EXISTING, missing, ENOENT, ""},
        {ORU_CREATE_ALWAYS, there, 0, ""},      {ORU_CREATE_ALWAYS, missing, 0, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(&each - cases);
        const oruHandle file = open_file(each.name, ORU_ACCESS_READ_WRITE, each.disposition, 128);
        EXPECT_EQ(file == nullptr ? errno : 0, each.error);
        if (file != nullptr) {
            EXPECT_EQ(fcntl(record_of(file).descriptor, F_GETFD), FD_CLOEXEC);
            EXPECT_EQ(oruCloseHandle(file), 1);
        }
        EXPECT_EQ(contents_of(each.name), each.left);
    }
}

TEST_F(Files, ReadsWritesAndMovesTheirPosition) {
    const oruHandle file =
        open_file(folder_ / "file", ORU_ACCESS_READ_WRITE, ORU_CREATE_NEW, ORU_DELETE_ON_CLOSE);
    EXPECT_EQ(oruWriteFile(file, "0123456789", 10, &count_, nullptr), 1);
    EXPECT_EQ(count_, 10u);
    EXPECT_EQ(oruSetFilePointer(file, -4, nullptr, ORU_FILE_END), 6u);
    EXPECT_EQ(oruReadFile(file, buffer_, sizeof buffer_, &count_, nullptr), 1);
    EXPECT_EQ(count_, 4u);
    EXPECT_STREQ(buffer_, "6789");
    EXPECT_EQ(record_of(file).end_of_file, 0);
    EXPECT_EQ(oruReadFile(file, buffer_, sizeof buffer_, &count_, nullptr), 1);
    EXPECT_EQ(count_, 0u);
    EXPECT_EQ(record_of(file).end_of_file, 1);

    EXPECT_EQ(oruSetFilePointer(file, 3, nullptr, ORU_FILE_BEGIN), 3u);
    EXPECT_EQ(oruSetEndOfFile(file), 1);
    EXPECT_EQ(oruGetFileSize(file, nullptr), 3u);
    EXPECT_EQ(oruSetFilePointer(file, -4, nullptr, ORU_FILE_CURRENT), ORU_INVALID_SIZE);
    EXPECT_EQ(oruReadFile(file, buffer_, 1, nullptr, nullptr), 0) << "nowhere to count";

    EXPECT_TRUE(is_there(folder_ / "file"));
    EXPECT_EQ(oruCloseHandle(file), 1);
    EXPECT_FALSE(is_there(folder_ / "file"));
}

TEST_F(Files, SizesAndPositionsPastFourGigabytesShowTheirLowWord) {
    const oruHandle file = open_file(folder_ / "large", ORU_ACCESS_WRITE, ORU_CREATE_NEW);
    for (const int64_t size : {INT64_C(131070), INT64_C(0x80000005), INT64_C(0x300000007)}) {
        oruSetFilePointer(file, 0, nullptr, ORU_FILE_BEGIN);
        for (int64_t left = size; left > 0; left -= INT32_MAX) {
            oruSetFilePointer(file, static_cast<int32_t>(std::min<int64_t>(left, INT32_MAX)),
                              nullptr, ORU_FILE_CURRENT);
        }
        const uint32_t low = static_cast<uint32_t>(size);
        EXPECT_EQ(oruSetFilePointer(file, 0, nullptr, ORU_FILE_CURRENT), low);
        ASSERT_EQ(oruSetEndOfFile(file), 1);
        EXPECT_EQ(oruGetFileSize(file, &count_), low);
        EXPECT_EQ(count_, size / 65535) << "not the high word";
    }
    EXPECT_EQ(oruCloseHandle(file), 1);
}

TEST_F(Files, HandlesThatAreNoFilesAreRefused) {
    const oruHandle event = oruCreateEvent(nullptr, 1, 0, nullptr);
    for (const oruHandle no_file : {oruHandle{}, ORU_INVALID_HANDLE, event}) {
        EXPECT_EQ(oruReadFile(no_file, buffer_, 1, &count_, nullptr), 0);
        EXPECT_EQ(oruWriteFile(no_file, buffer_, 1, &count_, nullptr), 0);
        EXPECT_EQ(oruGetFileSize(no_file, &count_), ORU_INVALID_SIZE);
        EXPECT_EQ(oruSetFilePointer(no_file, 0, nullptr, 0), ORU_INVALID_SIZE);
        EXPECT_EQ(oruSetEndOfFile(no_file), 0);
    }
    EXPECT_EQ(count_, 77u);
    EXPECT_EQ(oruCloseHandle(event), 1);
}

// A name that the record cannot hold opens all the same; only deletion would hit another file.
TEST_F(Files, LongNamesOpen) {
    const std::string name = folder_.path() + std::string(300, '/') + "file";
    const oruHandle file = open_file(name, ORU_ACCESS_WRITE, ORU_CREATE_NEW);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::string(record_of(file).path, 260), name.substr(0, 260));
    EXPECT_EQ(oruCloseHandle(file), 1);
    EXPECT_TRUE(is_there(name));
}

TEST_F(Files, TemporaryNamesAreNewEmptyFiles) {
    const int lowest_free = open("/", O_RDONLY);
    close(lowest_free);
    for (const auto& [prefix, unique, result] : {std::tuple{"pre", 0u, 1u}, {"", 42u, 42u}}) {
        const std::string start = folder_ / prefix;
        std::string name(start.size() + 7, '?');
        EXPECT_EQ(oruGetTempFileName(folder_.path().c_str(), prefix, unique, name.data()), result);
        EXPECT_EQ(name.substr(0, start.size()), start);
        EXPECT_EQ(std::strlen(name.c_str()), start.size() + 6);
        EXPECT_TRUE(is_there(name.c_str()));
    }
    EXPECT_EQ(fcntl(lowest_free, F_GETFD), -1) << "left open";
    EXPECT_EQ(oruGetTempFileName((folder_ / "missing").c_str(), "", 7, buffer_), 0u);
    EXPECT_STREQ(buffer_, "");
}

TEST_F(Files, CopyAndMoveByName) {
    const std::string from = folder_.write("from", "text"), to = folder_ / "to";
    EXPECT_EQ(oruCopyFile(from.c_str(), to.c_str(), 1), 1);
    EXPECT_EQ(oruCopyFile(from.c_str(), to.c_str(), 1), 0) << "must not exist";
    EXPECT_EQ(oruCopyFile(from.c_str(), to.c_str(), 2), 1) << "a flag of 2 is no flag";
    EXPECT_EQ(oruMoveFile(to.c_str(), from.c_str()), 1);
    EXPECT_FALSE(is_there(to));
    EXPECT_EQ(oruMoveFile(to.c_str(), from.c_str()), 0);
    EXPECT_EQ(contents_of(from), "text");
}

// The small file family on top.
TEST_F(Files, FileObjectsGoThroughTheirTable) {
    orFile* file = nullptr;
    const std::string name = folder_ / "object";
    ASSERT_EQ(orCreateFile(name.c_str(), ORU_ACCESS_READ_WRITE, 0, ORU_CREATE_NEW,
                           ORU_DELETE_ON_CLOSE, &file),
              ORU_SUCCESS);
    EXPECT_EQ(file->operations->write(file, "abc", 3, &count_), ORU_SUCCESS);
    EXPECT_EQ(file->operations->get_size(file, &count_), ORU_SUCCESS);
    EXPECT_EQ(count_, 3u);
    EXPECT_EQ(file->operations->read(file, buffer_, 3, &count_), ORU_FAILURE);
    EXPECT_EQ(count_, 0u) << "the end of the file";
    EXPECT_EQ(file->operations->close(file), ORU_SUCCESS);
    EXPECT_FALSE(is_there(name));
    EXPECT_EQ(orCreateFile("", ORU_ACCESS_READ, 0, ORU_OPEN_EXISTING, 0, &file), ORU_FAILURE);
    EXPECT_EQ(file, nullptr);
}

}  // namespace
