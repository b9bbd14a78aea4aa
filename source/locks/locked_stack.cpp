// orSLL: a singly linked stack behind a shared/exclusive lock.
#include "locks/locked_list_support.h"
#include "vlrcomn/locked_list.h"

using namespace velora_com::qel::locks;

static_assert(sizeof(void*) != 4 || sizeof(orSLL) == 8, "two words on a 32-bit host");

extern "C" {

uint32_t orSLL_Init(orSLL* list) {
    if (list == nullptr) {
        return ORU_FAILURE;
    }
    orLL_Init(&list->first);
    return orSO_SELockCreate(&list->lock);
}

uint32_t orSLL_Create(orSLL** list) {
    return create_list(list, orSLL_Init);
}

void orSLL_Uninit(orSLL* list) {
    if (list == nullptr) {
        return;
    }
    orSO_Release(list->lock);
    list->lock = nullptr;
}

void orSLL_Release(orSLL* list) {
    orSLL_Uninit(list);
    std::free(list);
}

void orSLL_XInsertHead(orSLL* list, orLLItem* item) {
    if (list == nullptr || item == nullptr) {
        return;
    }
    if (const ExclusiveHold hold(list->lock); hold) {
        orLL_XInsertHead(&list->first, item);
    }
}

orLLItem* orSLL_XRemoveHead(orSLL* list) {
    if (list == nullptr) {
        return nullptr;
    }
    const ExclusiveHold hold(list->lock);
    return hold ? orLL_XRemoveHead(&list->first) : nullptr;
}

orLLItem* orSLL_XGetHead(orSLL* list, int exclusive, int wait) {
    if (list == nullptr) {
        return nullptr;
    }
    return orSO_SELock(list->lock, exclusive, wait) == 1 ? orLL_XGetStart(list->first)
                                                         : ORSLL_NOT_LOCKED;
}

void orSLL_LockRelease(orSLL* list) {
    if (list != nullptr) {
        orSO_SELockRelease(list->lock);
    }
}

bool orSLL_IsEmpty(orSLL* list) {
    if (list == nullptr) {
        return true;
    }
    const SharedHold hold(list->lock);
    return !hold || orLL_IsEmpty(&list->first) == 1;
}

}  // extern "C"
