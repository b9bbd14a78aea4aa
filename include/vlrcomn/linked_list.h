/**
 * @file
 * @brief Three families of intrusive linked lists.
 *
 * | family        | shape                  | list                     | item begins with |
 * |---------------|------------------------|--------------------------|------------------|
 * | `LinkedList_` | doubly linked, counted | heap header              | #LinkedListItem  |
 * | `orLL_`       | singly linked          | one pointer to the first | #orLLItem        |
 * | `orLL2_`      | doubly linked nodes    | the caller's sentinels   | #orLL2Node       |
 *
 * An item is memory of the caller's that begins with its link words: a C structure makes them its
 * first member, a C++ class derives from them. The lists never allocate, copy or free an item;
 * removing one only takes it out of the chain, and **its own link words keep their old values**. An
 * item may stand in one list at a time per set of link words; entering it twice ruins the chain.
 *
 * Nothing here locks. Calls on one list, and on items of one list, must not overlap; the letter X
 * in a name is a reminder that the caller holds whatever lock guards the list. The locked lists are
 * in locked_list.h. Different lists may be used by different threads freely.
 *
 * Usable from C99 and from C++17.
 */
#ifndef VLRCOMN_LINKED_LIST_H
#define VLRCOMN_LINKED_LIST_H

#include <stdint.h>

#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup lists
 * @{ */

/**
 * @name Counted doubly linked list
 *
 * A violated precondition that is called an assertion below ends the process through the C
 * library's assertion handler, which names the function, the source "../source/Linklist", a line
 * and the expression. That holds in every build, also with `NDEBUG`.
 * @{
 */

/** The link words at the start of an item of a counted list. */
typedef struct LinkedListItem {
    struct LinkedListItem* previous; /**< the neighbour towards the head; null in the head */
    struct LinkedListItem* next;     /**< the neighbour towards the tail; null in the tail */
} LinkedListItem;

/**
 * The header of a counted list, made by LinkedList_Init() and freed by LinkedList_End(). An empty
 * list has null ends and a count of 0. Callers may read it and change it only through the
 * functions.
 */
typedef struct LinkedListHeader {
    LinkedListItem* tail; /**< the last item */
    LinkedListItem* head; /**< the first item */
    uint32_t count;       /**< number of items */
} LinkedListHeader;

/** A counted list as callers hold it. */
typedef LinkedListHeader* LinkedListHandle;

/**
 * Makes an empty list.
 *
 * @param lphLinkedList where the handle of the new list is stored; null is an assertion
 * ("lphLinkedList", line 31). An older handle there is overwritten, not freed.
 * @return 1; 0 when out of memory, and the handle is null then.
 */
VLRCOMN_API int LinkedList_Init(LinkedListHandle* lphLinkedList);

/**
 * Frees a list's header and sets the handle to null. The items are left alone.
 *
 * @param lphLinkedList the handle to end; a null pointer and a null handle are accepted.
 */
VLRCOMN_API void LinkedList_End(LinkedListHandle* lphLinkedList);

/**
 * Puts an item before the first one.
 *
 * @param lpMain the list.
 * @param lpItem the item, not in any list.
 * @return 1; 0 when either is null.
 */
VLRCOMN_API int LinkedList_AddHead(LinkedListHandle lpMain, LinkedListItem* lpItem);

/**
 * Puts an item behind the last one.
 *
 * @param lpMain the list.
 * @param lpItem the item, not in any list.
 * @return 1; 0 when either is null.
 */
VLRCOMN_API int LinkedList_AddTail(LinkedListHandle lpMain, LinkedListItem* lpItem);

/**
 * Takes the last item out.
 *
 * @param lpMain the list.
 * @return the item; null when the list is null or empty.
 */
VLRCOMN_API LinkedListItem* LinkedList_RemoveTail(LinkedListHandle lpMain);

/**
 * Tells the number of items.
 *
 * @param lpMain the list; null is an assertion ("lpMain", line 167).
 * @return the number of items, 32 bits wide: more than 2^31 - 1 items read negative.
 */
VLRCOMN_API int LinkedList_GetCount(LinkedListHandle lpMain);

/**
 * Finds an item by its position. Takes time in proportion to the index.
 *
 * @param lpMain the list.
 * @param index position counted from 0 at the head.
 * @return the item, still in the list; null when the list is null or the index is not below the
 * count. A chain that ends before its count says so is an assertion ("lpItem", line 200).
 */
VLRCOMN_API LinkedListItem* LinkedList_PeekAt(LinkedListHandle lpMain, uint32_t index);

/**
 * Takes an item out by its position. Takes time in proportion to the index.
 *
 * @param lpMain the list.
 * @param index position counted from 0 at the head.
 * @return the item; null when the list is null or the index is not below the count. A chain that
 * contradicts its header is an assertion: no tail ("lpMain->lpTail", line 238), or an end before
 * the count says so ("lpItem", line 245).
 */
VLRCOMN_API LinkedListItem* LinkedList_RemoveAt(LinkedListHandle lpMain, uint32_t index);
/** @} */

/**
 * @name Plain singly linked list
 *
 * The list is one word, the pointer to its first item; null when empty. "The head pointer" is the
 * address of that word.
 * @{
 */

/** The link word at the start of an item of a plain list. */
typedef struct orLLItem {
    struct orLLItem* next; /**< the following item; null in the last */
} orLLItem;

/** Empties a list. @param head the head pointer; null is ignored. */
VLRCOMN_API void orLL_Init(orLLItem** head);

/** Puts an item before the first. @param head the head pointer. @param item the item. Null: nothing. */
VLRCOMN_API void orLL_XInsertHead(orLLItem** head, orLLItem* item);

/**
 * Takes an item out, given the word that points at it.
 *
 * @param link the head word, or the `next` word of the item before.
 * @param item the item that `*link` points at; that it does is not checked. With a null link or
 * item nothing happens.
 */
VLRCOMN_API void orLL_XRemove(orLLItem** link, orLLItem* item);

/** Takes the first item out. @param head the head pointer. @return the item; null when there is none. */
VLRCOMN_API orLLItem* orLL_XRemoveHead(orLLItem** head);

/** Begins a walk. @param head the first item (not its address). @return the same. */
VLRCOMN_API orLLItem* orLL_XGetStart(orLLItem* head);

/** Goes on in a walk. @param item where the walk stands. @return the following item; null for null. */
VLRCOMN_API orLLItem* orLL_XGetNext(const orLLItem* item);

/** Tells whether a walk is over. @param item where the walk stands. @return 1 for null, else 0. */
VLRCOMN_API int orLL_XIsEnd(const orLLItem* item);

/** Tells emptiness. @param head the head pointer. @return 1 when it or the list's word is null, else 0. */
VLRCOMN_API int orLL_IsEmpty(orLLItem* const* head);
/** @} */

/**
 * @name Doubly linked nodes between sentinels
 *
 * A list of this kind stands between two sentinel nodes: the `previous` of the front one and the
 * `next` of the back one point to themselves. #orSLL2 in locked_list.h is such a list.
 * @{
 */

/** The link words at the start of a node. */
typedef struct orLL2Node {
    struct orLL2Node* next;     /**< the following node; itself in the back sentinel */
    struct orLL2Node* previous; /**< the node before; itself in the front sentinel */
} orLL2Node;

/** Goes on in a walk. @param node where the walk stands. @return the following node; null for null. */
VLRCOMN_API orLL2Node* orLL2_XGetNext(const orLL2Node* node);

/** Goes back in a walk. @param node where the walk stands. @return the node before; null for null. */
VLRCOMN_API orLL2Node* orLL2_XGetPrev(const orLL2Node* node);

/**
 * Tells whether a forward walk is over.
 *
 * @param node where the walk stands.
 * @return 1 for null and for a node whose `next` is itself, the back sentinel; else 0. A backward
 * walk has to look for the front sentinel by its `previous`.
 */
VLRCOMN_API int orLL2_XIsEnd(const orLL2Node* node);

/**
 * Takes a node out of its chain by joining its neighbours. A missing (null) neighbour is left out.
 *
 * @param node the node, whose own links stay as they are; null is ignored. Must not be a sentinel.
 */
VLRCOMN_API void orLL2_XRemove(orLL2Node* node);
/** @} */

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
