/**
 * @file
 * @brief Loading shared libraries with reference counts and an emulated library entry point.
 *
 * A list of 50 slots holds the loaded libraries, each under the exact path that it was loaded by. A
 * library that exports "DllMain" is called after loading and before unloading; see #oruDllMain.
 *
 * Messages. A function with a message parameter stores there, before anything else, the address of a
 * static text of its own, which is empty on success, whatever an entry point tried meanwhile, and says
 * what went wrong on failure. Every call of that function writes the text anew, whichever thread calls
 * it: another thread's call may change the text while it is read, though a terminator always stands
 * within its bounds. The addresses stay valid for the life of the process.
 *
 * Thread safety: every function may be called from any thread. Loading and freeing take turns; while
 * an entry point runs, or a library's constructors or destructors do, other threads' loads and frees
 * wait for it. So an entry point must not wait for a thread that loads or frees. **Loading or freeing in a
 * constructor or destructor of any library can hang another thread**, and with it this one: the loader's
 * own lock, held there, and this list's would wait for each other. Cancellation is held back while the
 * list is in use: an entry point is not cancelled in the middle.
 *
 * After `fork` in a process with several threads only `exec` is safe in the child. No function here
 * may be called from a signal handler.
 *
 * Unloading libvlrcomn itself, for example with the last plug-in that brought it: a thread of thread.h is
 * seen to end a little before it has left the library's code. The shared library therefore stays in memory
 * once it is loaded, where the linker can mark it so (`-z nodelete`: Linux). Elsewhere (Mac OS X), and in
 * whatever is linked with the static library, what holds this code and has started a thread must not be
 * unloaded: link it with the same mark, open it with RTLD_NODELETE, or never close it. A plug-in that gives
 * its threads thread-local values with destructors has to stay likewise: they run after the end is seen.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_DYNAMIC_LIBRARY_H
#define VLRCOMN_DYNAMIC_LIBRARY_H

#include <stdint.h>
#include <wchar.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup portability
 * @{ */

/** How many libraries can be loaded at once. */
#define ORU_MAX_LIBRARIES 50

/** Size of a message text in characters, terminator included. */
#define ORU_LIBRARY_MESSAGE_SIZE 512

/** Reason of an entry point's call: the last reference to an entry is given back, and the library about to
 * be unloaded unless something else holds it. */
#define ORU_PROCESS_DETACH UINT32_C(0)
/** Reason of an entry point's call: the library has just been loaded. */
#define ORU_PROCESS_ATTACH UINT32_C(1)

/**
 * Type of the function that a library may export as "DllMain".
 *
 * It is looked up as dlsym(3) looks: for a library without one that depends on a library with one that
 * one is called, with the handle of the library that was loaded. It is called for each entry, so that a
 * library that was loaded by two spellings of its path is attached twice, and stays loaded after the first
 * detach.
 *
 * It must not load or free libraries through this layer: such a call fails at once as one that finds
 * the list locked. It may look up symbols and call oruDisableThreadLibraryCalls(), which finds the
 * library at #ORU_PROCESS_DETACH but not yet at #ORU_PROCESS_ATTACH. It must neither end its thread nor
 * let an exception out.
 *
 * @param module the library's module handle.
 * @param reason #ORU_PROCESS_ATTACH or #ORU_PROCESS_DETACH.
 * @param reserved null.
 * @return 1 for success; any other answer to #ORU_PROCESS_ATTACH makes the load fail. The answer to
 * #ORU_PROCESS_DETACH is not looked at.
 */
typedef int (*oruDllMain)(void* module, uint32_t reason, void* reserved);

/**
 * Type of the function that a library may export as "loadString" to serve its texts. Like "DllMain" it is
 * also found in the libraries that the module depends on.
 *
 * @param module the library's module handle.
 * @param id which text.
 * @param buffer room for `size` characters of whatever kind of text the library serves.
 * @param size room in `buffer`, in characters.
 * @return as the library defines it; by custom the length written, 0 for a text it does not have.
 */
typedef int (*oruLoadStringFunction)(void* module, uint32_t id, void* buffer, int size);

/**
 * Loads a library, or counts one more reference to a library that was loaded by the same path.
 *
 * Paths are compared byte by byte, so that two spellings of one file take two entries, and the entry point
 * is called for each (they have the same module handle, of which oruFreeLibrary() releases one entry after
 * the other). A path of more than 259 bytes is loaded, but no later load finds its entry again: each takes
 * an entry of its own.
 *
 * @param path as dlopen(3) takes it; symbols are bound lazily. Null is refused by the loading step.
 * @param message receives the address of this function's message text; may be null.
 * @return the module handle, or null with one of these messages:
 * - "locked": the list's lock cannot be taken, or this thread holds it already because the call comes
 *   from an entry point, a constructor or a destructor of a library;
 * - "library list full": 50 libraries are loaded;
 * - "out of memory";
 * - "dllmain returned false": the entry point refused. The library stays in memory for the life of the
 *   process, without an entry; the next load of the path calls the entry point again, and freeing that
 *   load does not unload the library;
 * - the loader's own words, at most 510 characters of them; empty for a null path.
 *
 * Each load that the loader refuses keeps the memory of one entry until the process ends. A load that
 * reaches the library looks "DllMain" up with oruGetProcAddress(), and so rewrites that function's message too.
 */
VLRCOMN_API void* oruLoadLibrary(const char* path, const char** message);

/**
 * oruLoadLibrary() for a wide path, which is converted to UTF-8.
 *
 * @param path the wide path; null is refused like a null narrow path.
 * @param message receives the address of this function's own wide message text, at most 511
 * characters and a terminator; may be null, and is then not written.
 * @return as of oruLoadLibrary(), the messages likewise. A path with a character that UTF-8 cannot hold (a
 * surrogate, a number above U+10FFFF) is refused: null, "path has no form in UTF-8".
 * Here "out of memory" also stands for a path too long to be converted.
 */
VLRCOMN_API void* oruLoadLibraryW(const wchar_t* path, const wchar_t** message);

/**
 * Looks a symbol up in a module.
 *
 * @param module a module handle that has not been freed (what the loader does with another is undefined);
 * null names no module, also where dlsym(3) searches the whole program.
 * @param name the symbol's name.
 * @param message receives the address of this function's message text; may be null.
 * @return the symbol's address, or null with the loader's words, at most 510 characters. A symbol
 * whose address is null gives null with an empty message, and so does a null module or name.
 */
VLRCOMN_API void* oruGetProcAddress(void* module, const char* name, const char** message);

/**
 * Gives one reference back; with the last one the entry point is called with #ORU_PROCESS_DETACH and
 * the library is unloaded, unless another entry, a dependant or the program itself holds it. Afterwards
 * neither the handle may be asked for symbols or texts nor an address out of the library be used.
 *
 * @param module a module handle of oruLoadLibrary(); with two entries for one module the lower slot.
 * @return 1, or 0: the module has no entry, the list is locked as described for oruLoadLibrary(), or the
 * loader did not release it (the entry is gone all the same).
 */
VLRCOMN_API int oruFreeLibrary(void* module);

/**
 * Marks a loaded library as one that does not want to be told of threads. Only the mark is kept: no
 * library is ever told of a thread's start or end. An entry point may call this.
 *
 * @param module a module handle.
 * @return 1, or 0 when it is null or none of the loaded libraries.
 */
VLRCOMN_API int oruDisableThreadLibraryCalls(void* module);

/**
 * Asks a module for one of its texts: calls its "loadString" with the same four arguments.
 *
 * @param module a module handle that has not been freed; of the four only this one is looked at here, and
 * null gives 0.
 * @param id which text.
 * @param buffer room for `size` characters of whatever kind of text the module serves.
 * @param size room in `buffer`, in characters.
 * @return the module's answer, or 0 when it has no such function.
 */
VLRCOMN_API int oruLoadString(void* module, uint32_t id, void* buffer, int size);

/**
 * Kept for source compatibility; does nothing.
 *
 * @param module ignored.
 * @param buffer ignored, not written.
 * @param size ignored.
 * @return 0.
 */
VLRCOMN_API uint32_t oruGetModuleFileName(void* module, char* buffer, uint32_t size);

/**
 * Opens a library with lazy binding, apart from the list: no reference count, no entry point.
 *
 * @param module receives the module handle on success and is left alone on failure; null is refused.
 * @param path as dlopen(3) takes it; null is refused.
 * @param message a text in a buffer of at least #ORU_LIBRARY_MESSAGE_SIZE characters, to which the
 * loader's words are appended on failure: at most 510 characters, and none past the buffer. Null: no
 * words. A refused argument adds none.
 * @return 1 or 0.
 */
VLRCOMN_API int load_shared_object_image(void** module, const char* path, char* message);

/**
 * Closes a library that load_shared_object_image() opened.
 *
 * @param module the module handle; null is refused.
 * @return 1 when the loader released it, otherwise 0.
 */
VLRCOMN_API int unload_shared_object_image(void* module);

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
