#pragma once

#include <string>

// What a static initialiser of this library read.
struct EarlyCopies {
    std::wstring first_key, last_key, policy_section, last_policy_key, record_field;
    std::string release_file, task_section;
};

const EarlyCopies& early_copies();
