#include "values.h"

#include <ctime>
#include <cwchar>

#include "vlrcomn/property_keys.h"

namespace vlrprops {

namespace {

// The program keeps the "C" locale: a point before the decimals.
template <typename... Arguments>
std::wstring formatted(const wchar_t* format, Arguments... arguments) {
    wchar_t text[64] = {};
    std::swprintf(text, 64, format, arguments...);
    return text;
}

std::wstring readable_bytes(double bytes) {
    static const wchar_t* const units[] = {L"KiB", L"MiB", L"GiB", L"TiB", L"PiB", L"EiB"};
    if (bytes < 1024) {
        return formatted(L"%.0f B", bytes);
    }
    const wchar_t* const* unit = units;
    // What would be printed as 1024.0 is 1.0 of the next.
    for (bytes /= 1024; bytes >= 1023.95 && unit != std::end(units) - 1; ++unit) {
        bytes /= 1024;
    }
    return formatted(L"%.1f %ls", bytes, *unit);
}

std::wstring readable_time(double seconds) {
    const time_t time = static_cast<time_t>(seconds);
    tm utc = {};
    wchar_t text[64] = {};
    if (gmtime_r(&time, &utc) == nullptr ||
        std::wcsftime(text, 64, L"%Y-%m-%d %H:%M:%S UTC", &utc) == 0) {
        return formatted(L"%.0f", seconds);
    }
    return text;
}

}  // namespace

bool is_absent(const Property& property, const std::wstring& value) {
    return value.empty() || value == velora_com::qel::sysprops::DefaultProp_Val ||
           value == property.absent;
}

std::optional<double> number(Kind kind, const std::wstring& value) {
    wchar_t* end = nullptr;
    const double stated = std::wcstod(value.c_str(), &end);
    const std::wstring rest = end;
    if (kind == Kind::text || end == value.c_str() ||
        rest != (kind == Kind::megahertz ? L" MHz" : L"")) {
        return std::nullopt;
    }
    return kind == Kind::megabytes ? stated * 1048576 : stated;
}

std::wstring with_unit(Kind kind, const std::wstring& value) {
    if (!number(kind, value)) {
        return value;
    }
    return value + (kind == Kind::bytes ? L" bytes" : kind == Kind::megabytes ? L" MB" : L"");
}

std::wstring readable(Kind kind, const std::wstring& value) {
    const std::optional<double> stated = number(kind, value);
    if (!stated) {
        return value;
    }
    switch (kind) {
        case Kind::bytes:
        case Kind::megabytes:
            return readable_bytes(*stated);
        case Kind::megahertz:
            return *stated < 1000 ? value : formatted(L"%.2f GHz", *stated / 1000);
        case Kind::seconds:
            return readable_time(*stated);
        case Kind::text:
        case Kind::number:
            break;
    }
    return value;
}

}  // namespace vlrprops
