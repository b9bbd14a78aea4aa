// Filling find-data records.
#pragma once

#include <dirent.h>

#include "vlrcomn/file.h"

namespace velora_com::qel::files {

// Fills `data` for an entry of `directory`, whose open stream is `stream`. The status is the one that
// directory and name joined would lead to, and stays 0 when the two together are too long.
void fill_find_data(oruFindData& data, const dirent& entry, const char* directory, DIR* stream);

}  // namespace velora_com::qel::files
