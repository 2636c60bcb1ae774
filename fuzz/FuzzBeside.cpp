// Any bytes as one of the small files that stand beside another: the note of an unfinished
// recording and a seal. What is none is refused; what is one comes back as it was when it is
// written again.

#include "NullPlatform.h"

#include "base/RunTimeError.h"
#include "files/RecordingNote.h"
#include "report/Seal.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

const fuzz::NullPlatform platform;

void ReadAsNote(std::string_view bytes) {
    const auto file = platform.MakeFile("some.note", bytes);
    const auto note = FileOpr::ReadNote(file);
    if (!note)
        return;
    FileOpr::WriteNote(file, *note);
    fuzz::Require(FileOpr::ReadNote(file) == note);
}

void ReadAsSeal(std::string_view bytes) {
    const auto seal = Mreport::ReadSeal(bytes);
    if (!seal)
        return;
    const auto again = Mreport::ReadSeal(Mreport::SealText(*seal, "run.4ch"));
    fuzz::Require(again && again->points == seal->points && again->sealedAt == seal->sealedAt);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ReadAsNote(fuzz::Text(data, size));
    ReadAsSeal(fuzz::Text(data, size));
    return 0;
}
