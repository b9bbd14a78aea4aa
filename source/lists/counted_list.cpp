// The counted doubly linked list. Assertions name the lines that the list's callers know from their
// logs, not the lines of this file.
#include <cstdlib>

#include "support/assertion.h"
#include "vlrcomn/linked_list.h"

static_assert(sizeof(void*) != 4 || sizeof(LinkedListHeader) == 12, "three words on a 32-bit host");

namespace {

void check(bool holds, const char* function, int line, const char* expression) {
    if (!holds) {
        velora_com::qel::support::assertion_failed(function, "../source/Linklist", line,
                                                   expression);
    }
}

// Follows `next` `index` times from `item`. The caller has compared the index with the count, so a null
// on the way means a chain that contradicts its header.
LinkedListItem* walk(LinkedListItem* item, uint32_t index, const char* function, int line) {
    for (;; item = item->next, --index) {
        check(item != nullptr, function, line, "lpItem");
        if (index == 0) {
            return item;
        }
    }
}

// Counts one item less and clears both ends with the last one.
void count_down(LinkedListHeader& list) {
    if (--list.count == 0) {
        list.head = nullptr;
        list.tail = nullptr;
    }
}

}  // namespace

extern "C" {

int LinkedList_Init(LinkedListHandle* lphLinkedList) {
    check(lphLinkedList != nullptr, __func__, 31, "lphLinkedList");
    *lphLinkedList = static_cast<LinkedListHandle>(std::calloc(1, sizeof(LinkedListHeader)));
    return *lphLinkedList != nullptr;
}

void LinkedList_End(LinkedListHandle* lphLinkedList) {
    if (lphLinkedList == nullptr) {
        return;
    }
    std::free(*lphLinkedList);
    *lphLinkedList = nullptr;
}

int LinkedList_AddHead(LinkedListHandle lpMain, LinkedListItem* lpItem) {
    if (lpMain == nullptr || lpItem == nullptr) {
        return 0;
    }
    lpItem->next = lpMain->head;
    lpItem->previous = nullptr;
    if (lpMain->head != nullptr) {
        lpMain->head->previous = lpItem;
    }
    lpMain->head = lpItem;
    if (lpMain->tail == nullptr) {
        lpMain->tail = lpItem;
    }
    ++lpMain->count;
    return 1;
}

int LinkedList_AddTail(LinkedListHandle lpMain, LinkedListItem* lpItem) {
    if (lpMain == nullptr || lpItem == nullptr) {
        return 0;
    }
    lpItem->previous = lpMain->tail;
    lpItem->next = nullptr;
    if (lpMain->tail != nullptr) {
        lpMain->tail->next = lpItem;
    }
    lpMain->tail = lpItem;
    if (lpMain->head == nullptr) {
        lpMain->head = lpItem;
    }
    ++lpMain->count;
    return 1;
}

LinkedListItem* LinkedList_RemoveTail(LinkedListHandle lpMain) {
    if (lpMain == nullptr || lpMain->tail == nullptr) {
        return nullptr;
    }
    LinkedListItem* const item = lpMain->tail;
    lpMain->tail = item->previous;
    if (lpMain->tail != nullptr) {
        lpMain->tail->next = nullptr;
    }
    count_down(*lpMain);
    return item;
}

int LinkedList_GetCount(LinkedListHandle lpMain) {
    check(lpMain != nullptr, __func__, 167, "lpMain");
    return static_cast<int>(lpMain->count);
}

LinkedListItem* LinkedList_PeekAt(LinkedListHandle lpMain, uint32_t index) {
    if (lpMain == nullptr || index >= lpMain->count) {
        return nullptr;
    }
    return walk(lpMain->head, index, __func__, 200);
}

LinkedListItem* LinkedList_RemoveAt(LinkedListHandle lpMain, uint32_t index) {
    if (lpMain == nullptr || index >= lpMain->count) {
        return nullptr;
    }
    LinkedListItem* const old_head = lpMain->head;
    if (index == 0 && old_head != nullptr) {
        lpMain->head = old_head->next;
        if (lpMain->head != nullptr) {
            lpMain->head->previous = nullptr;
        }
    }
    if (index == lpMain->count - 1) {
        check(lpMain->tail != nullptr, __func__, 238, "lpMain->lpTail");
        lpMain->tail = lpMain->tail->previous;
    }
    LinkedListItem* const item = walk(old_head, index, __func__, 245);
    count_down(*lpMain);
    if (item->previous != nullptr) {
        item->previous->next = item->next;
    }
    if (item->next != nullptr) {
        item->next->previous = item->previous;
    }
    return item;
}

}  // extern "C"
