// Characters as the C locale classes them: the C library's functions follow the program's locale, and take
// no negative char.
#pragma once

namespace velora_com::qel::support {

constexpr bool is_space(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool is_upper(char character) {
    return character >= 'A' && character <= 'Z';
}

constexpr char to_lower(char character) {
    return is_upper(character) ? static_cast<char>(character - 'A' + 'a') : character;
}

constexpr char to_upper(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

constexpr bool is_alphanumeric(char character) {
    return is_digit(character) || is_upper(to_upper(character));
}

}  // namespace velora_com::qel::support
