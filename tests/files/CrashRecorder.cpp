// Records as the program does until it is killed. A line of standard output is written after each
// record whose writing has returned. Usage: crash_recorder ROOT SEED [recover]

#include "files/MeasuringRun.h"
#include "files/Recording.h"
#include "files/Recovery.h"
#include "files/SetUpRun.h"
#include "platform/System.h"
#include "support/FakePlatform.h"
#include "support/ToldProcess.h"

#include <cstdlib>
#include <random>

namespace {

/// Places below a root that outlives the process.
struct Services {
    explicit Services(const std::filesystem::path& root)
        : places(root), profile(platform::MakeProfileFile(root / "settings.ini")),
          files(platform::MakeFileStore()), services{dialogs,   desktop, clock,  *profile,
                                                     userStore, places,  *files, printing} {
        platform::Install(&services);
    }

    fake::Dialogs dialogs;
    fake::Desktop desktop;
    fake::Clock clock;
    fake::UserStore userStore;
    fake::Places places;
    fake::Printing printing;
    std::unique_ptr<platform::ProfileFile> profile;
    std::unique_ptr<platform::FileStore> files;
    platform::Services services;
};

[[noreturn]] void RecordForEver(const std::filesystem::path& root, unsigned seed) {
    std::mt19937 random(seed);
    const auto pick = [&](int high) { return std::uniform_int_distribution<int>(0, high)(random); };
    SetUpRun();
    FileOpr::MeasuringRun run;
    run.currentMeasurementPath = run.GetTempFile();
    run.BeginTarget(root / "run.4ch");
    Tell("begun");
    for (std::int32_t number = 1;; ++number) {
        const std::string comment(static_cast<std::size_t>(pick(9) == 0 ? pick(200000) : 20), 'c');
        run.SaveMeasure(run.currentMeasurementPath, number, comment, DisplayedRun());
        Tell(std::to_string(number));
        if (pick(2) == 0)
            run.FlushTempFile();
        if (pick(9) == 0)
            run.FollowTarget(!run.IsFollowing());
    }
}

int RecoverAll() {
    for (auto& recording : FileOpr::FindUnfinishedRecordings())
        FileOpr::Recover(recording);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3)
        return 1;
    const std::filesystem::path root = argv[1];
    const Services services(root);
    if (argc > 3)
        return RecoverAll();
    RecordForEver(root, static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10)));
}
