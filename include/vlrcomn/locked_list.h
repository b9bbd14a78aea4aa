/**
 * @file
 * @brief Intrusive lists that are guarded by a shared/exclusive lock of their own.
 *
 * | type     | shape                                       | ends                              |
 * |----------|---------------------------------------------|-----------------------------------|
 * | #orSLL   | singly linked stack of #orLLItem            | insert and remove at the head     |
 * | #orSLL2  | doubly linked #orLL2Node, two sentinels     | insert and remove at both ends    |
 *
 * Items belong to the caller and are never allocated, copied or freed here. Insertions and removals
 * hold the list's lock exclusively, the tests for emptiness hold it shared behind queued exclusive
 * requests, and all of them wait as long as it takes. The X in a name promises nothing about
 * locking in this family: these functions lock by themselves.
 *
 * **Thread safety.** Any number of threads may use one list, each after orSO_ThreadAttach() (se_lock.h).
 * The lock is recursive for its exclusive owner, so a walk that began with an exclusive GetHead may
 * insert and remove; a walk under a shared GetHead must not, it would wait for itself for ever. Nor may
 * it ask whether the list is empty, or for its head again: with a writer queued in between that second
 * shared hold never comes.
 *
 * **A lock that is not granted.** A thread that is not attached is turned away when it would have
 * to wait. Links are touched only under a granted lock, so its insertion leaves the item out of the
 * list, its removal gives null and its test for emptiness says empty. The same holds for a list
 * whose lock was not created or is released already, provided that its header is still there.
 *
 * **Cancellation.** A call that is cancelled while it waits has not touched the list and holds
 * nothing. No function of this family is a cancellation point once it has the lock. (On Mac OS X 10.4 a
 * thread with a pending cancellation may end when its change is made and the lock released, so that
 * what it has removed is in nobody's hands.)
 *
 * A header must not be moved or copied while in use: the sentinels of #orSLL2 point into it.
 */
#ifndef VLRCOMN_LOCKED_LIST_H
#define VLRCOMN_LOCKED_LIST_H

#include <stdbool.h>
#include <stdint.h>

#include "vlrcomn/linked_list.h"
#include "vlrcomn/se_lock.h"
#include "vlrcomn/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/** @addtogroup lists
 * @{ */

/** @name Singly linked stack
 * @{ */

/** Header of a locked stack: two pointer words. */
typedef struct orSLL {
    orLLItem* first; /**< the first item; null when empty */
    orSELock* lock;  /**< guards the word above and the links of every item in the list */
} orSLL;

/**
 * What orSLL_XGetHead() gives when the lock was not granted: all-ones, as wide as a pointer.
 */
#ifdef __cplusplus
#define ORSLL_NOT_LOCKED (reinterpret_cast<orLLItem*>(UINTPTR_MAX))
#else
#define ORSLL_NOT_LOCKED ((orLLItem*)UINTPTR_MAX)
#endif

/**
 * Makes a header of the caller's an empty list.
 *
 * @param list the header; its old contents are overwritten, not released
 * @return 0; #ORU_FAILURE for null or when the lock cannot be created (its pointer is null then)
 */
VLRCOMN_API uint32_t orSLL_Init(orSLL* list);

/**
 * Allocates a header and makes it an empty list.
 *
 * **Test the pointer, not the status**: when the header can be allocated but its lock cannot be
 * created the status is 0 all the same, and only the null pointer tells.
 *
 * @param list where the header is stored: the new list, or null
 * @return 0; #ORU_FAILURE when the header cannot be allocated or `list` is null
 */
VLRCOMN_API uint32_t orSLL_Create(orSLL** list);

/**
 * Releases the lock of a list. Items still in it are left as they are, and the first word keeps
 * pointing at them. Nobody may use the list at the time, and nobody may hold its lock.
 *
 * @param list the header; null is ignored. The lock's word is null afterwards.
 */
VLRCOMN_API void orSLL_Uninit(orSLL* list);

/**
 * Undoes orSLL_Create(): orSLL_Uninit(), then the header is freed.
 *
 * @param list a header from orSLL_Create(); null is ignored
 */
VLRCOMN_API void orSLL_Release(orSLL* list);

/** Puts an item before the first. @param list the list @param item the item. Null: nothing happens.
 */
VLRCOMN_API void orSLL_XInsertHead(orSLL* list, orLLItem* item);

/** Takes the first item out. @param list the list @return the item; null when there is none */
VLRCOMN_API orLLItem* orSLL_XRemoveHead(orSLL* list);

/**
 * Takes the list's lock and begins a walk.
 *
 * Go on with orLL_XGetNext() until orLL_XIsEnd(), then call orSLL_LockRelease(), also when the list
 * was empty.
 *
 * @param list the list
 * @param exclusive 1 for exclusive access; any other value for shared access
 * @param wait 1 to wait for the lock; any other value to give up at once
 * @return the first item, or **null when the list is empty, and the lock is held in both cases**.
 *         #ORSLL_NOT_LOCKED when the lock was not granted: it must not be released then. Null, with
 *         nothing held, when `list` is null.
 */
VLRCOMN_API orLLItem* orSLL_XGetHead(orSLL* list, int exclusive, int wait);

/** Ends a walk that orSLL_XGetHead() began: one hold of the lock is given back.
 * @param list the list */
VLRCOMN_API void orSLL_LockRelease(orSLL* list);

/** Tells emptiness. @param list the list @return true when it is empty or null */
VLRCOMN_API bool orSLL_IsEmpty(orSLL* list);
/** @} */

/** @name Doubly linked list
 * @{ */

/** Header of a locked doubly linked list: five pointer words. */
typedef struct orSLL2 {
    orLL2Node head; /**< front sentinel: `next` is the first node, `previous` itself */
    orLL2Node tail; /**< back sentinel: `next` is itself, `previous` the last node */
    orSELock* lock; /**< guards the words above and the links of every node in the list */
} orSLL2;

/**
 * Makes a header of the caller's an empty list.
 *
 * @param list the header; its old contents are overwritten, not released
 * @return 0; #ORU_FAILURE for null or when the lock cannot be created (its pointer is null then)
 */
VLRCOMN_API uint32_t orSLL2_Init(orSLL2* list);

/**
 * Allocates a header and makes it an empty list, with the trap of orSLL_Create().
 *
 * @param list where the header is stored: the new list, or null
 * @return 0, **also with a null pointer when only the lock could not be created**; #ORU_FAILURE when
 * the header cannot be allocated or `list` is null
 */
VLRCOMN_API uint32_t orSLL2_Create(orSLL2** list);

/**
 * Removes every node from the head on (they are not freed), then releases the lock. Nobody else may
 * use the list at the time, and nobody may hold its lock.
 *
 * @param list the header; null is ignored. The lock's word is null afterwards.
 */
VLRCOMN_API void orSLL2_Uninit(orSLL2* list);

/**
 * Undoes orSLL2_Create(): orSLL2_Uninit(), then the header is freed.
 *
 * @param list a header from orSLL2_Create(); null is ignored
 */
VLRCOMN_API void orSLL2_Release(orSLL2* list);

/** Puts a node before the first. @param list the list @param item the node. Null: nothing happens.
 */
VLRCOMN_API void orSLL2_XInsertHead(orSLL2* list, orLL2Node* item);

/** Puts a node behind the last. @param list the list @param item the node. Null: nothing happens.
 */
VLRCOMN_API void orSLL2_XInsertTail(orSLL2* list, orLL2Node* item);

/** Takes the first node out. @param list the list @return the node; null when there is none */
VLRCOMN_API orLL2Node* orSLL2_XRemoveHead(orSLL2* list);

/** Takes the last node out. @param list the list @return the node; null when there is none */
VLRCOMN_API orLL2Node* orSLL2_XRemoveTail(orSLL2* list);

/**
 * Takes the list's lock and begins a walk.
 *
 * Go on with orLL2_XGetNext() until orLL2_XIsEnd(), then call orSLL2_LockRelease(), also when the
 * list was empty.
 *
 * @param list the list
 * @param exclusive 1 for exclusive access; any other value for shared access
 * @param wait 1 to wait for the lock; any other value to give up at once
 * @return the first node, or the back sentinel when the list is empty, with the lock held in both
 * cases.
 *         **Null when the lock was not granted**, or `list` is null: it must not be released then.
 * (The other family tells the same with all-ones.)
 */
VLRCOMN_API orLL2Node* orSLL2_XGetHead(orSLL2* list, int exclusive, int wait);

/** Ends a walk that orSLL2_XGetHead() began: one hold of the lock is given back.
 * @param list the list */
VLRCOMN_API void orSLL2_LockRelease(orSLL2* list);

/** Tells emptiness. @param list the list @return true when it is empty or null */
VLRCOMN_API bool orSLL2_IsEmpty(orSLL2* list);
/** @} */

/** @} */

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif
