#include "report/ListSearch.h"

#include <algorithm>

namespace ListSearch {

namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool BeginsWith(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() &&
           std::equal(prefix.begin(), prefix.end(), text.begin(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

} // namespace

bool Matches(std::string_view item, std::string_view prefix) {
    if (prefix.empty())
        return false;
    if (BeginsWith(item, prefix))
        return true;
    if (!item.starts_with('['))
        return false;
    if (BeginsWith(item.substr(1), prefix))
        return true;
    return item.starts_with("[-") && BeginsWith(item.substr(2), prefix);
}

int FindString(int count, const std::function<std::string_view(int)>& item, std::string_view prefix,
               int start) {
    if (start < 0 || start >= count)
        start = -1;
    for (int step = 1; step <= count; ++step) {
        const int index = (start + step) % count;
        if (Matches(item(index), prefix))
            return index;
    }
    return notFound;
}

} // namespace ListSearch
