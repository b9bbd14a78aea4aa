// The wildcard rules as they are told, for comparison: one call for each step of pattern and name.
#pragma once

inline bool wildcard_model(const char* pattern, const char* name) {
    switch (*pattern) {
        case '\0':
            return true;
        case '?':
            return *name != '\0' && wildcard_model(pattern + 1, name + 1);
        case '*':
            if (*name == '\0') {
                return true;
            }
            for (; *name != '\0'; ++name) {
                if (wildcard_model(pattern + 1, name)) {
                    return true;
                }
            }
            return false;
        default:
            return *pattern == *name && wildcard_model(pattern + 1, name + 1);
    }
}
