// report FILE: writes this machine's properties to a file, one "name<TAB>value" on each line.
//
// Shows: every property in one map, wide text to UTF-8, a file behind a handle. The report is
// written beside its place and moved there when it is whole, so that nobody reads half of one.
#include <vlrcomn/file.h>
#include <vlrcomn/handle.h>
#include <vlrcomn/system_properties.h>
#include <vlrcomn/time_text.h>

#include <cerrno>
#include <cstdio>
#include <map>
#include <string>

// [properties]
static std::string report_text() {
    velora_com::qel::sysprops::ISysProps machine;
    std::map<std::wstring, std::wstring> properties;
    machine.GetAllSystemProperties(properties);  // false, with no properties: out of memory
    std::wstring text;
    for (const auto& [name, value] : properties) {
        text.append(name).append(L"\t").append(value).append(L"\n");
    }
    return velora_com::qel::orumcomn_wide_to_ansi(text);
}
// [properties]

// [write]
// A call may write less than it was given, or nothing when a signal comes between.
static bool write_all(oruHandle file, const std::string& text) {
    for (size_t done = 0; done < text.size();) {
        const auto rest = static_cast<uint32_t>(text.size() - done);
        uint32_t written = 0;
        if (oruWriteFile(file, text.data() + done, rest, &written, nullptr) == 1) {
            done += written;
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}
// [write]

int main(int count, char** arguments) {
    const std::string place = count == 2 ? arguments[1] : "", beside = place + ".new";
    const std::string text = report_text();
    if (place.empty() || text.empty()) {
        std::fputs(place.empty() ? "usage: report FILE\n" : "out of memory\n", stderr);
        return 2;
    }
    // [file]
    oruHandle file = oruCreateFileAW(beside.c_str(), ORU_ACCESS_WRITE, 0, nullptr,
                                     ORU_CREATE_ALWAYS, ORU_ATTRIBUTE_NORMAL, nullptr);
    const bool written = file != nullptr && write_all(file, text);
    const bool closed = oruCloseHandle(file) == 1;  // null is closed with no effect
    if (!written || !closed || oruMoveFile(beside.c_str(), place.c_str()) != 1) {
        std::perror(beside.c_str());
        return 1;  // what was written stays there to be looked at
    }
    // [file]
}
