#pragma once

#include "history/Store.h"

#include <string>
#include <vector>

/// The fields of an entry that says only this.
inline History::Row::Fields Saying(const std::string& text) {
    History::Row::Fields fields;
    fields[History::Row::at] = "2026-11-21 14:30:07";
    fields[History::Row::kind] = "Setting changed";
    fields[History::Row::text] = text;
    return fields;
}

inline void Say(History::Store& store, const std::string& text) {
    const std::vector<History::Row::Fields> rows = {Saying(text)};
    store.Append(rows);
}

/// What the entries of a history say, in their order.
inline std::vector<std::string> TextsOf(const History::Store& store,
                                        const History::Wish& wish = {}) {
    std::vector<std::string> texts;
    for (const History::Row& row : store.Rows(wish))
        texts.push_back(row.fields[History::Row::text]);
    return texts;
}
