#include "zoHPCSuggestion.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace
{
// Nobody types longer words; the comparison takes the product of both lengths.
constexpr int s_longestWord = 64;

// Letters that are changed, left out, put in or swapped with their neighbour.
int distance(const QString& a, const QString& b)
{
    const std::size_t width = std::size_t(b.size()) + 1;
    std::vector<int> rows(3 * width);
    int* beforeLast = rows.data();
    int* last = beforeLast + width;
    int* current = last + width;
    for (std::size_t k = 0; k < width; ++k)
        last[k] = int(k);
    for (int i = 1; i <= a.size(); ++i) {
        current[0] = i;
        for (int k = 1; k <= b.size(); ++k) {
            const int change = a.at(i - 1) == b.at(k - 1) ? 0 : 1;
            current[k] = std::min({last[k] + 1, current[k - 1] + 1, last[k - 1] + change});
            if (i > 1 && k > 1 && a.at(i - 1) == b.at(k - 2) && a.at(i - 2) == b.at(k - 1))
                current[k] = std::min(current[k], beforeLast[k - 2] + 1);
        }
        std::swap(beforeLast, last);
        std::swap(last, current);
    }
    return last[b.size()];
}
} // namespace

QString zoHPCSuggestion::closest(const QString& word, const QStringList& known)
{
    if (word.size() > s_longestWord)
        return {};
    const QString typed = word.toLower();
    QString result;
    int best = 0;
    for (const QString& candidate : known) {
        const QString name = candidate.toLower();
        // A third of the letters; of short words one.
        const int most = std::max<int>(1, std::min(typed.size(), name.size()) / 3);
        if (std::abs(typed.size() - name.size()) > most)
            continue;
        const int changes = distance(typed, name);
        if (changes > most || changes >= name.size())
            continue;
        if (result.isEmpty() || changes < best) {
            result = candidate;
            best = changes;
        }
    }
    return result;
}
