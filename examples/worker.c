/* worker: a thread that sleeps until there is work and ends when it is told to.
 *
 * Shows: an event, a mutex, a thread. The event only says "look"; what there is to do stands in the
 * record. It changes with the mutex held, so no news is lost; waking without news does no harm. */
#include <stdio.h>
#include <vlrcomn/handle.h>
#include <vlrcomn/sync.h>
#include <vlrcomn/thread.h>

static struct {
    oruHandle mutex, look;
    int jobs, stop; /* guarded by the mutex */
} worker;

/* [tell] */
static int wait_for(oruHandle object) {
    return oruWaitForSingleObject(object, ORU_INFINITE) == ORU_WAIT_SIGNALLED;
}

static int tell(int jobs, int stop) {
    if (!wait_for(worker.mutex)) {
        return 0;
    }
    worker.jobs += jobs;
    worker.stop = stop;
    const int told = oruSetEvent(worker.look);
    return oruReleaseMutex(worker.mutex) && told;
}
/* [tell] */

static uint32_t run(void* name) {
    int done = 0, stop = 0;
    while (!stop && wait_for(worker.look) && wait_for(worker.mutex)) {
        const int last = done + worker.jobs;
        worker.jobs = 0;
        stop = worker.stop;
        oruResetEvent(worker.look);
        oruReleaseMutex(worker.mutex);
        while (done < last) { /* the work itself, with nothing locked */
            printf("%s %d\n", (const char*)name, ++done);
        }
    }
    printf("%s after %d\n", stop ? "stopped" : "failed", done);
    return 0;
}

int main(void) {
    worker.mutex = oruCreateMutex(NULL, 0, NULL);
    worker.look = oruCreateEvent(NULL, 1, 0, NULL); /* manual reset, the only kind; not set */
    /* [thread] */
    oruHandle thread = oruCreateThread(NULL, 0, run, "job", 0, NULL);
    if (thread == NULL || !tell(2, 0) || !tell(1, 0) || !tell(0, 1)) {
        return 1; /* also when an event or mutex was not made: null is refused */
    }
    while (oruWaitForSingleObject(thread, 0) == ORU_WAIT_TIMEOUT) { /* has it ended? */
        oruWaitForSingleObject(thread, ORU_INFINITE);               /* may wake without cause */
    }
    oruCloseHandle(thread);
    /* [thread] */
    oruCloseHandle(worker.look);
    oruCloseHandle(worker.mutex);
    return 0;
}
