// The forms in which callers write an address: bare, "[bracketed]", with a "%scope".
#pragma once

#include <string>

namespace velora_com::qel::network {

// Cuts `text` down to what stands between its first "[" and the "]" behind it. False, with the text
// untouched, when there is no such pair.
bool strip_brackets(std::string& text);

// Cuts everything from the first "%" on, of any text: whether the address is link-local is not looked at.
void strip_scope(std::string& text);

}  // namespace velora_com::qel::network
