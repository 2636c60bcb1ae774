#include "screens/Report/RunFollower.h"

#include <QTimer>

namespace {
/// What another handler's record or flush may bring into the list before that handler goes on.
constexpr std::uint64_t readAtOnce_bytes = std::uint64_t{64} * 1024;
} // namespace

RunFollower::RunFollower(FileOpr::MeasuringRun& run, Mreport::ViewedFile& file,
                         Mreport::ReportLoader& loader)
    : run_(run), file_(file), loader_(loader),
      live_(run, [this] { guard_.Within(*this, "DynUpdate", [this] { FileGrown(); }); }) {}

void RunFollower::LookAgain() {
    NoticeLive();
    FileGrown();
}

/// A record has been written, or the temporary file has been flushed; it runs within the handler
/// that did it.
void RunFollower::FileGrown() {
    if (!run_.IsTarget(file_.path))
        return;
    if (file_.BegunAnew()) {
        QTimer::singleShot(0, this, [this] { Q_EMIT BegunAnew(); });
        return;
    }
    NoticeLive();
    const std::uint64_t bytes = loader_.NewBytes();
    if (bytes > readAtOnce_bytes)
        QTimer::singleShot(0, this, [this] { TakeWhatIsNew(); });
    else if (bytes > 0)
        loader_.LiveRecord();
    Q_EMIT Grown();
}

void RunFollower::TakeWhatIsNew() {
    guard_("FillList", [this] { loader_.ReadNew(); });
    Q_EMIT Grown();
}

/// The shown file stops being live when the measuring page is left, and is so again on return.
void RunFollower::NoticeLive() {
    const bool live = run_.IsLiveFile(file_.path);
    if (!loader_.Idle() || live == file_.viewingLiveFile)
        return;
    if (!live)
        loader_.SetAutoUpdate(false);
    file_.viewingLiveFile = live;
    Q_EMIT LiveChanged();
}
