#include "similar.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace vlrprops {

namespace {

bool same_letter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) ==
           std::tolower(static_cast<unsigned char>(b));
}

// The edit distance, row by row: row[j] is that of the first letters of `a` to the first j of `b`.
size_t distance(const std::string& a, const std::string& b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0]++;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t exchanged = diagonal + (same_letter(a[i], b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string similar_name(const std::string& typed, const std::vector<std::string>& names) {
    std::string nearest;
    size_t fewest = 3;
    for (const std::string& name : names) {
        if (const size_t steps = distance(typed, name); steps < fewest) {
            fewest = steps;
            nearest = name;
        }
    }
    return nearest;
}

}  // namespace vlrprops
