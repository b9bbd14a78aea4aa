#include "vlrcomn/time_text.h"

void orumcomn_delay(int32_t) {}
