#include "support/fault_injection.h"

#include <dirent.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <sys/socket.h>

#include <cstdarg>

namespace fault_injection {

thread_local Armed armed{};
thread_local std::optional<timeval> clock_time;
static thread_local int64_t in_use = 0;

static bool fails(const char* call) noexcept {
    if (armed.calls_left == 0 || (armed.only != nullptr && std::strcmp(armed.only, call) != 0) ||
        --armed.calls_left != 0) {
        return false;
    }
    armed.fired = call;
    if (armed.instead != nullptr) {
        (*armed.instead)();
    }
    return armed.instead == nullptr;
}

// Counts a success of a call that reports by 0 or an error number.
static int counted(int error, int difference) noexcept {
    in_use += error == 0 ? difference : 0;
    return error;
}

static void* counted(void* memory) noexcept {
    in_use += memory != nullptr ? 1 : 0;
    return memory;
}

int64_t resources_in_use() noexcept {
    int64_t resources = in_use;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        resources += fcntl(descriptor, F_GETFD) != -1 ? 1 : 0;
    }
    return resources;
}

}  // namespace fault_injection

using namespace fault_injection;

// Every memory of C++ comes through the C allocator, so that one count and one failure serve both; the
// forms for arrays call these.
// NOLINTBEGIN(cppcoreguidelines-no-malloc)
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}
void* operator new(std::size_t size) {
    void* memory = operator new(size, std::nothrow);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
// NOLINTEND(cppcoreguidelines-no-malloc)

// Declares __real_NAME, the call itself, and begins the definition of __wrap_NAME, which stands in for it.
#define WRAP(name, result, ...)                   \
    extern "C" result __real_##name(__VA_ARGS__); \
    extern "C" result __wrap_##name(__VA_ARGS__)

// A call that fails with `failure` and errno, and needs no counting.
#define FAIL_WITH(name, failure, error) \
    if (fails(#name)) {                 \
        errno = error;                  \
        return failure;                 \
    }

WRAP(malloc, void*, size_t size) {
    FAIL_WITH(malloc, nullptr, ENOMEM)
    return counted(__real_malloc(size));
}
WRAP(calloc, void*, size_t count, size_t size) {
    FAIL_WITH(calloc, nullptr, ENOMEM)
    return counted(__real_calloc(count, size));
}
WRAP(free, void, void* memory) {
    in_use -= memory != nullptr ? 1 : 0;
    __real_free(memory);
}

// A call that reports by 0 or an error number, and whose success changes a count.
#define WRAP_COUNTED(name, error, difference, parameters, arguments)                \
    extern "C" int __real_##name parameters;                                        \
    extern "C" int __wrap_##name parameters {                                       \
        return fails(#name) ? error : counted(__real_##name arguments, difference); \
    }
WRAP_COUNTED(posix_memalign, ENOMEM, 1, (void** to, size_t align, size_t size), (to, align, size))
WRAP_COUNTED(pthread_cond_init, ENOMEM, 1, (pthread_cond_t * c, const pthread_condattr_t* a),
             (c, a))
WRAP_COUNTED(pthread_cond_broadcast, EINVAL, 0, (pthread_cond_t * c), (c))
WRAP_COUNTED(pthread_mutex_init, ENOMEM, 1, (pthread_mutex_t * m, const pthread_mutexattr_t* a),
             (m, a))
WRAP_COUNTED(pthread_mutex_lock, EINVAL, 0, (pthread_mutex_t * m), (m))
WRAP_COUNTED(pthread_attr_init, ENOMEM, 1, (pthread_attr_t * a), (a))
WRAP_COUNTED(pthread_attr_setdetachstate, EINVAL, 0, (pthread_attr_t * a, int state), (a, state))
WRAP_COUNTED(pthread_create, EAGAIN, 0,
             (pthread_t * thread, const pthread_attr_t* a, void* (*run)(void*), void* parameter),
             (thread, a, run, parameter))

// Calls that give back do not fail.
#define WRAP_DESTROY(name, type)                   \
    WRAP(name, int, type object) {                 \
        return counted(__real_##name(object), -1); \
    }
WRAP_DESTROY(pthread_cond_destroy, pthread_cond_t*)
WRAP_DESTROY(pthread_mutex_destroy, pthread_mutex_t*)
WRAP_DESTROY(pthread_attr_destroy, pthread_attr_t*)

WRAP(gettimeofday, int, timeval* now, void* zone) {
    FAIL_WITH(gettimeofday, -1, EFAULT)
    const int result = __real_gettimeofday(now, zone);
    *now = clock_time.value_or(*now);
    return result;
}

// The mode is handed on also where there is none: the calls ignore it then.
#define WRAP_OPEN(name, LARGE)                                                       \
    extern "C" LARGE int __real_##name(const char*, int, ...);                       \
    extern "C" int __wrap_##name(const char* path, int flags, ...) {                 \
        FAIL_WITH(name, -1, EMFILE)                                                  \
        va_list arguments;                                                           \
        va_start(arguments, flags);                                                  \
        const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0u; \
        va_end(arguments);                                                           \
        return __real_##name(path, flags, mode);                                     \
    }
WRAP_OPEN(open, )
WRAP_OPEN(open64, __attribute__((weak)))

// A close that fails gives the descriptor up all the same, as Linux does.
WRAP(close, int, int descriptor) {
    const int result = __real_close(descriptor);
    FAIL_WITH(close, -1, EIO)
    return result;
}

#define WRAP_CALL(name, result, failure, error, parameters, arguments) \
    extern "C" result __real_##name parameters;                        \
    extern "C" result __wrap_##name parameters {                       \
        FAIL_WITH(name, failure, error)                                \
        return __real_##name arguments;                                \
    }

// Where file offsets were not always 64 bits wide the headers turn these calls into those with a 64 at the
// end, which other systems do not have: hence weak.
#define WRAP_LARGE(name, result, failure, error, parameters, arguments)   \
    extern "C" __attribute__((weak)) result __real_##name##64 parameters; \
    extern "C" result __wrap_##name##64 parameters {                      \
        FAIL_WITH(name, failure, error)                                   \
        return __real_##name##64 arguments;                               \
    }                                                                     \
    WRAP_CALL(name, result, failure, error, parameters, arguments)

WRAP_CALL(read, ssize_t, -1, EIO, (int file, void* to, size_t count), (file, to, count))
WRAP_LARGE(ftruncate, int, -1, EIO, (int file, off_t length), (file, length))
WRAP_LARGE(fstat, int, -1, EIO, (int file, struct stat* to), (file, to))
WRAP_LARGE(stat, int, -1, EIO, (const char* path, struct stat* to), (path, to))
WRAP_LARGE(lstat, int, -1, EIO, (const char* path, struct stat* to), (path, to))
WRAP_LARGE(fstatat, int, -1, EIO, (int at, const char* path, struct stat* to, int flags),
           (at, path, to, flags))
WRAP_CALL(rename, int, -1, EACCES, (const char* from, const char* to), (from, to))
WRAP_CALL(opendir, DIR*, nullptr, EMFILE, (const char* path), (path))
WRAP_LARGE(readdir, struct dirent*, nullptr, EIO, (DIR * folder), (folder))
WRAP_CALL(getifaddrs, int, -1, ENOMEM, (struct ifaddrs * *list), (list))
WRAP_CALL(getnameinfo, int, EAI_MEMORY, ENOMEM,
          (const sockaddr* of, socklen_t size, char* host, socklen_t m, char* port, socklen_t n,
           int f),
          (of, size, host, m, port, n, f))
WRAP_CALL(socket, int, -1, EMFILE, (int family, int type, int number), (family, type, number))
