#include "vlrcomn/time_text.h"

bool velora_com::qel::isBigEndian() {
    const uint16_t number = 1;
    return *reinterpret_cast<const unsigned char*>(&number) == 0;
}
