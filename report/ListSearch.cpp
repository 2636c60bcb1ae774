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

} // namespace ListSearch
