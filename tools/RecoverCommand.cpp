#include "base/CodePage.h"
#include "files/Recovery.h"
#include "tools/Commands.h"
#include "tools/HistoryOfFile.h"
#include "tools/OpenedFile.h"

#include <iostream>

namespace tools {

namespace {

/// Without links and points, also for a file that does not exist yet.
std::filesystem::path Plain(const std::filesystem::path& file) {
    return std::filesystem::weakly_canonical(std::filesystem::absolute(file));
}

/// The file may be named by where its records belong or by where they were left behind. A recording
/// that begins a file which exists goes beside that one, under a name like "run (2).4ch".
bool Belongs(const FileOpr::UnfinishedRecording& recording, const std::filesystem::path& file) {
    const auto wanted = Plain(file);
    const auto target = Plain(recording.target);
    const bool beside = target.parent_path() == wanted.parent_path() &&
                        target.stem().string().starts_with(wanted.stem().string() + " (");
    return beside || target == wanted || Plain(recording.temporaryFile) == wanted;
}

void Tell(const Options& options, const std::filesystem::path& file,
          const FileOpr::UnfinishedRecording& recording, JsonArray& answers) {
    if (options.json)
        answers.Add(Json()
                        .Text("file", NameOf(file))
                        .Text("target", NameOf(recording.target))
                        .Number("records", recording.records)
                        .Text("last", Utf8(recording.lastTimeStamp))
                        .Object());
    else
        std::cout << NameOf(recording.target) << ": " << recording.records
                  << (recording.records == 1 ? " record" : " records")
                  << " brought in, the last of " << Utf8(recording.lastTimeStamp) << '\n';
}

} // namespace

int Recover(const Options& options, const std::filesystem::path& file, JsonArray& answers) {
    const auto history = InstallHistory(options);
    bool found = false;
    for (auto& recording : FileOpr::FindUnfinishedRecordings()) {
        if (!Belongs(recording, file))
            continue;
        found = true;
        FileOpr::Recover(recording);
        Tell(options, file, recording, answers);
    }
    if (found)
        return fine;
    if (options.json)
        answers.Add(Json().Text("file", NameOf(file)).Number("records", 0).Object());
    else
        std::cout << NameOf(file) << ": no records were left behind for it\n";
    return fine;
}

} // namespace tools
