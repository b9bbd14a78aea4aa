#include <cstring>
#include <utility>

#include "support/ascii.h"
#include "support/boundary.h"
#include "vlrcomn/logged_on_users.h"

namespace velora_com::qel::session {

void parseFullUserName(const std::wstring& fullName, std::wstring& domain, std::wstring& user) {
    support::contained([&] {
        // Copies first: the results may be the text itself.
        const size_t backslash = fullName.find(L'\\');
        const bool divided = backslash != std::wstring::npos;
        std::wstring domain_part = divided ? fullName.substr(0, backslash) : std::wstring();
        std::wstring user_part = divided ? fullName.substr(backslash + 1) : fullName;
        domain = std::move(domain_part);
        user = std::move(user_part);
    });
}

void split(const std::string& text, char separator, std::vector<std::string>& pieces) {
    support::contained([&] {
        if (text.find(separator) == std::string::npos) {
            return;
        }
        size_t start = 0;
        for (size_t end = 0; end != std::string::npos; start = end + 1) {
            end = text.find(separator, start);
            pieces.push_back(text.substr(start, end - start));
        }
    });
}

std::string trimmer(const char* text) {
    if (text == nullptr) {
        return {};
    }
    const char* end = text + std::strlen(text);
    while (text != end && !support::is_alphanumeric(*text)) {
        ++text;
    }
    while (end != text && !support::is_alphanumeric(end[-1])) {
        --end;
    }
    return support::or_failure(std::string(), [&] { return std::string(text, end); });
}

void toLower(std::string& text) {
    for (char& character : text) {
        character = support::to_lower(character);
    }
}

}  // namespace velora_com::qel::session
