#include <cstring>

#include "vlrcomn/convert.h"

char* oruTstrtok_r(char* text, const char* delimiters, char** save) {
    return strtok_r(text, delimiters, save);
}
