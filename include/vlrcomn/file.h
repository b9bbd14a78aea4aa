/**
 * @file
 * @brief Files and directory searches.
 *
 * Win32-style calls over POSIX descriptors. True is 1 and false is 0; flags are compared against exactly 1. Names are
 * narrow text with '/' separators, handed to the system as they are. A failed system call leaves its reason in
 * `errno`, see handle.h. Refused arguments, null pointers among them, leave `errno` as it was unless a function says
 * otherwise; for exhausted memory it depends on the C library.
 *
 * Writing a text (examples/report.cpp):
 * @snippet report.cpp write
 *
 * Every descriptor is closed on exec. Files of any size work; 32-bit results are the low 32 bits of
 * sizes and positions.
 *
 * Thread safety: a file handle carries no lock. Two threads may use one at once as far as the system
 * allows it for a descriptor, whose position they share; nobody may use it while it is closed. One
 * search handle must not be used by two threads at once; different ones may.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_FILE_H
#define VLRCOMN_FILE_H

#include <dirent.h>
#include <stdint.h>

#include "vlrcomn/types.h"

#if defined(__GLIBC__) && !defined(__USE_FILE_OFFSET64) && !defined(__INO_T_MATCHES_INO64_T)
#error "Compile with -D_FILE_OFFSET_BITS=64: the library's struct dirent is the one of large files."
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/** @name Desired access of oruCreateFileAW()
 * @{ */
#define ORU_ACCESS_READ UINT32_C(0x80000000)       /**< Reading only. */
#define ORU_ACCESS_WRITE UINT32_C(0x40000000)      /**< Writing only. */
#define ORU_ACCESS_READ_WRITE UINT32_C(0xC0000000) /**< Both. */
/** @} */

/** @name Creation dispositions of oruCreateFileAW()
 * @{ */
#define ORU_CREATE_NEW UINT32_C(1)    /**< The file must not be there yet. */
#define ORU_CREATE_ALWAYS UINT32_C(2) /**< A new file, or one that is there emptied. */
#define ORU_OPEN_EXISTING UINT32_C(3) /**< The file must be there. */
#define ORU_OPEN_ALWAYS UINT32_C(4)   /**< The file that is there, or a new one. */
/** @} */

/** @name Flags and attributes of oruCreateFileAW()
 * @{ */
#define ORU_ATTRIBUTE_NORMAL UINT32_C(0x80)      /**< No attribute; the same as 0. */
#define ORU_DELETE_ON_CLOSE UINT32_C(0x04000000) /**< The name goes when the handle is closed. */
/** @} */

/** @name Move methods of oruSetFilePointer()
 * @{ */
#define ORU_FILE_BEGIN UINT32_C(0)   /**< The distance counts from the beginning. */
#define ORU_FILE_CURRENT UINT32_C(1) /**< From the current position. */
#define ORU_FILE_END UINT32_C(2)     /**< From the end. */
/** @} */

/** Failure of a function that returns a 32-bit size or position; also a value that may occur. */
#define ORU_INVALID_SIZE UINT32_C(0xFFFFFFFF)

#define ORU_ATTRIBUTE_DIRECTORY UINT32_C(0x10) /**< The entry is a directory, or a link to one. */

/** Failure of oruFindFirstDirEnt(). */
#ifdef __cplusplus
#define ORU_INVALID_SEARCH (static_cast<intptr_t>(-1))
#else
#define ORU_INVALID_SEARCH ((intptr_t)-1)
#endif

#define ORU_MAX_SEARCHES 50 /**< How many searches can be open at once. */

/** What a directory search tells of an entry: 284 bytes on every host. */
typedef struct oruFindData {
    uint32_t attributes;        /**< #ORU_ATTRIBUTE_DIRECTORY or 0. */
    uint32_t reserved;          /**< 0. */
    uint32_t access_time;       /**< Seconds since 1970-01-01 UTC, low 32 bits. */
    uint32_t modification_time; /**< Seconds since 1970-01-01 UTC, low 32 bits. */
    uint32_t size;              /**< Low 32 bits of the size in bytes. */
    char name[260];             /**< The entry's name without its directory, terminated. */
    unsigned char reserved2[4]; /**< 0. */
} oruFindData;

/**
 * Opens or makes a file.
 *
 * @param name the file's name, of any length that the system takes, but see `flags`.
 * @param access exactly #ORU_ACCESS_READ, #ORU_ACCESS_WRITE or #ORU_ACCESS_READ_WRITE.
 * @param share_mode,security ignored.
 * @param disposition ORU_CREATE_NEW to ORU_OPEN_ALWAYS. A new file gets the mode 0660 less the umask.
 * @param flags 0, #ORU_ATTRIBUTE_NORMAL or #ORU_DELETE_ON_CLOSE alone. The last removes the name when
 * the handle is closed, whatever lies there by then; a name of more than 259 bytes is refused with it.
 * @param template_file ignored.
 * @return the handle, which the caller owns and closes with oruCloseHandle(), or null (never
 * #ORU_INVALID_HANDLE): an argument is refused, a null name included, before anything is opened; the system
 * refuses (`errno` tells why); memory is exhausted; or a lock cannot be made. In the last two cases the file
 * is open already, and one that was created stays.
 */
VLRCOMN_API oruHandle oruCreateFileAW(const char* name, uint32_t access, uint32_t share_mode,
                                      void* security, uint32_t disposition, uint32_t flags,
                                      oruHandle template_file);

/**
 * Reads once from the current position.
 *
 * @param file a file handle; anything else is refused.
 * @param buffer room for `count` bytes.
 * @param count bytes wanted.
 * @param bytes_read receives the bytes read, which may be fewer; null is refused. Left alone on failure.
 * @param overlapped ignored.
 * @return 1 (also at the end of the file, with 0 bytes), or 0 with `errno` telling why. An interrupted
 * call fails with EINTR.
 */
VLRCOMN_API int oruReadFile(oruHandle file, void* buffer, uint32_t count, uint32_t* bytes_read,
                            void* overlapped);

/**
 * Writes once at the current position.
 *
 * @param file a file handle; anything else is refused.
 * @param buffer `count` bytes.
 * @param count bytes to write.
 * @param bytes_written receives the bytes written, which may be fewer; null is refused. Left alone on failure.
 * @param overlapped ignored.
 * @return 1, or 0 with `errno` telling why. An interrupted call fails with EINTR.
 */
VLRCOMN_API int oruWriteFile(oruHandle file, const void* buffer, uint32_t count,
                             uint32_t* bytes_written, void* overlapped);

/**
 * Moves a file's position.
 *
 * @param file a file handle; anything else fails with `errno` EBADF.
 * @param distance signed distance in bytes. One call moves at most 2 GiB.
 * @param high_distance ignored; not written either.
 * @param method #ORU_FILE_BEGIN, #ORU_FILE_CURRENT or #ORU_FILE_END.
 * @return the low 32 bits of the new position, or #ORU_INVALID_SIZE with `errno` telling why. The
 * position 4 GiB less one looks like the failure: set `errno` to 0 first where it can occur.
 */
VLRCOMN_API uint32_t oruSetFilePointer(oruHandle file, int32_t distance, int32_t* high_distance,
                                       uint32_t method);

/**
 * Ends a file at its current position: cuts it off there, or fills it up with zeros.
 *
 * @param file a file handle; anything else fails with `errno` EBADF.
 * @return 1, or 0 with `errno` telling why.
 */
VLRCOMN_API int oruSetEndOfFile(oruHandle file);

/**
 * Size of a file.
 *
 * @param file a file handle; anything else is refused.
 * @param high receives the size divided by 65535, low 32 bits: a figure of its own, not the upper half
 * of the size. May be null; left alone on failure.
 * @return the low 32 bits of the size, or #ORU_INVALID_SIZE with `errno` telling why.
 */
VLRCOMN_API uint32_t oruGetFileSize(oruHandle file, uint32_t* high);

/**
 * Makes an empty file of a new name, directory + "/" + prefix + six characters, and leaves it there.
 *
 * @param directory where; null is refused.
 * @param prefix start of the name; may be null.
 * @param unique returned as it is, or 1 for 0; the name does not depend on it.
 * @param out receives the name; must have room for the lengths of `directory` and `prefix` and 8 more
 * bytes. Null is refused. Left alone on failure.
 * @return `unique`, or 0 on failure with `errno` telling why.
 */
VLRCOMN_API uint32_t oruGetTempFileName(const char* directory, const char* prefix, uint32_t unique,
                                        char* out);

/**
 * Copies a file; see orumcomn_copy_file() in file_system.h.
 *
 * @param existing_name,new_name the file to read and the one to write.
 * @param fail_if_exists 1 refuses a destination that is there.
 * @return 1 or 0.
 */
VLRCOMN_API int oruCopyFile(const char* existing_name, const char* new_name, int fail_if_exists);

/**
 * Renames a file; replaces what has the new name, if anything.
 *
 * @param existing_name,new_name the name that it has and the one that it gets; null fails with `errno` EINVAL.
 * @return 1, or 0 with `errno` telling why; between file systems it fails.
 */
VLRCOMN_API int oruMoveFile(const char* existing_name, const char* new_name);

/**
 * Kept for source compatibility; does nothing.
 *
 * @param name,attributes ignored.
 * @return 1.
 */
VLRCOMN_API int oruSetFileAttributes(const char* name, uint32_t attributes);

/**
 * Kept for source compatibility; does nothing.
 *
 * @param name,handle,length ignored.
 * @param data ignored, not written.
 * @return 0.
 */
VLRCOMN_API int oruGetFileVersionInfo(const char* name, uint32_t handle, uint32_t length,
                                      void* data);

/**
 * Kept for source compatibility; does nothing.
 *
 * @param block,sub_block ignored.
 * @param buffer,length ignored, not written.
 * @return 0.
 */
VLRCOMN_API int oruVerQueryValue(const void* block, const char* sub_block, void** buffer,
                                 uint32_t* length);

/**
 * Matches a name against a pattern, byte by byte and with regard to case.
 *
 * In a pattern "?" stands for one byte and "*" for any number of them. Two oddities are part of the
 * rules: a pattern matches every name that it matches a beginning of ("abc" matches "abcdef"), and a
 * "*" that finds the name used up matches, whatever follows it ("a*x" matches "a").
 *
 * Takes at most time in proportion to the product of the two lengths and allocates nothing.
 *
 * @param pattern null or empty matches every name.
 * @param name the name; null is read as empty.
 * @return 0 when the name matches, 1 when not.
 */
VLRCOMN_API int oruWildCardMatch(const char* pattern, const char* name);

/**
 * Starts a directory search and finds the first matching entry.
 *
 * @param path directory and pattern, parted at the last '/'; without one the directory is ".". An
 * empty pattern finds everything, "." and ".." included. A directory (with its '/') or a pattern of
 * more than 259 bytes is refused, as is a null path.
 * @param data receives the entry; left alone on failure.
 * @return the search handle, 1 to #ORU_MAX_SEARCHES, which the caller owns and closes with
 * oruFindCloseDirEnt(), or #ORU_INVALID_SEARCH: nothing matches (`errno` stays as it was), the directory
 * cannot be read (`errno` tells why), a null argument or a length is refused (`errno` is ENAMETOOLONG for a
 * length), all searches are in use (`errno` stays as it was), or memory is exhausted.
 */
VLRCOMN_API intptr_t oruFindFirstDirEnt(const char* path, oruFindData* data);

/**
 * Finds the next matching entry, in the order of the directory.
 *
 * An entry whose name has more than 259 bytes is passed over. Times, size and attributes are those of
 * what the name leads to (of a link's target) and stay 0 when that cannot be told, or when directory
 * and name together have more than 259 bytes.
 *
 * @param search a search handle.
 * @param data receives the entry; left alone on failure.
 * @return 1, or 0 when there is none left (`errno` stays as it was), the directory cannot be read on (`errno` tells
 * why), or the handle or `data` is refused (`errno` stays as it was).
 */
VLRCOMN_API int oruFindNextDirEnt(intptr_t search, oruFindData* data);

/**
 * Ends a directory search; its handle may be given out again at once.
 *
 * @param search a search handle.
 * @return 1, or 0 when the handle names no open search or the system's close fails.
 */
VLRCOMN_API int oruFindCloseDirEnt(intptr_t search);

/**
 * Fills a record for a directory entry, as the search does.
 *
 * @param data the record; all 284 bytes are written.
 * @param entry the entry; a name of more than 259 bytes is cut in the record. On 32-bit Linux it is that of large
 * files: this header wants _FILE_OFFSET_BITS=64 there, which the package configurations hand on.
 * @param directory where the entry lies, joined with the name as it is: it must end in '/', except
 * ".", which is joined with one.
 * @return `data`; null when an argument is null.
 */
VLRCOMN_API oruFindData* oruSetFindDataDirEnt(oruFindData* data, const struct dirent* entry,
                                              const char* directory);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
