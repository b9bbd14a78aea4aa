// Locked lists against a standard container behind a mutex.
#include <benchmark/benchmark.h>

#include <deque>
#include <forward_list>
#include <list>
#include <mutex>

#include "registry.h"
#include "support/own_lines.h"
#include "support/registering.h"
#include "vlrcomn/locked_list.h"

namespace {

// An item in a line of its own: threads that use different ones do not meet in it.
template <typename Link>
struct alignas(64) Alone : Link {};

class OurStack {
public:
    using Thread = AttachedThread;
    using Item = Alone<orLLItem>;
    OurStack() { orSLL_Create(&list_); }
    ~OurStack() { orSLL_Release(list_); }
    void push(Item* item) { orSLL_XInsertHead(list_, item); }
    Item* pop() { return static_cast<Item*>(orSLL_XRemoveHead(list_)); }

private:
    orSLL* list_ = nullptr;
};

class OurDeque {
public:
    using Thread = AttachedThread;
    using Item = Alone<orLL2Node>;
    OurDeque() { orSLL2_Create(&list_); }
    ~OurDeque() { orSLL2_Release(list_); }
    void push(Item* item) { orSLL2_XInsertTail(list_, item); }
    Item* pop() { return static_cast<Item*>(orSLL2_XRemoveHead(list_)); }

private:
    orSLL2* list_ = nullptr;
};

template <typename Container>
void put(Container& items, int* item) {
    items.push_back(item);
}
void put(std::forward_list<int*>& items, int* item) {
    items.push_front(item);
}

template <typename Container>
class Guarded {
public:
    struct Thread {};
    using Item = int;
    void push(Item* item) {
        const std::lock_guard guard(mutex_);
        put(items_, item);
    }
    Item* pop() {
        const std::lock_guard guard(mutex_);
        Item* const item = items_.front();
        items_.pop_front();
        return item;
    }

private:
    std::mutex mutex_;
    Container items_;
};

// One item out and in again; a few more inside, so that no thread finds the list empty.
template <typename List>
void out_and_in(benchmark::State& state) {
    [[maybe_unused]] const typename List::Thread thread;
    static typename List::Item items[8];
    static OwnLines<List> list;
    static std::once_flag filled;
    std::call_once(filled, [] {
        for (auto& item : items) {
            list.push(&item);
        }
    });
    for (auto _ : state) {
        list.push(list.pop());
    }
}

template <typename List>
void add_list(const char* workload, const char* contender) {
    for (const int threads : {1, 2}) {
        add_contender(workload, contender, out_and_in<List>)->Threads(threads)->UseRealTime();
    }
}

void add() {
    add_list<OurStack>("locked_stack_out_and_in", "ours");
    add_list<Guarded<std::forward_list<int*>>>("locked_stack_out_and_in", "std_mutex_forward_list");
    add_list<OurDeque>("locked_queue_out_and_in", "ours");
    add_list<Guarded<std::deque<int*>>>("locked_queue_out_and_in", "std_mutex_deque");
    add_list<Guarded<std::list<int*>>>("locked_queue_out_and_in", "std_mutex_list");
}
REGISTER_BENCHMARKS(add);

}  // namespace
