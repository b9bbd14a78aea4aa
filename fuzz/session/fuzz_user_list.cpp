// The text of all users against a model. Input: names, one in a line; those with a backslash are network
// users.
#include <cstdint>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>

#include "session/user_list.h"

namespace session = velora_com::qel::session;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::set<std::wstring> network;
    std::set<std::wstring> local;
    std::wistringstream lines(std::wstring(data, data + size));
    for (std::wstring name; std::getline(lines, name);) {
        (name.find(L'\\') == std::wstring::npos ? local : network).insert(name);
    }

    std::wstring expected;
    for (const auto* names : {&network, &local}) {
        std::wstring text;
        for (const std::wstring& name : *names) {
            text += name + L",";
        }
        text = text.substr(0, text.size() - (text.empty() ? 0 : 1));
        expected += (expected.empty() || text.empty() ? L"" : L",") + text;
    }
    if (expected.size() > 127) {
        expected.resize(125);
        while (!expected.empty() && expected.back() != L',') {
            expected.pop_back();
        }
        expected = expected.substr(0, expected.size() - (expected.empty() ? 0 : 1)) + L",...";
    }
    const std::wstring list =
        session::bounded_list(session::joined(network), session::joined(local));
    if (list != expected || list.size() > 128) {
        std::abort();
    }
    return 0;
}
