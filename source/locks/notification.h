// Notifications of a lock's falling free. Every function is called under the lock's spin word, and so
// are the callbacks, for which the caller disables cancellation: a thread that ended inside one would leave
// the word held.
#pragma once

#include <cstdint>

#include "vlrcomn/linked_list.h"
#include "vlrcomn/se_lock.h"

namespace velora_com::qel::locks {

// A registration of the notify form, on the heap.
struct Notification : orLLItem {
    orSO_NotifyCallback callback;
    uintptr_t first;
    uintptr_t second;
};

// Adds a registration at the head of the list. Ends the process when memory is exhausted: a caller of
// the notify form has no other way to learn of it than to wait for ever.
void register_notification(orLLItem*& list, orSO_NotifyCallback callback, uintptr_t first,
                           uintptr_t second);

// Withdraws the first equal registration whose callback agrees. Returns 1, or 0 when there is none.
int withdraw_notification(orLLItem*& list, orSO_NotifyCallback callback, uintptr_t first,
                          uintptr_t second);

// Calls the registrations from the head on; the first whose callback returns 0 is removed and is the last
// to be called.
void notify_free(orLLItem*& list);

// Frees every registration without calling anybody.
void drop_notifications(orLLItem*& list);

}  // namespace velora_com::qel::locks
