/**
 * @file
 * @brief File objects with a table of operations, directory enumeration, tree deletion, copying,
 * directories and GUID text.
 *
 * Paths are narrow text with '/' separators, except in functions whose name ends in W. Statuses are
 * #ORU_SUCCESS and #ORU_FAILURE. A failed system call leaves its reason in `errno` unless a function
 * says otherwise; refused arguments, null pointers among them, leave `errno` as it was unless it is
 * said that they do not.
 *
 * Thread safety: every function may be called from any thread; a file object and an enumeration
 * handle by one thread at a time.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_FILE_SYSTEM_H
#define VLRCOMN_FILE_SYSTEM_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <wchar.h>

#include "vlrcomn/file.h"
#include "vlrcomn/guid.h"
#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup utilities
 * @{ */

struct orFile;

/** The operations of a file object, in the order close, read, write, size. */
typedef struct orFileOperations {
    /** orCloseFile(). */
    uint32_t (*close)(struct orFile* file);
    /** orReadFile(). */
    uint32_t (*read)(struct orFile* file, void* buffer, uint32_t count, uint32_t* bytes_read);
    /** orWriteFile(). */
    uint32_t (*write)(struct orFile* file, const void* buffer, uint32_t count,
                      uint32_t* bytes_written);
    /** orGetFileSize(). */
    uint32_t (*get_size)(struct orFile* file, uint32_t* size);
} orFileOperations;

/** A file object: two words. Each has a table of its own, freed with it by orCloseFile(). */
typedef struct orFile {
    orFileOperations* operations; /**< orCloseFile, orReadFile, orWriteFile, orGetFileSize. */
    oruHandle handle;             /**< The open file, of file.h. */
} orFile;

/**
 * Opens or makes a file and wraps it in a file object.
 *
 * @param name, access, share_mode, disposition, flags as for oruCreateFileAW().
 * @param file receives the object, or null on failure. Null is refused before anything is opened.
 * @return a status.
 */
VLRCOMN_API uint32_t orCreateFile(const char* name, uint32_t access, uint32_t share_mode,
                                  uint32_t disposition, uint32_t flags, orFile** file);

/**
 * Reads once from the current position.
 *
 * @param file the object; null is refused.
 * @param buffer room for `count` bytes.
 * @param count bytes wanted.
 * @param bytes_read receives the bytes read, 0 at the end of the file; must be valid.
 * @return #ORU_SUCCESS only when at least one byte was read; the end of the file is a failure like any
 * other, as is a read of no bytes.
 */
VLRCOMN_API uint32_t orReadFile(orFile* file, void* buffer, uint32_t count, uint32_t* bytes_read);

/**
 * Writes once at the current position; fewer bytes than wanted are a success.
 *
 * @param file the object; null is refused.
 * @param buffer `count` bytes.
 * @param count bytes to write.
 * @param bytes_written receives the bytes written; must be valid.
 * @return a status.
 */
VLRCOMN_API uint32_t orWriteFile(orFile* file, const void* buffer, uint32_t count,
                                 uint32_t* bytes_written);

/**
 * Size of the file.
 *
 * @param file the object; null is refused.
 * @param size receives the low 32 bits of the size, all-ones on failure; null is refused.
 * @return a status; a size whose low 32 bits are all-ones counts as a failure.
 */
VLRCOMN_API uint32_t orGetFileSize(orFile* file, uint32_t* size);

/**
 * Closes the file and frees the object and its table, whatever the closing gives.
 *
 * @param file the object; closing null is a success.
 * @return a status: whether oruCloseHandle() succeeded.
 */
VLRCOMN_API uint32_t orCloseFile(orFile* file);

/**
 * Whether a path names a directory, or a link to one. One backslash at its end is not looked at.
 *
 * @param lpszFolder the path. Null ends the process: the assertion "lpszFolder" of "../source/orufio",
 * line 190, fails in every build.
 * @return 1 or 0; 0 for an empty path and for one of more than 259 bytes.
 */
VLRCOMN_API int orFolderExists(const char* lpszFolder);

/**
 * oruFindFirstDirEnt() with another failure value.
 *
 * @param pattern directory and pattern, as `path` there.
 * @param data receives the entry; left alone on failure.
 * @return the enumeration handle, which the caller owns and closes with orumcomn_findclose(), or 0; when
 * nothing matches, `errno` stays as it was.
 */
VLRCOMN_API intptr_t orumcomn_findfirstA(const char* pattern, oruFindData* data);

/**
 * oruFindNextDirEnt().
 *
 * @param enumeration from orumcomn_findfirstA().
 * @param data receives the entry; left alone when there is none left.
 * @return whether another entry was found; at the end `errno` stays as it was.
 */
VLRCOMN_API bool orumcomn_findnextA(intptr_t enumeration, oruFindData* data);

/**
 * oruFindCloseDirEnt().
 *
 * @param enumeration from orumcomn_findfirstA().
 * @return 1 or 0.
 */
VLRCOMN_API int orumcomn_findclose(intptr_t enumeration);

/**
 * Size of the file that a path leads to.
 *
 * @param path the path; null is a failure.
 * @param size receives the low 32 bits of the size, 0 when it cannot be told; null is refused.
 * @return a status.
 */
VLRCOMN_API uint32_t orumcomn_get_file_sizeA(const char* path, uint32_t* size);

/**
 * Deletes a directory with all its contents, as far as the system permits. What cannot be deleted
 * stays, the rest goes; nothing is reported and `errno` is undefined afterwards.
 *
 * A symbolic link inside the tree is deleted as a link and never followed; where the system has
 * `openat`, neither is a folder that is swapped for a link meanwhile. Elsewhere such a swap is
 * looked for before each removal, and only one in the moment between the look and the removal is
 * followed, by that one removal. Entries that others delete or make meanwhile do no harm; what is
 * made too late stays, and with it its folders. Any depth is deleted with a bounded number of
 * descriptors and bounded stack, as long as nobody moves folders of the tree about. Without `openat`
 * a folder too deep for a path is first moved up into `path` itself, under a number as its name; one
 * that cannot be moved there, for want of a right or across file systems, stays unless it is empty.
 * Folders keep their permissions: one that may not be read stays unless it is empty. File systems
 * mounted in the tree are emptied like the rest. Cancellation of the calling thread is held back
 * until the call is done.
 *
 * @param path the directory. Null, an empty path and one of more than 259 bytes do nothing. A link to
 * a directory is followed for its contents and stays itself. A path that ends in ".." is taken at its
 * word: "d/.." empties the directory that holds d, with d and all beside it.
 */
VLRCOMN_API void orumcomn_deltree(const char* path);

/**
 * orumcomn_deltree() of everything in a directory, which itself stays.
 *
 * @param path the directory.
 */
VLRCOMN_API void orumcomn_delsubtree(const char* path);

/**
 * Makes a GUID and its text: "{" + 36 characters in upper case + "}".
 *
 * @param guid receives the GUID; may be null.
 * @param text receives the text and its terminator, 39 bytes, in at most `size` bytes: a smaller
 * buffer gets the beginning of the text **without a terminator**, a larger one is filled up with
 * zeros. Null with a `size` other than 0 is refused.
 * @param size room in `text`, in bytes.
 * @return whether the GUID could be made. `guid` and `text` are left alone otherwise.
 */
VLRCOMN_API bool orumcomn_create_guid(GUID* guid, char* text, size_t size);

/**
 * Makes the missing directories of a path, each with the mode 0700 less the umask.
 *
 * Only what stands before a '/' is made: "/tmp/a/b" makes "/tmp/a", and "/tmp/a/b/" both. A '/' among
 * the first four characters makes nothing: "/a/b/" makes "/a/b" only if "/a" is there.
 *
 * @param path the path.
 * @return **#ORU_FAILURE, always**, also when every directory was made. Look with orFolderExists().
 * Nothing is made for a null path or one of more than 259 bytes.
 */
VLRCOMN_API uint32_t orumcomn_MakeRecursiveDirectoryA(const char* path);

/**
 * orumcomn_MakeRecursiveDirectoryA() for a wide path, of whose characters only the low byte counts:
 * characters past 255 name something else and are not supported.
 *
 * @param path the path. Nothing is made for one with a character whose low byte is 0.
 * @return #ORU_FAILURE, always.
 */
VLRCOMN_API uint32_t orumcomn_MakeRecursiveDirectoryW(const wchar_t* path);

/**
 * Copies a file's contents. Directories of the destination that are missing are made, as by
 * orumcomn_MakeRecursiveDirectoryA(), also when the copy then fails. A new file has the mode 0666 less
 * the umask; a destination that is there keeps its mode and owner and loses its contents.
 *
 * The source is opened before the destination is touched. Source and destination that are one file,
 * by whatever names, are left whole and the call fails. When reading, writing or closing fails, a
 * partial destination stays. Cancellation of the calling thread is held back until the call is done.
 *
 * @param source the file to read; null and directories fail.
 * @param destination the file to write; null and directories fail.
 * @param overwrite 1 allows a readable destination to be there; anything else refuses it. (A
 * destination that is there but may not be read does not count as being there.)
 * @return true when every byte was copied and the destination was closed without error, otherwise
 * false with `errno` telling why a system call failed.
 */
VLRCOMN_API bool orumcomn_copy_file(const char* source, const char* destination, int overwrite);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
