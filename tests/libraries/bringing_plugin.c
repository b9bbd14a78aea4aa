/* A plug-in that brings the library with it and uses a thread of its own. */
#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

VLRCOMN_API int use_a_thread(void);

static uint32_t run(void* parameter) {
    (void)parameter;
    return 0;
}

int use_a_thread(void) {
    oruHandle thread = oruCreateThread(0, 0, run, 0, 0, 0);
    while (oruWaitForSingleObject(thread, 0) == ORU_WAIT_TIMEOUT) {
        oruWaitForSingleObject(thread, ORU_INFINITE);
    }
    return thread != 0 && oruCloseHandle(thread) == 1;
}
