#include "locks/notification.h"

#include <cstdlib>

namespace velora_com::qel::locks {
namespace {

// Calls back with `event` each registration that `wanted` picks, up to the first whose callback returns
// 0, which is removed. Returns whether there was one.
template <typename Wanted>
int call_until_served(orLLItem*& list, uint32_t event, Wanted wanted) {
    for (orLLItem** link = &list; *link != nullptr; link = &(*link)->next) {
        auto* const entry = static_cast<Notification*>(*link);
        if (wanted(*entry) && entry->callback(entry->first, event, entry->second, 0) == 0) {
            orLL_XRemove(link, entry);
            std::free(entry);
            return 1;
        }
    }
    return 0;
}

}  // namespace

void register_notification(orLLItem*& list, orSO_NotifyCallback callback, uintptr_t first,
                           uintptr_t second) {
    auto* const entry = static_cast<Notification*>(std::malloc(sizeof(Notification)));
    if (entry == nullptr) {
        std::abort();
    }
    entry->callback = callback;
    entry->first = first;
    entry->second = second;
    orLL_XInsertHead(&list, entry);
}

int withdraw_notification(orLLItem*& list, orSO_NotifyCallback callback, uintptr_t first,
                          uintptr_t second) {
    return call_until_served(list, ORSO_NOTIFY_WITHDRAWN, [=](const Notification& entry) {
        return entry.callback == callback && entry.first == first && entry.second == second;
    });
}

void notify_free(orLLItem*& list) {
    call_until_served(list, ORSO_NOTIFY_FREE, [](const Notification&) { return true; });
}

void drop_notifications(orLLItem*& list) {
    while (orLLItem* const entry = orLL_XRemoveHead(&list)) {
        std::free(static_cast<Notification*>(entry));
    }
}

}  // namespace velora_com::qel::locks
