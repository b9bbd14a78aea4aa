// What the two families of locked lists share.
#pragma once

#include <cstdlib>

#include "vlrcomn/se_lock.h"

namespace velora_com::qel::lists {

// Holds a list's lock exclusively for a scope without cancellation points. False when the lock was not
// granted, to a thread that is not attached: the links are off limits then.
class ExclusiveHold {
public:
    explicit ExclusiveHold(orSELock* lock)
        : lock_(orSO_SELockExclusive(lock, 1) == 1 ? lock : nullptr) {}
    ~ExclusiveHold() { orSO_SELockRelease(lock_); }
    ExclusiveHold(const ExclusiveHold&) = delete;
    ExclusiveHold& operator=(const ExclusiveHold&) = delete;

    explicit operator bool() const { return lock_ != nullptr; }

private:
    orSELock* lock_;
};

// The same, shared and behind queued writers.
class SharedHold {
public:
    explicit SharedHold(orSELock* lock)
        : lock_(orSO_SELockSharedWaitForExclusive(lock, 1) == 1 ? lock : nullptr) {}
    ~SharedHold() { orSO_SELockRelease(lock_); }
    SharedHold(const SharedHold&) = delete;
    SharedHold& operator=(const SharedHold&) = delete;

    explicit operator bool() const { return lock_ != nullptr; }

private:
    orSELock* lock_;
};

// Allocates a zeroed header and initialises it. A header whose initialisation fails is freed and gives a
// null pointer with the status of success: callers test the pointer.
template <typename List>
uint32_t create_list(List** list, uint32_t (*init)(List*)) {
    if (list == nullptr) {
        return ORU_FAILURE;
    }
    *list = static_cast<List*>(std::calloc(1, sizeof(List)));
    if (*list == nullptr) {
        return ORU_FAILURE;
    }
    if (init(*list) != ORU_SUCCESS) {
        std::free(*list);
        *list = nullptr;
    }
    return ORU_SUCCESS;
}

}  // namespace velora_com::qel::lists
