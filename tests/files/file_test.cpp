#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

#include "support/fault_injection.h"
#include "support/temporary_folder.h"
#include "sync/error_word.h"
#include "sync/file_record.h"
#include "sync/handle_object.h"
#include "vlrcomn/file.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

namespace {

using fault_injection::walk_failures;
using velora_com::qel::sync::FileRecord;
using velora_com::qel::sync::nErrno;

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
    const auto refuses = [](const std::string& name, uint32_t access, uint32_t disposition,
                            uint32_t flags) {
        nErrno = 0;
        return open_file(name, access, disposition, flags) == nullptr && nErrno == EINVAL;
    };
    const std::string name = folder_ / "new";
    // The record holds the beginning only, which deletion must not take for the name.
    const std::string long_name = folder_ / std::string(258 - folder_.path().size(), '/') + "x";
    EXPECT_TRUE(refuses(name, ORU_ACCESS_WRITE | 1, ORU_CREATE_ALWAYS, 0));
    EXPECT_TRUE(refuses(name, ORU_ACCESS_WRITE, 5, 0));
    EXPECT_TRUE(refuses(name, ORU_ACCESS_WRITE, ORU_CREATE_ALWAYS, ORU_DELETE_ON_CLOSE | 128));
    EXPECT_TRUE(refuses(long_name, ORU_ACCESS_WRITE, ORU_CREATE_ALWAYS, ORU_DELETE_ON_CLOSE));
    EXPECT_TRUE(std::filesystem::is_empty(folder_.path()));
    const oruHandle file = open_file(long_name, ORU_ACCESS_WRITE, ORU_CREATE_NEW);
    ASSERT_NE(file, nullptr) << "nothing is deleted";
    EXPECT_EQ(std::string(record_of(file).path, 260), long_name);
    EXPECT_EQ(oruCloseHandle(file), 1);
}

TEST_F(Files, DispositionsDecideWhatIsMadeAndEmptied) {
    // What the file holds then, or the reason of the failure.
    const auto opened = [](const std::string& name, uint32_t disposition) {
        const oruHandle file = open_file(name, ORU_ACCESS_READ_WRITE, disposition, 128);
        const std::string result = file != nullptr ? contents_of(name) : std::to_string(errno);
        EXPECT_TRUE(file == nullptr || fcntl(record_of(file).descriptor, F_GETFD) == FD_CLOEXEC);
        EXPECT_EQ(oruCloseHandle(file), 1);
        return result;
    };
    const std::string there = folder_.write("there", "old"), missing = folder_ / "missing";
    EXPECT_EQ(opened(there, ORU_CREATE_NEW), std::to_string(EEXIST));
    EXPECT_EQ(opened(there, ORU_OPEN_ALWAYS), "old");
    EXPECT_EQ(opened(there, ORU_OPEN_EXISTING), "old");
    EXPECT_EQ(opened(missing, ORU_OPEN_EXISTING), std::to_string(ENOENT));
    EXPECT_EQ(opened(there, ORU_CREATE_ALWAYS), "");
    EXPECT_EQ(opened(missing, ORU_CREATE_ALWAYS), "");
}

// Through the small file family on top.
TEST_F(Files, ReadsWritesAndMovesTheirPosition) {
    const std::string name = folder_ / "file";
    orFile* file = nullptr;
    ASSERT_EQ(orCreateFile(name.c_str(), ORU_ACCESS_READ_WRITE, 0, ORU_CREATE_NEW,
                           ORU_DELETE_ON_CLOSE, &file),
              ORU_SUCCESS);
    EXPECT_EQ(file->operations->write(file, "0123456789", 10, &count_), ORU_SUCCESS);
    EXPECT_EQ(file->operations->get_size(file, &count_), ORU_SUCCESS);
    EXPECT_EQ(count_, 10u);
    EXPECT_EQ(oruSetFilePointer(file->handle, -4, nullptr, ORU_FILE_END), 6u);
    EXPECT_EQ(oruSetFilePointer(file->handle, -7, nullptr, ORU_FILE_CURRENT), ORU_INVALID_SIZE);
    EXPECT_EQ(oruReadFile(file->handle, buffer_, 1, nullptr, nullptr), 0) << "nowhere to count";
    EXPECT_EQ(file->operations->read(file, buffer_, sizeof buffer_, &count_), ORU_SUCCESS);
    EXPECT_EQ(std::string(buffer_, count_), "6789");
    EXPECT_EQ(file->operations->read(file, buffer_, sizeof buffer_, &count_), ORU_FAILURE);
    EXPECT_EQ(oruReadFile(file->handle, buffer_, sizeof buffer_, &count_, nullptr), 1);
    EXPECT_EQ(count_, 0u);
    EXPECT_EQ(file->operations->close(file), ORU_SUCCESS);
    EXPECT_FALSE(is_there(name));
    EXPECT_EQ(orCreateFile("", ORU_ACCESS_READ, 0, ORU_OPEN_EXISTING, 0, &file), ORU_FAILURE);
    EXPECT_EQ(file, nullptr);
    EXPECT_EQ(orCreateFile(name.c_str(), ORU_ACCESS_WRITE, 0, ORU_CREATE_NEW, 0, nullptr),
              ORU_FAILURE);
    EXPECT_FALSE(is_there(name));
}

TEST_F(Files, SizesAndPositionsPastFourGigabytesShowTheirLowWord) {
    const oruHandle file = open_file(folder_ / "large", ORU_ACCESS_WRITE, ORU_CREATE_NEW);
    int64_t size = 0;
    for (const int32_t more : {131070, INT32_MAX, INT32_MAX, INT32_MAX, 12}) {
        size += more;
        const auto low = static_cast<uint32_t>(size);
        EXPECT_EQ(oruSetFilePointer(file, more, nullptr, ORU_FILE_CURRENT), low);
        ASSERT_EQ(oruSetEndOfFile(file), 1);
        EXPECT_EQ(oruGetFileSize(file, &count_), low);
        EXPECT_EQ(count_, size / 65535) << "not the high word";
    }
    oruSetFilePointer(file, 3, nullptr, ORU_FILE_BEGIN);
    EXPECT_EQ(oruSetEndOfFile(file), 1);
    EXPECT_EQ(oruGetFileSize(file, nullptr), 3u);
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
        orFile object = {nullptr, no_file};
        for (orFile* const file : {&object, static_cast<orFile*>(nullptr)}) {
            EXPECT_EQ(orReadFile(file, buffer_, 1, &count_), ORU_FAILURE);
            EXPECT_EQ(orWriteFile(file, buffer_, 1, &count_), ORU_FAILURE);
            EXPECT_EQ(orGetFileSize(file, &count_), ORU_FAILURE);
        }
        EXPECT_EQ(orGetFileSize(&object, nullptr), ORU_FAILURE);
    }
    EXPECT_EQ(orCloseFile(nullptr), ORU_SUCCESS);
    EXPECT_EQ(oruCloseHandle(event), 1);
}

// The descriptor's number may be another file's by then.
TEST_F(Files, ARecordThatCouldNotBeClosedIsSpent) {
    const std::string name = folder_ / "gone";
    const oruHandle file =
        open_file(name, ORU_ACCESS_READ_WRITE, ORU_CREATE_NEW, ORU_DELETE_ON_CLOSE);
    std::filesystem::remove(name);
    EXPECT_EQ(oruCloseHandle(file), 0);
    EXPECT_EQ(errno, ENOENT);
    const oruHandle other = open_file(name, ORU_ACCESS_READ_WRITE, ORU_CREATE_NEW);
    EXPECT_EQ(oruWriteFile(file, "x", 1, &count_, nullptr), 0);
    EXPECT_EQ(oruCloseHandle(file), 0);
    EXPECT_EQ(oruGetFileSize(other, nullptr), 0u) << "written to, or closed";
    EXPECT_EQ(oruCloseHandle(other), 1);
    EXPECT_TRUE(is_there(name));
    delete static_cast<FileRecord*>(file->pData);
    velora_com::qel::sync::HandleRecordDeleter()(file);
}

TEST_F(Files, ByName) {
    const std::string from = folder_.write("from", "text"), to = folder_ / "to";
    EXPECT_EQ(oruCopyFile(from.c_str(), to.c_str(), 1), 1);
    EXPECT_EQ(oruCopyFile(from.c_str(), to.c_str(), 1), 0) << "must not exist";
    EXPECT_EQ(oruCopyFile(from.c_str(), to.c_str(), 2), 1) << "a flag of 2 is no flag";
    EXPECT_EQ(oruMoveFile(to.c_str(), from.c_str()), 1);
    EXPECT_EQ(contents_of(from), "text");
    EXPECT_EQ(oruMoveFile(to.c_str(), from.c_str()), 0);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(oruMoveFile(from.c_str(), nullptr) + oruMoveFile(nullptr, to.c_str()), 0);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(oruCopyFile(from.c_str(), nullptr, 0) + oruCopyFile(nullptr, to.c_str(), 0), 0);
    EXPECT_EQ(oruSetFileAttributes(from.c_str(), 1), 1);
    EXPECT_EQ(oruGetFileVersionInfo(from.c_str(), 0, 0, nullptr), 0);
    EXPECT_EQ(oruVerQueryValue(nullptr, "", nullptr, nullptr), 0);

    const int lowest_free = open("/", O_RDONLY);
    close(lowest_free);
    const std::string start = folder_ / "pre";
    std::string name(start.size() + 7, '?');
    EXPECT_EQ(oruGetTempFileName(folder_.path().c_str(), "pre", 0, name.data()), 1u);
    EXPECT_EQ(std::strlen(name.c_str()), start.size() + 6);
    EXPECT_TRUE(name.find(start) == 0 && is_there(name.c_str()));
    EXPECT_EQ(oruGetTempFileName(folder_.path().c_str(), nullptr, 42, name.data()), 42u);
    EXPECT_EQ(fcntl(lowest_free, F_GETFD), -1) << "left open";
    EXPECT_EQ(oruGetTempFileName((folder_ / "missing").c_str(), "", 7, buffer_), 0u);
    EXPECT_EQ(oruGetTempFileName(nullptr, "", 7, buffer_), 0u);
    EXPECT_EQ(oruGetTempFileName(folder_.path().c_str(), "", 7, nullptr), 0u);
}

#if defined(FAULT_INJECTION)
TEST_F(Files, WhatFailsIsUndone) {
    const std::string name = folder_.write("file", "text"), to = folder_ / "to";
    orFile* file = nullptr;
    const auto opened = walk_failures(
        [&] {
            return orCreateFile(name.c_str(), ORU_ACCESS_READ, 0, ORU_OPEN_ALWAYS, 0, &file) == 0;
        },
        [&] { EXPECT_EQ(orCloseFile(file), ORU_SUCCESS); });
    EXPECT_EQ(opened.calls, 7) << "object, table, open, two records, two locks";
    EXPECT_EQ(opened.tolerated, 0);

    intptr_t search = 0;
    oruFindData data;
    const auto searched =
        walk_failures([&] { return (search = oruFindFirstDirEnt(name.c_str(), &data)) > 0; },
                      [&] { EXPECT_EQ(oruFindCloseDirEnt(search), 1); });
    EXPECT_EQ(searched.tolerated, 1) << "an entry without a status is found all the same";
    EXPECT_EQ(search, 1) << "a slot was lost";

    const auto copied = walk_failures(
        [&] { return orumcomn_copy_file(name.c_str(), to.c_str(), 1); },
        [&] { EXPECT_TRUE(contents_of(to) == "text" && std::filesystem::remove(to)); });
    EXPECT_EQ(copied.tolerated, 4) << "opening is tried again, the source need not close";
    EXPECT_EQ(contents_of(name), "text");
}
#endif

}  // namespace
