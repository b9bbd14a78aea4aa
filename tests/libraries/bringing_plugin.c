/* A plug-in that brings the library with it and uses a thread of its own. */
#include <stddef.h>

#include "vlrcomn/handle.h"
#include "vlrcomn/sync.h"
#include "vlrcomn/thread.h"

VLRCOMN_API int use_a_thread(void);

static uint32_t run(void* parameter) {
    (void)parameter;
    return 0;
}

int use_a_thread(void) {
    oruHandle thread = oruCreateThread(NULL, 0, run, NULL, 0, NULL);
    if (thread == NULL) {
        return 0;
    }
    while (oruWaitForSingleObject(thread, 0) == ORU_WAIT_TIMEOUT) {
        oruWaitForSingleObject(thread, ORU_INFINITE);
    }
    return oruCloseHandle(thread);
}
