#include "vlrcomn/system.h"

int oruTranslateMessage(const void*) {
    return 1;
}
