#include "vlrcomn/file.h"
#include "support/fault_injection.h"
#include "sync/error_word.h"
#include "sync/file_record.h"
#include "sync/handle_object.h"
#include "vlrcomn/file_system.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"

using fault_injection::walk_failures;
using velora_com::qel::sync::FileRecord;
using velora_com::qel::sync::nErrno;

static oruHandle open_file(const std::string& name, uint32_t access, uint32_t disposition,
                           uint32_t flags = 0) {
    return oruCreateFileAW(name.c_str(), access, 0, nullptr, disposition, flags, nullptr);
}

static const FileRecord& record_of(oruHandle handle) {
    return *static_cast<FileRecord*>(handle->pData);
}

struct Files : testing::Test {
    const TemporaryFolder folder_;
    uint32_t count_ = 77;
    char buffer_[8] = "";
};

TEST_F(Files, RefusesWhatItDoesNotKnowBeforeTouchingAnything) {
    const auto refuses = [](const std::string& name, auto... options) {
        nErrno = 0;
        return open_file(name, options...) == nullptr && nErrno == EINVAL;
    };
    const std::string name = folder_ / "new";
    // The record holds the beginning only, which deletion must not take for the name.
    const std::string long_name = folder_ / std::string(258 - folder_.path().size(), '/') + "x";
    EXPECT_TRUE(refuses(name, ORU_ACCESS_WRITE | 1, ORU_CREATE_ALWAYS));
    EXPECT_TRUE(refuses(name, ORU_ACCESS_WRITE, 5u));
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
    const auto opened = [&](const char* name, uint32_t disposition) {
        const oruHandle file = open_file(folder_ / name, ORU_ACCESS_READ_WRITE, disposition, 128);
        const auto result = file != nullptr ? contents_of(folder_ / name) : std::to_string(errno);
        EXPECT_TRUE(file == nullptr || fcntl(record_of(file).descriptor, F_GETFD) == FD_CLOEXEC);
        EXPECT_EQ(oruCloseHandle(file), 1);
        return result;
    };
    folder_.write("there", "old");
    EXPECT_EQ(opened("there", ORU_CREATE_NEW), std::to_string(EEXIST));
    EXPECT_EQ(opened("there", ORU_OPEN_ALWAYS) + opened("there", ORU_OPEN_EXISTING), "oldold");
    EXPECT_EQ(opened("missing", ORU_OPEN_EXISTING), std::to_string(ENOENT));
    EXPECT_EQ(opened("there", ORU_CREATE_ALWAYS) + opened("missing", ORU_CREATE_ALWAYS), "");
}

// Through the small file family on top.
TEST_F(Files, ReadsWritesAndMovesTheirPosition) {
    const std::string name = folder_ / "file";
    orFile* file = nullptr;
    const auto create = [&](const char* path, uint32_t disposition, orFile** to) {
        return orCreateFile(path, ORU_ACCESS_READ_WRITE, 0, disposition, ORU_DELETE_ON_CLOSE, to);
    };
    ASSERT_EQ(create(name.c_str(), ORU_CREATE_NEW, &file), ORU_SUCCESS);
    const auto& does = *file->operations;
    EXPECT_EQ(does.write(file, "0123456789", 10, &count_), ORU_SUCCESS);
    EXPECT_TRUE(does.get_size(file, &count_) == ORU_SUCCESS && count_ == 10);
    EXPECT_EQ(oruSetFilePointer(file->handle, -4, nullptr, ORU_FILE_END), 6u);
    EXPECT_EQ(oruSetFilePointer(file->handle, -7, nullptr, ORU_FILE_CURRENT), ORU_INVALID_SIZE);
    EXPECT_EQ(oruReadFile(file->handle, buffer_, 1, nullptr, nullptr), 0) << "nowhere to count";
    EXPECT_EQ(does.read(file, buffer_, sizeof buffer_, &count_), ORU_SUCCESS);
    EXPECT_EQ(std::string(buffer_, count_), "6789");
    EXPECT_EQ(does.read(file, buffer_, sizeof buffer_, &count_), ORU_FAILURE);
    EXPECT_TRUE(oruReadFile(file->handle, buffer_, 8, &count_, nullptr) == 1 && count_ == 0);
    EXPECT_EQ(does.close(file), ORU_SUCCESS);
    EXPECT_TRUE(create("", ORU_OPEN_EXISTING, &file) == ORU_FAILURE && file == nullptr);
    EXPECT_EQ(create(name.c_str(), ORU_CREATE_NEW, nullptr), ORU_FAILURE);
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
    EXPECT_TRUE(oruSetEndOfFile(file) == 1 && oruGetFileSize(file, nullptr) == 3);
    EXPECT_EQ(oruCloseHandle(file), 1);
}

TEST_F(Files, HandlesThatAreNoFilesAreRefused) {
    const oruHandle event = oruCreateEvent(nullptr, 1, 0, nullptr);
    for (const oruHandle none : {oruHandle{}, ORU_INVALID_HANDLE, event}) {
        EXPECT_EQ(oruReadFile(none, buffer_, 1, &count_, nullptr) + oruSetEndOfFile(none), 0);
        EXPECT_EQ(oruWriteFile(none, buffer_, 1, &count_, nullptr), 0);
        EXPECT_EQ(oruGetFileSize(none, &count_), ORU_INVALID_SIZE);
        EXPECT_EQ(oruSetFilePointer(none, 0, nullptr, 0), ORU_INVALID_SIZE);
        orFile object = {nullptr, none};
        for (orFile* const file : {&object, static_cast<orFile*>(nullptr)}) {
            EXPECT_EQ(orReadFile(file, buffer_, 1, &count_), ORU_FAILURE);
            EXPECT_EQ(orWriteFile(file, buffer_, 1, &count_), ORU_FAILURE);
            EXPECT_EQ(orGetFileSize(file, &count_), ORU_FAILURE);
        }
        EXPECT_EQ(orGetFileSize(&object, nullptr), ORU_FAILURE);
    }
    EXPECT_TRUE(orCloseFile(nullptr) == ORU_SUCCESS && oruCloseHandle(event) == 1);
}

// The descriptor's number may be another file's by then.
TEST_F(Files, ARecordThatCouldNotBeClosedIsSpent) {
    const std::string name = folder_ / "gone";
    const auto make = [&](uint32_t flags) {
        return open_file(name, ORU_ACCESS_READ_WRITE, ORU_CREATE_NEW, flags);
    };
    const oruHandle file = make(ORU_DELETE_ON_CLOSE);
    std::filesystem::remove(name);
    EXPECT_TRUE(oruCloseHandle(file) == 0 && errno == ENOENT);
    const oruHandle other = make(0);
    EXPECT_EQ(oruWriteFile(file, "x", 1, &count_, nullptr) + oruCloseHandle(file), 0);
    EXPECT_EQ(oruGetFileSize(other, nullptr), 0u) << "written to, or closed";
    EXPECT_TRUE(oruCloseHandle(other) == 1 && is_there(name));
    delete static_cast<FileRecord*>(file->pData);
    velora_com::qel::sync::HandleRecordDeleter()(file);
}

TEST_F(Files, ByName) {
    const std::string path = folder_.path(), source = folder_.write("from", "text");
    const char *const from = source.c_str(), *const folder = path.c_str();
    const std::string target = folder_ / "to", start = folder_ / "pre", missing = folder_ / "no";
    const char* const to = target.c_str();
    EXPECT_EQ(oruCopyFile(from, to, 1), 1);
    EXPECT_EQ(oruCopyFile(from, to, 1), 0) << "must not exist";
    EXPECT_EQ(oruCopyFile(from, to, 2), 1) << "a flag of 2 is no flag";
    EXPECT_TRUE(oruMoveFile(to, from) == 1 && contents_of(from) == "text");
    EXPECT_TRUE(oruMoveFile(to, from) == 0 && errno == ENOENT);
    EXPECT_TRUE(oruMoveFile(from, nullptr) + oruMoveFile(nullptr, to) == 0 && errno == EINVAL);
    EXPECT_EQ(oruCopyFile(from, nullptr, 0) + oruCopyFile(nullptr, to, 0), 0);
    EXPECT_EQ(oruSetFileAttributes(from, 1), 1);
    EXPECT_EQ(oruGetFileVersionInfo(from, 0, 0, nullptr), 0);
    EXPECT_EQ(oruVerQueryValue(nullptr, "", nullptr, nullptr), 0);

    const int lowest_free = open("/", O_RDONLY);
    close(lowest_free);
    std::string name(start.size() + 7, '?');
    EXPECT_EQ(oruGetTempFileName(folder, "pre", 0, name.data()), 1u);
    EXPECT_TRUE(name.find('\0') == start.size() + 6 && name.find(start) == 0);
    EXPECT_TRUE(is_there(name.c_str()));
    EXPECT_EQ(oruGetTempFileName(folder, nullptr, 42, name.data()), 42u);
    EXPECT_EQ(fcntl(lowest_free, F_GETFD), -1) << "left open";
    for (const char* none : {missing.c_str(), static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(oruGetTempFileName(none, "", 7, buffer_), 0u);
    }
    EXPECT_EQ(oruGetTempFileName(folder, "", 7, nullptr), 0u);
}

#if defined(FAULT_INJECTION)
TEST_F(Files, WhatFailsIsUndone) {
    const std::string name = folder_.write("file", "text"), to = folder_ / "to";
    const char* const path = name.c_str();
    orFile* file = nullptr;
    const auto opened = walk_failures(
        [&] { return orCreateFile(path, ORU_ACCESS_READ, 0, ORU_OPEN_ALWAYS, 0, &file) == 0; },
        [&] { EXPECT_EQ(orCloseFile(file), ORU_SUCCESS); });
    EXPECT_EQ(opened.calls, 7) << "object, table, open, two records, two locks";
    EXPECT_EQ(opened.tolerated, 0);
    intptr_t search = 0;
    oruFindData data;
    const auto searched =
        walk_failures([&] { return (search = oruFindFirstDirEnt(path, &data)) > 0; },
                      [&] { EXPECT_EQ(oruFindCloseDirEnt(search), 1); });
    EXPECT_EQ(searched.tolerated, 1) << "an entry without a status is found all the same";
    EXPECT_EQ(search, 1) << "a slot was lost";
    const auto copied =
        walk_failures([&] { return orumcomn_copy_file(path, to.c_str(), 1); },
                      [&] { EXPECT_TRUE(contents_of(to) == "text" && unlink(to.c_str()) == 0); });
    EXPECT_EQ(copied.tolerated, 4) << "opening is tried again, the source need not close";
    EXPECT_EQ(contents_of(name), "text");
}
#endif
