// Nodes of doubly linked lists between sentinels.
#include "vlrcomn/linked_list.h"

extern "C" {

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
