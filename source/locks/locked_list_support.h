// What the two families of locked lists share.
#pragma once

#include <cstdlib>

#include "vlrcomn/se_lock.h"

namespace velora_com::qel::locks {

// Holds a list's lock for a scope without cancellation points. False when `take` was not granted, to a
// thread that is not attached: the links are off limits then.
template <int (*take)(orSELock*, int wait)>
class Hold {
public:
    explicit Hold(orSELock* lock) : lock_(take(lock, 1) == 1 ? lock : nullptr) {}
    ~Hold() { orSO_SELockRelease(lock_); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    explicit operator bool() const { return lock_ != nullptr; }

private:
    orSELock* lock_;
};
using ExclusiveHold = Hold<orSO_SELockExclusive>;
using SharedHold = Hold<orSO_SELockSharedWaitForExclusive>;

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

}  // namespace velora_com::qel::locks
