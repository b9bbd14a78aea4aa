/* A model of the shared/exclusive lock: source/lists/se_lock.cpp, se_lock_wait.cpp, notification.cpp.
 * Steps carry the names of the functions they stand for.
 *
 * Threads take the lock in modes of spin's choice, nest, downgrade, release, register and withdraw
 * notifications. A waiting thread may be woken without cause (SPURIOUS times in all) and may be cancelled
 * (CANCELS times in all). Both are bounded and may also be absent altogether, since a thread that can still
 * be rescued so never looks stuck. What is checked:
 *   mutual exclusion        the ghosts writer_in and readers_in, kept by the threads themselves
 *   no lost wake-up         every thread comes to its end: anything else is an invalid end state
 *   no touch after return   a waiter's record and a thread's event are not touched once they are gone
 *   notifications           called only when the lock is free, and never forgotten
 * What a thread does to plain fields under the spin word is one step, since no other thread can look;
 * flags and events, which waiters do look at, change one by one.
 *
 * Faults that must be found:
 *   FAULT_NO_RECHECK   a waiter takes any wake-up for its grant
 *   FAULT_NO_WORD      a waiter looks at its flag without the spin word
 *   FAULT_LATE_RESET   a waiter resets its event after giving the spin word back
 */
#ifndef THREADS
#define THREADS 3
#endif
#ifndef ROUNDS
#define ROUNDS 1
#endif
#ifndef SPURIOUS
#define SPURIOUS 1
#endif
#ifndef CANCELS
#define CANCELS 1
#endif

#define NOBODY THREADS

mtype = { exclusive, shared_starve_exclusive, shared_wait_for_exclusive, exclusive_notify };

typedef Queue {
    byte length;
    byte at[THREADS];           /* the head of the list is the last element */
}

/* The lock's record. */
bit spin;
byte owner = NOBODY;
byte count;
Queue shared_waiters;
Queue writers;
bit notification[THREADS];      /* at most one registration for each thread */

/* The waiters' records and the threads' events. */
bit record_alive[THREADS];
bit waiting[THREADS];
bit event_open[THREADS];
bit event_set[THREADS];

/* Ghosts. */
bit writer_in;
byte readers_in;
bit news_owed;                  /* somebody has registered, and nobody was called since */
byte spurious;
byte cancels;
byte ended;

inline orSL_Get() { atomic { spin == 0 -> spin = 1 } }

inline orSL_Release() { spin = 0 }

inline oruSetEvent(thread) {
    assert(event_open[thread]);
    event_set[thread] = 1
}

inline oruResetEvent() { event_set[me] = 0 }

/* Sleeps until the event is set; or it is woken without cause, or cancelled. */
inline oruWaitForSingleObject() {
    if
    :: event_set[me]
    :: atomic { spurious > 0 -> spurious-- }
    :: atomic { cancels > 0 -> cancels--; cancelled = 1 }
    fi
}

inline enqueue(queue) {
    d_step {
        record_alive[me] = 1;
        waiting[me] = 1;
        queue.at[queue.length] = me;
        queue.length++
    }
}

inline unlink(queue) {
    d_step {
        at = 0;
        do
        :: queue.at[at] == me -> break
        :: else -> at++
        od;
        do
        :: at + 1 < queue.length -> queue.at[at] = queue.at[at + 1]; at++
        :: else -> break
        od;
        queue.length--;
        queue.at[queue.length] = 0;
        at = 0
    }
}

inline wake_first(queue) {
    d_step {
        queue.length--;
        woken = queue.at[queue.length];
        queue.at[queue.length] = 0;
        assert(record_alive[woken])
    };
    waiting[woken] = 0;
    assert(record_alive[woken]);
    oruSetEvent(woken)
}

#if defined(FAULT_NO_RECHECK)
inline model_look_for_grant() { oruResetEvent(); granted = 1 }
#elif defined(FAULT_NO_WORD)
inline model_look_for_grant() { oruResetEvent(); granted = !waiting[me] }
#elif defined(FAULT_LATE_RESET)
inline model_look_for_grant() {
    orSL_Get();
    granted = !waiting[me];
    orSL_Release();
    oruResetEvent()
}
#else
inline model_look_for_grant() {
    orSL_Get();
    take_grant();
    orSL_Release()
}
#endif

inline take_grant() {
    oruResetEvent();
    granted = !waiting[me]
}

inline leave_cancelled(queue) {
    orSL_Get();
    take_grant();
    if
    :: !granted -> unlink(queue)
    :: else
    fi;
    record_alive[me] = 0;
    orSL_Release()
}

/* Afterwards the thread is granted the lock, or cancelled. */
inline wait_for_grant(queue) {
    granted = 0;
    do
    :: granted || cancelled -> break
    :: else ->
        oruWaitForSingleObject();
        if
        :: cancelled -> leave_cancelled(queue)
        :: else -> model_look_for_grant()
        fi
    od;
    record_alive[me] = 0
}

inline grant_exclusive() {
    d_step {
        count++;
        if
        :: owner == NOBODY -> owner = me
        :: else
        fi
    }
}

inline orSO_SELockExclusive() {
    orSL_Get();
    if
    :: count == 0 || owner == me -> grant_exclusive(); granted = 1; orSL_Release()
    :: else -> enqueue(writers); orSL_Release(); wait_for_grant(writers)
    fi
}

inline take_shared(may_share) {
    orSL_Get();
    if
    :: may_share -> count++; granted = 1; orSL_Release()
    :: else -> enqueue(shared_waiters); orSL_Release(); wait_for_grant(shared_waiters)
    fi
}

#define may_share_past_writers   (owner == NOBODY || owner == me)
#define may_share_behind_writers \
    (count == 0 || owner == me || (owner == NOBODY && writers.length == 0))

inline register_notification() {
    d_step {
        notification[me] = 1;
        news_owed = 1
    }
}

inline orSO_SELockExclusiveNotify() {
    orSL_Get();
    if
    :: count == 0 || owner == me -> grant_exclusive(); granted = 1
    :: else -> register_notification()
    fi;
    orSL_Release()
}

/* The callback may refuse, and the registration stays. */
inline orSO_SELockExclusiveUnnotify() {
    orSL_Get();
    if
    :: notification[me] ->
        d_step {
            notification[me] = 0;
            do
            :: at < THREADS && !notification[at] -> at++
            :: else -> break
            od;
            news_owed = news_owed && at < THREADS;
            at = 0
        }
    :: true
    fi;
    orSL_Release()
}

inline grant_to_shared_waiters() {
    do
    :: shared_waiters.length > 0 -> count++; wake_first(shared_waiters)
    :: else -> break
    od
}

inline grant_to_latest_writer() {
    d_step {
        count = 1;
        owner = writers.at[writers.length - 1]
    };
    wake_first(writers)
}

/* In an order and up to a callback of spin's choice. */
inline notify_free() {
    at = 0;
    do
    :: at < THREADS && notification[at] ->
        assert(count == 0 && owner == NOBODY);
        news_owed = 0;
        if
        :: notification[at] = 0; break      /* the callback returned 0 */
        :: at++
        fi
    :: at < THREADS && !notification[at] -> at++
    :: at == THREADS -> break
    od;
    at = 0
}

inline orSO_SELockExclusiveToShared() {
    orSL_Get();
    owner = NOBODY;
    grant_to_shared_waiters();
    orSL_Release()
}

inline orSO_SELockRelease() {
    orSL_Get();
    count--;
    if
    :: count > 0
    :: else ->
        owner = NOBODY;
        if
        :: writers.length > 0 -> grant_to_latest_writer()
        :: writers.length == 0 && shared_waiters.length > 0 -> grant_to_shared_waiters()
        :: writers.length == 0 && shared_waiters.length == 0 -> notify_free()
        fi
    fi;
    orSL_Release()
}

inline model_enter_exclusive() {
    d_step { assert(!writer_in && readers_in == 0); writer_in = 1 }
}

inline model_enter_shared() {
    d_step { assert(!writer_in); readers_in++ }
}

/* Takes the lock, does something with it, and gives it back. */
inline model_use_lock() {
    granted = 0;
    if
    :: mode = exclusive; orSO_SELockExclusive()
    :: mode = shared_starve_exclusive; take_shared(may_share_past_writers)
    :: mode = shared_wait_for_exclusive; take_shared(may_share_behind_writers)
    :: mode = exclusive_notify; orSO_SELockExclusiveNotify()
    fi;
    if
    :: cancelled || !granted
    :: !cancelled && granted && (mode == exclusive || mode == exclusive_notify) ->
        model_enter_exclusive();
        if
        :: true
        :: take_shared(may_share_behind_writers); assert(count == 2); orSO_SELockRelease()
        :: d_step { writer_in = 0; readers_in++ }; orSO_SELockExclusiveToShared()
        fi;
        d_step {
            if
            :: writer_in -> writer_in = 0
            :: else -> readers_in--
            fi
        }
    :: else -> model_enter_shared(); readers_in--
    fi;
    if
    :: granted -> orSO_SELockRelease()      /* for a cancelled thread by leave_cancelled */
    :: else
    fi
}

proctype Thread(byte me) {
    byte round;
    mtype mode;
    bit granted;
    bit cancelled;
    byte woken;
    byte at;

    event_open[me] = 1;                     /* orSO_ThreadAttach */
    do
    :: round == ROUNDS || cancelled -> break
    :: else -> model_use_lock(); round++
    od;
    if
    :: notification[me] && !cancelled -> orSO_SELockExclusiveUnnotify()
    :: true
    fi;
    event_open[me] = 0;                     /* orSO_ThreadDetach */
    ended++
}

init {
    byte thread;
    atomic {
        if
        :: spurious = SPURIOUS
        :: spurious = 0
        fi;
        if
        :: cancels = CANCELS
        :: cancels = 0
        fi;
        do
        :: thread < THREADS -> run Thread(thread); thread++
        :: else -> break
        od
    };
    ended == THREADS;
    assert(spin == 0 && count == 0 && owner == NOBODY);
    assert(writers.length == 0 && shared_waiters.length == 0 && !news_owed)
}
