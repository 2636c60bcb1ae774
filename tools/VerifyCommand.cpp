#include "report/Verify.h"
#include "report/ViewedFile.h"
#include "tools/Commands.h"
#include "tools/HistoryOfFile.h"
#include "tools/OpenedFile.h"
#include "tools/SealFile.h"

#include <iostream>

namespace tools {

namespace {

std::string Shown(const std::string& cell) {
    return cell.empty() ? "no value" : Utf8(cell);
}

std::string LineOf(const Mreport::Divergence& found) {
    return "Record " + std::to_string(found.number) + ", " + Mreport::ChannelName(found.channel) +
           ", " + Utf8(Quantities::Label(found.quantity)) + ": " + Shown(found.recorded) +
           " is recorded, " + Utf8(found.expected) + " belongs to " + Shown(found.potential) +
           " mV";
}

std::string JsonOf(const Mreport::Divergence& found) {
    return Json()
        .Number("record", found.number)
        .Number("channel", static_cast<std::int64_t>(found.channel) + 1)
        .Text("unit", Utf8(Quantities::Label(found.quantity)))
        .Text("potential_mV", Utf8(found.potential))
        .Text("recorded", Utf8(found.recorded))
        .Text("computed", Utf8(found.expected))
        .Object();
}

std::string JsonOf(const Mreport::NotComputed& reason) {
    return Json()
        .Number("channel", static_cast<std::int64_t>(reason.channel) + 1)
        .Text("unit", Utf8(Quantities::Label(reason.quantity)))
        .Text("why", Utf8(reason.why))
        .Number("count", reason.count)
        .Object();
}

std::string JsonOf(const std::filesystem::path& file, const Mreport::VerifyResult& result,
                   const std::optional<SealFound>& seal, const std::optional<SealFound>& history) {
    JsonArray divergences;
    for (const auto& found : result.divergences)
        divergences.Add(JsonOf(found));
    JsonArray reasons;
    for (const auto& reason : result.reasons)
        reasons.Add(JsonOf(reason));
    Json json;
    json.Text("file", NameOf(file))
        .Number("records", result.records)
        .Number("reproduced", result.reproduced)
        .Number("diverged", result.diverged)
        .Number("notComputed", result.notComputed)
        .Raw("divergences", divergences.Text())
        .Raw("reasons", reasons.Text());
    if (seal)
        json.Text("seal", Utf8(seal->text));
    if (history)
        json.Text("history", Utf8(history->text));
    return json.Object();
}

void Print(const char* caption, const std::optional<SealFound>& seal) {
    if (seal)
        std::cout << "  " << caption << ": " << Utf8(seal->text) << '\n';
}

bool IsChanged(const std::optional<SealFound>& seal) {
    return seal && seal->changed;
}

void Print(const std::filesystem::path& file, const Mreport::VerifyResult& result) {
    std::cout << NameOf(file) << ": " << VerdictText(result) << '\n';
    for (const auto& found : result.divergences)
        std::cout << "  " << LineOf(found) << '\n';
    const auto listed = static_cast<std::int64_t>(result.divergences.size());
    if (listed < result.diverged)
        std::cout << "  and " << Mreport::Grouped(result.diverged - listed) << " more\n";
    for (const auto& reason : result.reasons)
        std::cout << "  " << Utf8(ReasonText(reason)) << '\n';
}

} // namespace

int Verify(const Options& options, const std::filesystem::path& file, JsonArray& answers) {
    Mreport::ViewedFile viewed;
    Load(file, viewed);
    Mreport::Verification verification(viewed);
    verification.Step(wholeFile);
    const auto result = verification.Result();
    const auto seal = CheckSeal(file, viewed);
    const auto history = CheckHistory(options, file, viewed);
    if (options.json) {
        answers.Add(JsonOf(file, result, seal, history));
    } else {
        Print(file, result);
        Print("Seal", seal);
        Print("History", history);
    }
    return result.diverged > 0 || IsChanged(seal) || IsChanged(history) ? notFine : fine;
}

} // namespace tools
