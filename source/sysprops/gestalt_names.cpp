// Names of the codes with which the Gestalt manager describes a processor.
#include <cstring>

#include "vlrcomn/system_properties.h"

namespace velora_com::qel::sysprops {

namespace {

struct NamedCode {
    long code;
    const char* name;
};

// A code written as four characters: their bytes as a big-endian number, whatever the host's order.
constexpr long four_characters(const char (&text)[5]) {
    long code = 0;
    for (int i = 0; i < 4; ++i) {
        code = code * 256 + text[i];
    }
    return code;
}

constexpr NamedCode architectures[] = {{1, "MC680x0"}, {2, "PowerPC"}, {10, "Intel"}};

constexpr NamedCode processor_types[] = {
    {0, "68000"},
    {1, "68010"},
    {2, "68020"},
    {3, "68030"},
    {4, "68040"},
    {257, "601"},
    {259, "603"},
    {260, "604"},
    {262, "603e"},
    {263, "603ev"},
    {264, "750"},
    {265, "604e"},
    {266, "604ev"},
    {268, "G4"},
    {272, "G47450"},  // without a blank, as the server knows it
    {four_characters("i486"), "486"},
    {four_characters("i586"), "Pentium"},
    {four_characters("i5ii"), "PentiumII"},
    {four_characters("i5iv"), "Pentium 4"},
    {four_characters("i5pr"), "PentiumPro"},
    {four_characters("ixxx"), "X86"},
};

template <size_t count>
bool name_code(const NamedCode (&table)[count], long code, char* out) {
    if (out == nullptr) {
        return false;
    }
    for (const NamedCode& entry : table) {
        if (entry.code == code) {
            std::memcpy(out, entry.name, std::strlen(entry.name) + 1);
            return true;
        }
    }
    return false;
}

}  // namespace

bool ConvertGestaltSysArchToString(long code, char* out) {
    return name_code(architectures, code, out);
}

bool ConvertGestaltCPUTypeToString(long code, char* out) {
    return name_code(processor_types, code, out);
}

}  // namespace velora_com::qel::sysprops
