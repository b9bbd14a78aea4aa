// The plain singly linked list.
#include "vlrcomn/linked_list.h"

extern "C" {

void orLL_Init(orLLItem** head) {
    if (head != nullptr) {
        *head = nullptr;
    }
}

void orLL_XInsertHead(orLLItem** head, orLLItem* item) {
    if (head == nullptr || item == nullptr) {
        return;
    }
    item->next = *head;
    *head = item;
}

void orLL_XRemove(orLLItem** link, orLLItem* item) {
    if (link == nullptr || item == nullptr) {
        return;
    }
    *link = item->next;
}

orLLItem* orLL_XRemoveHead(orLLItem** head) {
    if (head == nullptr) {
        return nullptr;
    }
    orLLItem* const item = *head;
    orLL_XRemove(head, item);
    return item;
}

orLLItem* orLL_XGetStart(orLLItem* head) {
    return head;
}

orLLItem* orLL_XGetNext(const orLLItem* item) {
    return item == nullptr ? nullptr : item->next;
}

int orLL_XIsEnd(const orLLItem* item) {
    return item == nullptr;
}

int orLL_IsEmpty(orLLItem* const* head) {
    return head == nullptr || *head == nullptr;
}

}  // extern "C"
