// orSLL2: a doubly linked list between two sentinels behind a shared/exclusive lock.
#include "locks/locked_list_support.h"
#include "vlrcomn/locked_list.h"

using namespace velora_com::qel::locks;

static_assert(sizeof(void*) != 4 || sizeof(orSLL2) == 20, "five words on a 32-bit host");

namespace {

bool is_empty(const orSLL2& list) {
    return list.head.next == &list.tail;
}

// Takes out a node next to a sentinel. An end node that points to itself is the other sentinel.
orLL2Node* remove_first(orSLL2& list) {
    orLL2Node* const node = list.head.next;
    if (node->next == node) {
        return nullptr;
    }
    orLL2_XRemove(node);
    return node;
}

orLL2Node* remove_last(orSLL2& list) {
    orLL2Node* const node = list.tail.previous;
    if (node->previous == node) {
        return nullptr;
    }
    orLL2_XRemove(node);
    return node;
}

}  // namespace

extern "C" {

uint32_t orSLL2_Init(orSLL2* list) {
    if (list == nullptr) {
        return ORU_FAILURE;
    }
    list->head = {&list->tail, &list->head};
    list->tail = {&list->tail, &list->head};
    return orSO_SELockCreate(&list->lock);
}

uint32_t orSLL2_Create(orSLL2** list) {
    return create_list(list, orSLL2_Init);
}

void orSLL2_Uninit(orSLL2* list) {
    if (list == nullptr) {
        return;
    }
    while (!is_empty(*list)) {
        remove_first(*list);
    }
    orSO_Release(list->lock);
    list->lock = nullptr;
}

void orSLL2_Release(orSLL2* list) {
    orSLL2_Uninit(list);
    std::free(list);
}

void orSLL2_XInsertHead(orSLL2* list, orLL2Node* item) {
    if (list == nullptr || item == nullptr) {
        return;
    }
    if (const ExclusiveHold hold(list->lock); hold) {
        item->next = list->head.next;
        item->previous = &list->head;
        list->head.next = item;
        item->next->previous = item;
    }
}

void orSLL2_XInsertTail(orSLL2* list, orLL2Node* item) {
    if (list == nullptr || item == nullptr) {
        return;
    }
    if (const ExclusiveHold hold(list->lock); hold) {
        item->next = &list->tail;
        item->previous = list->tail.previous;
        list->tail.previous = item;
        item->previous->next = item;
    }
}

orLL2Node* orSLL2_XRemoveHead(orSLL2* list) {
    if (list == nullptr) {
        return nullptr;
    }
    const ExclusiveHold hold(list->lock);
    return hold ? remove_first(*list) : nullptr;
}

orLL2Node* orSLL2_XRemoveTail(orSLL2* list) {
    if (list == nullptr) {
        return nullptr;
    }
    const ExclusiveHold hold(list->lock);
    return hold ? remove_last(*list) : nullptr;
}

orLL2Node* orSLL2_XGetHead(orSLL2* list, int exclusive, int wait) {
    if (list == nullptr || orSO_SELock(list->lock, exclusive, wait) != 1) {
        return nullptr;
    }
    return list->head.next;
}

void orSLL2_LockRelease(orSLL2* list) {
    if (list != nullptr) {
        orSO_SELockRelease(list->lock);
    }
}

bool orSLL2_IsEmpty(orSLL2* list) {
    if (list == nullptr) {
        return true;
    }
    const SharedHold hold(list->lock);
    return !hold || is_empty(*list);
}

}  // extern "C"
