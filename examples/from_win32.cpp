// from_win32: what code from Win32 leans on and the library does not have, each in a small function of the
// program's own. To be copied.
//
// Shows: waits with any time-out, auto-reset events, waiting for all of several objects, a thread that starts
// suspended.
#include <vlrcomn/handle.h>
#include <vlrcomn/sync.h>
#include <vlrcomn/thread.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <thread>

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

static uint32_t look(oruHandle object) {
    return oruWaitForSingleObject(object, 0);
}

// WaitForSingleObject with a time-out that may have a part of a second. A timed wait fails while its
// milliseconds reach past the current second: one of 10 ms seldom and not for long, one of whole seconds
// never. So it waits in such steps, and tries again; what fails for another reason fails at the first look.
// As ever, a wake-up may have no cause.
static uint32_t wait_until(oruHandle object, Clock::time_point deadline) {
    uint32_t result = look(object);
    while (result == ORU_WAIT_TIMEOUT && Clock::now() < deadline) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
        const auto step = left < 1000 ? std::clamp<int64_t>(left, 1, 10)
                                      : std::min<int64_t>(left, 3600000) / 1000 * 1000;
        result = oruWaitForSingleObject(object, static_cast<uint32_t>(step));
        if (result == ORU_WAIT_FAILED) {
            std::this_thread::sleep_for(milliseconds(1));
            result = look(object);
        }
    }
    return result;
}

static Clock::time_point in(int64_t time_out) {
    return Clock::now() + milliseconds(time_out);
}

// CreateEvent with bManualReset FALSE: each signal is taken by one of those who wait. Who has been woken looks
// again with the mutex held; only one finds the event set, and resets it.
struct AutoResetEvent {
    oruHandle event = oruCreateEvent(nullptr, 1, 0, nullptr);
    oruHandle mutex = oruCreateMutex(nullptr, 0, nullptr);

    ~AutoResetEvent() {
        oruCloseHandle(event);
        oruCloseHandle(mutex);
    }

    void set() { oruSetEvent(event); }

    uint32_t wait(Clock::time_point deadline) {
        for (;;) {
            uint32_t result = wait_until(event, deadline);
            if (result != ORU_WAIT_SIGNALLED) {
                return result;
            }
            if (oruWaitForSingleObject(mutex, ORU_INFINITE) != ORU_WAIT_SIGNALLED) {
                return ORU_WAIT_FAILED;
            }
            result = look(event);
            if (result == ORU_WAIT_SIGNALLED) {
                oruResetEvent(event);
            }
            oruReleaseMutex(mutex);
            if (result == ORU_WAIT_SIGNALLED) {
                return result;
            }
        }
    }
};

// WaitForMultipleObjects with bWaitAll TRUE, for manual-reset events and threads: waits for one after another
// until a look finds all of them signalled. (A mutex would be taken by the first look.)
static uint32_t wait_for_all(std::initializer_list<oruHandle> objects, Clock::time_point deadline) {
    const auto signalled = [](oruHandle object) { return look(object) == ORU_WAIT_SIGNALLED; };
    do {
        for (oruHandle object : objects) {
            const uint32_t result = wait_until(object, deadline);
            if (result != ORU_WAIT_SIGNALLED) {
                return result;
            }
        }
    } while (!std::all_of(objects.begin(), objects.end(), signalled));
    return ORU_WAIT_SIGNALLED;
}

// CreateThread with CREATE_SUSPENDED: the thread waits at a gate, which ResumeThread opens. It has to be
// resumed, and its end waited for, while this object lives.
struct SuspendedThread {
    oruThreadRoutine routine;
    void* parameter;
    oruHandle gate = oruCreateEvent(nullptr, 1, 0, nullptr);
    oruHandle thread = gate ? oruCreateThread(nullptr, 0, run, this, 0, nullptr) : nullptr;

    ~SuspendedThread() {
        oruCloseHandle(thread);
        oruCloseHandle(gate);
    }

    void resume() { oruSetEvent(gate); }

    static uint32_t run(void* self) {
        const SuspendedThread& thread = *static_cast<SuspendedThread*>(self);
        while (look(thread.gate) == ORU_WAIT_TIMEOUT) {
            oruWaitForSingleObject(thread.gate, ORU_INFINITE);
        }
        return thread.routine(thread.parameter);
    }
};

// Two players at one ball: each throw is caught by one of them.
struct Game {
    AutoResetEvent ball, caught;
};

static uint32_t play(void* parameter) {
    auto* const game = static_cast<Game*>(parameter);
    for (int turn = 0; turn < 2 && game->ball.wait(in(60500)) == ORU_WAIT_SIGNALLED; ++turn) {
        game->caught.set();
    }
    return 0;
}

int main() {
    Game game;
    SuspendedThread first{play, &game}, second{play, &game};
    if (first.thread == nullptr || second.thread == nullptr) {
        std::abort();
    }
    game.ball.set();
    std::puts(game.caught.wait(in(30)) == ORU_WAIT_TIMEOUT ? "nobody plays" : "too early");

    first.resume();
    second.resume();
    int caught = 0;
    while (game.caught.wait(in(60500)) == ORU_WAIT_SIGNALLED && ++caught < 4) {
        game.ball.set();
    }
    std::printf("caught %d\n", caught);
    if (wait_for_all({first.thread, second.thread}, in(60500)) != ORU_WAIT_SIGNALLED) {
        std::abort();  // they still use the game
    }
    std::puts("both have ended");
}
