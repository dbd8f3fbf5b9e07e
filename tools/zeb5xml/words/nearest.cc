#include "words/nearest.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace {

bool same_letter(char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

constexpr size_t longest_text = 64; // no name is nearly as long

} // namespace

size_t changes_between(std::string_view a, std::string_view b) {
    std::vector<size_t> before(b.size() + 1), above(b.size() + 1), row(b.size() + 1);
    std::iota(above.begin(), above.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min(
                {above[j] + 1, row[j - 1] + 1, above[j - 1] + (same_letter(a[i - 1], b[j - 1]) ? 0 : 1)});
            if (i > 1 && j > 1 && same_letter(a[i - 1], b[j - 2]) && same_letter(a[i - 2], b[j - 1]))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(above);
        above.swap(row);
    }
    return above.back();
}

std::string nearest(std::string_view text, const std::vector<std::string> &names) {
    std::string best;
    if (text.size() > longest_text)
        return best;
    const size_t letters = text.size() - std::min(text.find_first_not_of('-'), text.size());
    size_t fewest = letters / 3 + 1; // more than this is another word
    for (const std::string &name : names)
        if (const size_t count = changes_between(text, name);
            count < fewest || (count == fewest && best.empty())) {
            fewest = count;
            best = name;
        }
    return best;
}

std::string did_you_mean(std::string_view text, const std::vector<std::string> &names) {
    const std::string name = nearest(text, names);
    return name.empty() ? name : "; did you mean '" + name + "'?";
}
