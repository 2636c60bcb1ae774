#include "report/ListSearch.h"

#include "base/Letters.h"

namespace ListSearch {

bool Matches(std::string_view item, std::string_view prefix) {
    if (prefix.empty())
        return false;
    if (Letters::BeginsWith(item, prefix))
        return true;
    if (!item.starts_with('['))
        return false;
    if (Letters::BeginsWith(item.substr(1), prefix))
        return true;
    return item.starts_with("[-") && Letters::BeginsWith(item.substr(2), prefix);
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
