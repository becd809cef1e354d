#include "similar.h"

#include "../common/text.h"

#include <algorithm>
#include <numeric>

namespace zavra::tools
{

namespace
{

/// Characters to insert, delete or replace until one is the other, whatever their case.
std::size_t distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (lower_case(a[i]) == lower_case(b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

}

std::string did_you_mean(const std::string& word, const std::vector<std::string>& candidates)
{
    std::size_t best = std::max<std::size_t>(2, word.size() / 4) + 1;
    std::string found;
    for (const std::string& candidate : candidates)
        if (const std::size_t slips = distance(word, candidate); slips < best && slips < candidate.size()) {
            best = slips;
            found = candidate;
        }
    return found.empty() ? "" : "; did you mean \"" + found + "\"?";
}

}
