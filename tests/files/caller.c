/* Built with nothing but what the library's target hands on: both sides mean the same `struct dirent`. */
#include <stdio.h>
#include <string.h>

#include "vlrcomn/file.h"

int main(void) {
    DIR* const folder = opendir("/");
    const struct dirent* entry;
    oruFindData data;
    while ((entry = readdir(folder)) != NULL) {
        oruSetFindDataDirEnt(&data, entry, "/");
        if (strcmp(data.name, entry->d_name) != 0) {
            printf("%s was read as %s\n", entry->d_name, data.name);
            return 1;
        }
    }
    return closedir(folder);
}
