// What printers_test.py looks at: handles, a lock and lists, each in a state that their text tells.
#include <cstdlib>

#include "vlrcomn/file.h"
#include "vlrcomn/handle.h"
#include "vlrcomn/locked_list.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

extern "C" __attribute__((noinline)) void everything_is_made() {
    asm volatile("");
}

namespace {

[[gnu::used]] oruHandle null_handle;
[[gnu::used]] oruHandle invalid = ORU_INVALID_HANDLE;
oruHandle event, owned_mutex, file, thread;
orSELock *shared_lock, *owned_lock;
LinkedListHandle counted;
orSLL2 both_ends;
LinkedListItem items[2];
orLL2Node nodes[3];

}  // namespace

int main(int, char** arguments) {
    const oruThreadRoutine return_at_once = [](void*) -> uint32_t { return 0; };
    thread = oruCreateThread(nullptr, 0, return_at_once, nullptr, 0, nullptr);
    oruWaitForSingleObject(thread, ORU_INFINITE);
    event = oruCreateEvent(nullptr, 1, 1, nullptr);
    owned_mutex = oruCreateMutex(nullptr, 1, nullptr);
    file = oruCreateFileAW(*arguments, ORU_ACCESS_READ, 0, nullptr, ORU_OPEN_EXISTING, 0, nullptr);

    orSO_ProcessAttach();
    orSO_ThreadAttach();
    orSO_SELockCreate(&shared_lock);
    orSO_SELockCreate(&owned_lock);
    orSO_SELockSharedWaitForExclusive(shared_lock, 1);
    orSO_SELockSharedWaitForExclusive(shared_lock, 1);
    const auto keep_registered = [](uintptr_t, uint32_t, uintptr_t, uint32_t) { return 1; };
    orSO_SELockExclusiveNotify(shared_lock, keep_registered, 0, 0);
    orSO_SELockExclusive(owned_lock, 1);

    LinkedList_Init(&counted);
    for (LinkedListItem& item : items) {
        LinkedList_AddTail(counted, &item);
    }
    orSLL2_Init(&both_ends);
    for (orLL2Node& node : nodes) {
        orSLL2_XInsertTail(&both_ends, &node);
    }
    everything_is_made();
    return file != nullptr && nodes[2].previous == &nodes[1] ? EXIT_SUCCESS : EXIT_FAILURE;
}
