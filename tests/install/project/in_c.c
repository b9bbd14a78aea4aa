#include <string.h>
#include <vlrcomn/convert.h>
#include <vlrcomn/handle.h>
#include <vlrcomn/sync.h>

int main(void) {
    char text[16];
    oruHandle event = oruCreateEvent(NULL, 1, 1, NULL);
    const int signalled = oruWaitForSingleObject(event, ORU_INFINITE) == ORU_WAIT_SIGNALLED;
    const int converted = strcmp(oruItoa(255, text, 16), "ff") == 0;
    return signalled && converted && oruCloseHandle(event) ? 0 : 1;
}
