/**
 * @file
 * @brief Three families of intrusive linked lists.
 *
 * | family        | shape                  | list                     | item begins with |
 * |---------------|------------------------|--------------------------|------------------|
 * | `LinkedList_` | doubly linked, counted | heap header              | #LinkedListItem  |
 * | `orLL_`       | singly linked          | one pointer to the first | #orLLItem        |
 * | `orLL2_`      | doubly linked nodes    | the caller's sentinels   | #orLL2Node       |
