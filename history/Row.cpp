#include "history/Row.h"

#include "base/CodePage.h"
#include "base/NumberText.h"
#include "platform/System.h"

namespace History {

namespace {

/// With its length in front: no two different rows give the same bytes.
void AddTo(platform::Digest& digest, const std::string& text) {
    digest.Add(std::to_string(text.size()) + ":");
    digest.Add(text);
}

} // namespace

std::string SumOf(const Row& row) {
    const auto digest = platform::MakeSha256();
    AddTo(*digest, row.before);
    AddTo(*digest, std::to_string(row.number));
    for (const std::string& field : row.fields)
        AddTo(*digest, field);
    return digest->Hex();
}

Row::Fields FieldsOf(const Entry& entry) {
    Row::Fields fields;
    fields[Row::at] = SortableTime(entry.at);
    fields[Row::kind] = NameOf(entry.kind);
    fields[Row::analyst] = CodePage::ToUtf8(entry.analyst);
    fields[Row::user] = CodePage::ToUtf8(entry.user);
    if (entry.channel)
        fields[Row::channel] = std::to_string(*entry.channel + 1);
    fields[Row::electrode] = CodePage::ToUtf8(entry.electrode);
    fields[Row::serialNo] = CodePage::ToUtf8(entry.serialNo);
    fields[Row::file] = CodePage::ToUtf8(entry.file);
    fields[Row::text] = CodePage::ToUtf8(entry.text);
    fields[Row::data] = CodePage::ToUtf8(entry.data);
    return fields;
}

NumberedEntry EntryOf(const Row& row) {
    const auto text = [&row](Row::Field field) { return CodePage::Legible(row.fields[field]); };
    Entry entry;
    entry.at = TimeOf(row.fields[Row::at]).value_or(LocalTime{});
    entry.kind = KindNamed(row.fields[Row::kind]).value_or(Kind::begun);
    entry.analyst = text(Row::analyst);
    entry.user = text(Row::user);
    if (const auto number = NumberText::StrictInteger(text(Row::channel)))
        entry.channel = *number - 1;
    entry.electrode = text(Row::electrode);
    entry.serialNo = text(Row::serialNo);
    entry.file = text(Row::file);
    entry.text = text(Row::text);
    entry.data = text(Row::data);
    return {row.number, entry};
}

} // namespace History
