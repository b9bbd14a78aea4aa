// Owners of the system's resources. A raw release call stands elsewhere only where the caller is told whether the
// release succeeded: the closing of a handle, of a search and of a library.
//
// Every owner keeps errno through its release, so that a caller still reads why an operation failed.
#pragma once

#include <dirent.h>
#include <dlfcn.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>

#include "support/mutex.h"

namespace velora_com::qel::support {

// Keeps errno as it was through a scope.
class ErrnoKeeper {
public:
    ErrnoKeeper() noexcept : saved_(errno) {}
    ~ErrnoKeeper() { errno = saved_; }
    ErrnoKeeper(const ErrnoKeeper&) = delete;
    ErrnoKeeper& operator=(const ErrnoKeeper&) = delete;

private:
    int saved_;
};

// Disables this thread's cancellation for a scope, so that owners in it are enough: where nothing can be
// cancelled, every destructor runs. Mac OS X 10.4 acts on a pending cancellation at the end of the outermost
// such scope: it begins before a lock is taken, so that it ends after the lock is released.
class CancellationOff {
public:
    CancellationOff() noexcept { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &former_); }
    ~CancellationOff() {
        int ignored;  // the call stores through a null pointer on old systems
        pthread_setcancelstate(former_, &ignored);
    }
    CancellationOff(const CancellationOff&) = delete;
    CancellationOff& operator=(const CancellationOff&) = delete;

private:
    int former_ = PTHREAD_CANCEL_ENABLE;
};

// The scope of a release call: errno stays, and a pending cancellation waits until after it. close and its
// like are cancellation points, and a cancellation that acts inside a destructor ends the process on
// systems that unwind.
class ReleaseScope {
    ErrnoKeeper errno_;
    CancellationOff cancellation_;
};

// Owns a descriptor.
class FileDescriptor {
public:
    FileDescriptor() noexcept = default;
    explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(other.release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            reset(other.release());
        }
        return *this;
    }
    ~FileDescriptor() { reset(); }

    int get() const noexcept { return descriptor_; }
    explicit operator bool() const noexcept { return descriptor_ >= 0; }
    int release() noexcept { return std::exchange(descriptor_, -1); }
    void reset(int descriptor = -1) noexcept {
        const int old = std::exchange(descriptor_, descriptor);
        if (old >= 0) {
            ReleaseScope scope;
            ::close(old);
        }
    }
    // Closes now and tells whether that succeeded; a descriptor is gone either way.
    bool close() noexcept {
        CancellationOff uncancelled;
        return ::close(release()) == 0;
    }

private:
    int descriptor_ = -1;
};

// Calls a release function for a pointer, with errno kept.
template <auto release>
struct Releaser {
    template <typename T>
    void operator()(T* resource) const noexcept {
        ReleaseScope scope;
        release(resource);
    }
};

using Directory = std::unique_ptr<DIR, Releaser<&::closedir>>;
using File = std::unique_ptr<FILE, Releaser<&::fclose>>;
using InterfaceAddresses = std::unique_ptr<ifaddrs, Releaser<&::freeifaddrs>>;
using AddressInfo = std::unique_ptr<addrinfo, Releaser<&::freeaddrinfo>>;
using LoadedLibrary = std::unique_ptr<void, Releaser<&::dlclose>>;

// Holds a POSIX mutex for a scope, unseen by clang's analysis: for a mutex that has to be of the system's type.
// Where a thread may be cancelled inside the scope, a POSIX clean-up handler has to unlock the mutex instead:
// cancellation need not run destructors.
class UncheckedMutexGuard {
public:
    explicit UncheckedMutexGuard(pthread_mutex_t& mutex) noexcept
        : mutex_(mutex), held_(pthread_mutex_lock(&mutex) == 0) {}
    ~UncheckedMutexGuard() {
        if (held_) {
            pthread_mutex_unlock(&mutex_);
        }
    }
    UncheckedMutexGuard(const UncheckedMutexGuard&) = delete;
    UncheckedMutexGuard& operator=(const UncheckedMutexGuard&) = delete;

    // False when the mutex could not be locked.
    explicit operator bool() const noexcept { return held_; }
    // Unlocks now and tells whether that succeeded; the guard is released either way.
    bool unlock() noexcept {
        held_ = false;
        return pthread_mutex_unlock(&mutex_) == 0;
    }

private:
    pthread_mutex_t& mutex_;
    bool held_;
};

// The same for a Mutex, with the analysis. That takes a guard for holding even where it could not lock: who
// can refuse his caller asks the guard.
class VLRCOMN_SCOPED_CAPABILITY MutexGuard {
public:
    // NOLINTNEXTLINE(misc-non-copyable-objects): a reference, no copy
    explicit MutexGuard(Mutex& mutex) noexcept VLRCOMN_ACQUIRE(mutex) : guard_(*mutex.native()) {}
    ~MutexGuard() VLRCOMN_RELEASE() = default;
    MutexGuard(const MutexGuard&) = delete;
    MutexGuard& operator=(const MutexGuard&) = delete;

    explicit operator bool() const noexcept { return static_cast<bool>(guard_); }
    bool unlock() noexcept VLRCOMN_RELEASE() { return guard_.unlock(); }

private:
    UncheckedMutexGuard guard_;
};

}  // namespace velora_com::qel::support
