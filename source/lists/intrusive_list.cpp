// The plain singly linked list and the doubly linked nodes between sentinels.
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

orLL2Node* orLL2_XGetNext(const orLL2Node* node) {
    return node == nullptr ? nullptr : node->next;
}

orLL2Node* orLL2_XGetPrev(const orLL2Node* node) {
    return node == nullptr ? nullptr : node->previous;
}

int orLL2_XIsEnd(const orLL2Node* node) {
    return node == nullptr || node->next == node;
}

void orLL2_XRemove(orLL2Node* node) {
    if (node == nullptr) {
        return;
    }
    if (node->next != nullptr) {
        node->next->previous = node->previous;
    }
    if (node->previous != nullptr) {
        node->previous->next = node->next;
    }
}

}  // extern "C"
