/* A model of the shared/exclusive lock: source/locks/se_lock.cpp, se_lock_wait.cpp, notification.cpp.
 * Steps carry the names of the functions they stand for.
 *
 * Threads take the lock in modes of spin's choice, nest in any mode, downgrade, release, register and
 * withdraw notifications. A waiting thread may notice its flag without the spin word, may be woken without
 * cause (SPURIOUS times in all) and may be cancelled (CANCELS times in all). The last two are bounded and may
 * also be absent altogether, since a thread that can still be rescued so never looks stuck. What is checked:
 *   mutual exclusion        the ghosts writer_in and readers_in, kept by the threads themselves
 *   no lost wake-up         every thread comes to its end: anything else is an invalid end state
 *   no touch after return   a waiter's record and a thread's event are not touched once they are gone
 *   nobody is left behind   whenever the spin word is given back, nobody queues for a free lock, and readers
 *                           queue for one that is not owned only behind a writer; none after a downgrade
 *   recursion               the owner is let in at once in every mode, and releases as often
 *   notifications           called only when the lock is free, and never forgotten
 * Looking whether a taken lock falls free, before queuing, is left out: it changes nothing, and a request that is
 * made a moment later does the same. What a thread does to plain fields under the spin word is one step, since no other thread can look;
 * flags and events, which waiters do look at, change one by one.
 *
 * Faults that must be found:
 *   FAULT_NO_RECHECK            a waiter takes any wake-up for its grant
 *   FAULT_NO_WORD               a waiter looks at its flag without the spin word
 *   FAULT_FLAG_ALONE            a waiter that watches its flag returns on it
 *   FAULT_LATE_RESET            a waiter resets its event after giving the spin word back
 *   FAULT_OWNER_FORGOTTEN=n     the owner is not known again: 1 by the exclusive form, 2 by the notify form,
 *                               3 and 4 by the shared ones, past and behind writers
 *   FAULT_DOWNGRADE_FORGETS     a downgrade lets nobody in
 *   FAULT_DEPARTURE_FORGETS     a cancelled writer leaves the readers behind it queued
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
#ifndef FAULT_OWNER_FORGOTTEN
#define FAULT_OWNER_FORGOTTEN 0
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

inline orSL_Release() {
    d_step {
        assert(count > 0 || (owner == NOBODY && writers.length == 0));
        assert(owner != NOBODY || writers.length > 0 || shared_waiters.length == 0);
        spin = 0
    }
}

inline oruSetEvent(thread) {
    assert(event_open[thread]);
    event_set[thread] = 1
}

inline oruResetEvent() { event_set[me] = 0 }

/* Sleeps until the event is set; or it is woken without cause, or cancelled. */
inline wait_asleep() {
    if
    :: event_set[me]
    :: atomic { spurious > 0 -> spurious-- }
    :: atomic { cancels > 0 -> cancels--; cancelled = 1 }
    fi
}

#define is_let_in (!waiting[me])

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

/* Watches the flag without the spin word; then, having seen nothing, sleeps. */
inline model_watch_or_sleep() {
    if
#ifdef FAULT_FLAG_ALONE
    :: is_let_in -> granted = 1
#else
    :: is_let_in
#endif
    :: true -> wait_asleep()
    fi
}

#if defined(FAULT_NO_RECHECK)
inline model_look_for_grant() { oruResetEvent(); granted = 1 }
#elif defined(FAULT_NO_WORD)
inline model_look_for_grant() { oruResetEvent(); granted = is_let_in }
#elif defined(FAULT_LATE_RESET)
inline model_look_for_grant() {
    orSL_Get();
    granted = is_let_in;
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

inline grant_to_shared_waiters() {
    do
    :: shared_waiters.length > 0 -> count++; wake_first(shared_waiters)
    :: else -> break
    od
}

inline take_grant() {
    oruResetEvent();
    granted = is_let_in
}

inline admit_readers() {
    if
#ifndef FAULT_DEPARTURE_FORGETS
    :: writers.length == 0 && owner == NOBODY -> grant_to_shared_waiters()
#endif
    :: else
    fi
}

inline leave_cancelled(queue) {
    orSL_Get();
    take_grant();
    if
    :: !granted -> unlink(queue); admit_readers()
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
        model_watch_or_sleep();
        if
        :: cancelled -> leave_cancelled(queue)
        :: granted                              /* only by a planted fault */
        :: else -> model_look_for_grant()
        fi
    od;
    record_alive[me] = 0
}

/* The forms are numbered for FAULT_OWNER_FORGOTTEN alone. */
#define model_owned_by_me(form)  (owner == me && FAULT_OWNER_FORGOTTEN != form)
#define may_take_exclusive(form) (count == 0 || model_owned_by_me(form))
#define may_share_past_writers   (owner == NOBODY || model_owned_by_me(3))
#define may_share_behind_writers \
    (count == 0 || model_owned_by_me(4) || (owner == NOBODY && writers.length == 0))

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
    :: may_take_exclusive(1) -> grant_exclusive(); granted = 1; orSL_Release()
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

inline register_notification() {
    d_step {
        notification[me] = 1;
        news_owed = 1
    }
}

inline orSO_SELockExclusiveNotify() {
    orSL_Get();
    if
    :: may_take_exclusive(2) -> grant_exclusive(); granted = 1
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
#ifndef FAULT_DOWNGRADE_FORGETS
    grant_to_shared_waiters();
#endif
    assert(shared_waiters.length == 0);
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

inline model_take() {
    granted = 0;
    if
    :: mode == exclusive -> orSO_SELockExclusive()
    :: mode == shared_starve_exclusive -> take_shared(may_share_past_writers)
    :: mode == shared_wait_for_exclusive -> take_shared(may_share_behind_writers)
    :: mode == exclusive_notify -> orSO_SELockExclusiveNotify()
    fi
}

inline model_choose_mode() {
    if
    :: mode = exclusive
    :: mode = shared_starve_exclusive
    :: mode = shared_wait_for_exclusive
    :: mode = exclusive_notify
    fi
}

/* The owner once more, in any mode. */
inline model_nest() {
    model_choose_mode();
    model_take();
    assert(granted && owner == me && count == 2);
    nested = 1
}

inline model_downgrade() {
    d_step { writer_in = 0; readers_in++ };
    orSO_SELockExclusiveToShared()
}

/* Takes the lock, does something with it, and gives it back. */
inline model_use_lock() {
    model_choose_mode();
    model_take();
    if
    :: cancelled || !granted
    :: !cancelled && granted && (mode == exclusive || mode == exclusive_notify) ->
        model_enter_exclusive();
        if
        :: true
        :: model_nest()
        fi;
        if
        :: true
        :: model_downgrade()
        fi;
        if
        :: nested -> nested = 0; orSO_SELockRelease()
        :: else
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
    bit nested;
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
