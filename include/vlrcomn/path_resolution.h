/**
 * @file
 * @brief From a file name to the absolute path of the regular file that it finally names.
 *
 * Two classes do the work, usable from C++: FileNameFlattener works on the text alone,
 * FileNameResolver follows symbolic links. C callers have the resolver behind an opaque handle.
 *
 * Paths are byte strings; no encoding is assumed. Objects never change once they are made, so any
 * number of threads may read one. The working directory belongs to the process: a relative name is
 * taken against what it is at that moment.
 */
#ifndef VLRCOMN_PATH_RESOLUTION_H
#define VLRCOMN_PATH_RESOLUTION_H

#include "vlrcomn/types.h"

#ifdef __cplusplus

#include <string>

namespace velora_com::qel {

/** @addtogroup utilities
 * @{ */

/**
 * Makes a path absolute and takes "." and ".." out of it, purely as text: nothing is looked up, so
 * "link/.." is the folder of the link and not that of its target.
 *
 * What callers should know:
 * - Doubled slashes stay, and ".." takes away the empty piece between them ("/a//../b" is "/a/b").
 * - One slash at the end of the input is dropped. "/" alone therefore counts as relative, and like
 *   the empty text gives the base followed by a slash; "/a/.." gives the empty text, successfully.
 * - Two slashes follow a root: in the working directory "/" the path "a" gives "//a". The base "/" is
 *   "/" alone, so it stands for the working directory, and "a" gives that, "//" and "a"; the base
 *   "//" is the root and gives "//a".
 * - ".." above the root fails.
 * - When the working directory cannot be read (or has a path over 1023 bytes) a relative path is
 *   taken against the root.
 */
class VLRCOMN_API FileNameFlattener {
public:
    /**
     * Flattens a path. Never throws.
     *
     * @param path the path; a relative one is taken against the working directory
     */
    explicit FileNameFlattener(const std::string& path);

    /**
     * Flattens a path against a base. Fails when the base cannot be flattened, also when the path is
     * absolute. Never throws.
     *
     * @param path the path; a relative one is taken against @p base
     * @param base is itself flattened first, and taken against the working directory when it is
     * relative (an empty one too)
     */
    FileNameFlattener(const std::string& path, const std::string& base);

    /**
     * Does the work. The constructors have called it already; calling it again gives the same.
     * @return whether the path could be flattened
     */
    bool Flatten();

    /**
     * Gives the flat path.
     *
     * @param out receives the flat path; untouched on failure
     * @return whether the path could be flattened (and, memory permitting, copied)
     */
    bool GetFlatPath(std::string& out) const;

private:
    int32_t ok_ = 0;
    std::string input_;
    std::string flat_;
    std::string base_;
};

/**
 * Finds the regular file that a name stands for, through symbolic links.
 *
 * The name is flattened as FileNameFlattener does. While it names a symbolic link, the link's text
 * is flattened against the folder that holds the link, as text again. Only the last component is
 * followed this way: links in the middle of a path stay in the result and are left to the system.
 *
 * Resolution fails for anything but a regular file at the end (a folder, a device, nothing), after
 * 50 links, for a link text of more than 1023 bytes, and for a name with a zero byte inside. The
 * answer holds for the moment of construction; links may change afterwards.
 */
class VLRCOMN_API FileNameResolver {
public:
    /**
     * Resolves a name. Never throws; GetAbsolutePath() tells the outcome.
     *
     * @param path the name
     */
    explicit FileNameResolver(const std::string& path);

    /**
     * Gives the absolute path.
     *
     * @param out receives the absolute path of the regular file; untouched on failure
     * @return whether the name could be resolved (and, memory permitting, the path copied)
     */
    bool GetAbsolutePath(std::string& out) const;

private:
    int32_t ok_ = 0;
    std::string input_;
    std::string absolute_;
};

/** @} */

}  // namespace velora_com::qel

extern "C" {
#endif

/** @addtogroup utilities
 * @{ */

/**
 * Resolves a file name and keeps the answer behind a handle.
 *
 * @param path the name, with terminator
 * @param handle receives the handle; to be given back with orumcomn_filenameresolver_destroy().
 * Left alone on failure.
 * @return #ORU_SUCCESS, also when the name could not be resolved: asking for the path then fails.
 *         #ORU_FAILURE when an argument is null or memory ran out.
 */
VLRCOMN_API uint32_t orumcomn_filenameresolver_create(const char* path, void** handle);

/**
 * Copies the resolved path.
 *
 * @param handle from orumcomn_filenameresolver_create()
 * @param buffer receives the path with its terminator, or nothing
 * @param size in: the buffer's size in bytes; out: the size needed, terminator included, whether or
 * not the buffer was large enough. Left alone when an argument is null or the name was not
 * resolved.
 * @return #ORU_SUCCESS when the path was copied; #ORU_FAILURE when an argument is null, the name
 * could not be resolved, or the buffer is too small (call again with the size told)
 */
VLRCOMN_API uint32_t orumcomn_filenameresolver_get_absolute_filename(void* handle, char* buffer,
                                                                     unsigned* size);

/**
 * Gives a handle back.
 *
 * @param handle from orumcomn_filenameresolver_create(), or null
 * @return #ORU_SUCCESS
 */
VLRCOMN_API uint32_t orumcomn_filenameresolver_destroy(void* handle);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
