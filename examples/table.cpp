// table: a table that threads share under a shared/exclusive lock ("SE lock").
//
// Shows: the thread registry, exclusive and shared holds. The threads are the standard library's:
// the end of a thread of oruBeginThread() would empty the registry of the whole process.
#include <vlrcomn/se_lock.h>

#include <cstdio>
#include <future>
#include <map>
#include <memory>
#include <string>

// [hold]
struct Attached {  // from before a thread's first hold to after its last
    const bool ok = orSO_ThreadAttach() != 0;
    ~Attached() { orSO_ThreadDetach(); }
};

struct Release {
    void operator()(orSELock* lock) const { orSO_SELockRelease(lock); }
};
using Hold = std::unique_ptr<orSELock, Release>;  // null: not granted

static Hold take(orSELock* lock, int exclusive) {
    return Hold(orSO_SELock(lock, exclusive, 1) == 1 ? lock : nullptr);
}
// [hold]

struct Table {
    orSELock* lock = nullptr;
    std::map<std::string, int> seen;  // guarded by the lock
};

static bool count_up(Table& table, const std::string& name) {
    const Hold alone = take(table.lock, 1);  // never while holding it shared: that does not end
    return alone && ++table.seen[name] > 0;
}

static bool work(Table& table, const std::string& name) {
    const Attached attached;
    bool ok = attached.ok;
    for (int i = 1; ok && i <= 1000; ++i) {
        ok = count_up(table, name);
        const Hold shared = take(table.lock, 0);
        ok = ok && shared && table.seen.at(name) == i;
    }
    return ok;
}

int main() {
    Table table;
    if (orSO_ProcessAttach() == -1 || orSO_SELockCreate(&table.lock) != ORU_SUCCESS) {
        return 1;
    }
    auto first = std::async(std::launch::async, [&] { return work(table, "first"); });
    const bool second_ok = work(table, "second"), ok = first.get() && second_ok;
    // No thread uses the table any more, so it can be read without a hold.
    std::printf("first %d, second %d\n", table.seen["first"], table.seen["second"]);
    orSO_Release(table.lock);
    return orSO_ProcessDetach() == 1 && ok ? 0 : 1;
}
