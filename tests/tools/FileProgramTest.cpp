// vantrel-file as it has been built, started as its user starts it.

#include "files/MeasuringRun.h"
#include "files/Recovery.h"
#include "files/SetUpRun.h"
#include "files/TargetSeal.h"
#include "report/CsvExport.h"
#include "report/ReportLoader.h"
#include "report/SilentView.h"
#include "report/support/MeasuredRun.h"
#include "report/support/RecordingView.h"
#include "support/FakePlatform.h"
#include "support/NotedEntries.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

struct Ran {
    int code = -1;
    std::string output;
    std::string errors;
};

class FileProgram : public testing::Test {
protected:
    FileProgram() { platform.clock.step = std::chrono::milliseconds(1); }

    fs::path Folder() const { return platform.folder.Path(); }
    fs::path File(const std::string& name = "run.4ch") const { return Folder() / name; }

    /// Runs it in the folder of the test. The arguments are words of the shell.
    Ran Run(const std::string& arguments) const {
        const std::string command = "cd '" + Folder().string() + "' && XDG_DATA_HOME='" +
                                    File("data").string() + "' '" VANTREL_FILE_PROGRAM "' " +
                                    arguments + " >output 2>errors";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(Folder() / "output"),
                ReadBytes(Folder() / "errors")};
    }

    fake::Platform platform;
};

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_F(FileProgram, Wrong_use_is_told_and_gives_2) {
    for (const char* arguments :
         {"", "mend run.4ch", "info", "info --loud run.4ch", "csv --json run.4ch",
          "verify --force run.4ch", "seal -o - run.4ch", "csv -o", "csv -o - a.4ch b.4ch",
          "info --from . run.4ch", "seal --history a run.4ch"}) {
        const Ran ran = Run(arguments);
        EXPECT_EQ(ran.code, 2) << arguments;
        EXPECT_EQ(ran.output, "") << arguments;
        EXPECT_TRUE(ran.errors.starts_with("vantrel-file: ")) << arguments;
    }
}

TEST_F(FileProgram, Help_and_version_are_told) {
    const Ran help = Run("--help");
    EXPECT_EQ(help.code, 0);
    EXPECT_TRUE(help.output.starts_with("vantrel-file COMMAND [OPTION]... FILE...\n"));
    EXPECT_TRUE(Run("--version").output.starts_with("vantrel-file 6."));
}

TEST_F(FileProgram, The_completion_offers_every_command_and_option_of_the_help) {
    const std::string completion = ReadBytes(VANTREL_FILE_COMPLETION);
    for (const char* word :
         {"info", "csv", "verify", "seal", "recover", "--json", "--output", "--spreadsheet",
          "--force", "--history", "--from", "--help", "--version"}) {
        EXPECT_TRUE(Holds(Run("--help").output, word)) << word;
        EXPECT_TRUE(Holds(completion, word)) << word;
    }
    EXPECT_EQ(std::system("bash -n '" VANTREL_FILE_COMPLETION "'"), 0);
}

TEST_F(FileProgram, A_file_that_is_not_there_or_no_measurement_gives_1_and_the_others_are_told) {
    WriteBytes(File("letter.txt"), "Dear all,\n");
    WriteBytes(File(), MeasuredRun(1, 3).Text());
    const Ran ran = Run("info gone.4ch letter.txt run.4ch");
    EXPECT_EQ(ran.code, 1);
    EXPECT_TRUE(Holds(ran.errors, "Opening gone.4ch: File not found")) << ran.errors;
    EXPECT_TRUE(Holds(ran.errors, "Reading letter.txt: This is no measurement file")) << ran.errors;
    EXPECT_TRUE(Holds(ran.output, "run.4ch\n")) << ran.output;
}

TEST_F(FileProgram, Info_tells_project_channels_calibrations_and_records) {
    SetUpRun();
    FileOpr::MeasuringRun run;
    run.CreateHeadLines(File());
    run.SaveMeasure(File(), 1, "", DisplayedRun());
    run.SaveMeasure(File(), 2, "", DisplayedRun());
    const Ran ran = Run("info run.4ch");
    EXPECT_EQ(ran.code, 0);
    EXPECT_EQ(ran.output,
              "run.4ch\n"
              "  Project  Well 7\n"
              "  Analyst  A. Nalyst\n"
              "  Created  14:05:33  07.Mar.2003\n"
              "  Records  2, 1 of 14:05:33 07.Mar.2003 to 2 of 14:05:33 07.Mar.2003\n"
              "  Chan 1  H (pH), S/N PH-11, temperature sensor 1, calibrated 14:05 07.Mar.2003, "
              "2 points in pH, slopes -59.2\n"
              "  Chan 2  Ca, S/N CA-12, temperature sensor 2, calibrated 10:12:40 06.Mar.2003, "
              "3 points in mol/L, slopes 57.4 28.9\n"
              "  Chan 3  Redox, S/N RX-13, not calibrated\n"
              "  Chan 4  None, not calibrated\n");
    const Ran json = Run("info --json run.4ch");
    EXPECT_EQ(json.code, 0);
    EXPECT_TRUE(json.output.starts_with("[{\"file\":\"run.4ch\",\"project\":\"Well 7\""));
    EXPECT_TRUE(Holds(json.output, "\"records\":2,\"first\":1,\"last\":2,")) << json.output;
    EXPECT_TRUE(Holds(json.output, "\"potentials_mV\":[\"-55.3\",\n \"2.1\",\n \"31\"]"))
        << json.output;
}

TEST_F(FileProgram, A_file_that_is_cut_off_is_damaged) {
    const std::string text = MeasuredRun(1, 3).Text();
    WriteBytes(File(), text.substr(0, text.size() - 200));
    const Ran ran = Run("info run.4ch");
    EXPECT_EQ(ran.code, 1);
    EXPECT_TRUE(Holds(ran.output, "Records  3")) << ran.output;
    EXPECT_TRUE(Holds(ran.output, "; the last one is cut off\n")) << ran.output;
}

TEST_F(FileProgram, Verify_gives_0_for_what_was_measured_and_1_for_what_was_edited) {
    MeasuredRun run(3, 20);
    WriteBytes(File("good.4ch"), run.Text());
    run.records[6][1][Quantity::ppm] = "777.7";
    WriteBytes(File("edited.4ch"), run.Text());
    const Ran good = Run("verify good.4ch");
    EXPECT_EQ(good.code, 0) << good.output;
    EXPECT_TRUE(good.output.starts_with("good.4ch: 20 records, ")) << good.output;
    EXPECT_TRUE(Holds(good.output, " none diverged, none not to be computed.\n")) << good.output;
    const Ran edited = Run("verify good.4ch edited.4ch");
    EXPECT_EQ(edited.code, 1);
    EXPECT_TRUE(Holds(edited.output, "  Record 7, Chan 2, ppm: 777.7 is recorded, "))
        << edited.output;
    const Ran json = Run("verify --json edited.4ch");
    EXPECT_EQ(json.code, 1);
    EXPECT_TRUE(Holds(json.output, "\"diverged\":1,")) << json.output;
    EXPECT_TRUE(Holds(json.output, "{\"record\":7,\"channel\":2,\"unit\":\"ppm\",")) << json.output;
}

TEST_F(FileProgram, Csv_is_what_the_viewer_exports) {
    WriteBytes(File(), MeasuredRun(1, 30).Text());
    FileOpr::MeasuringRun run;
    Mreport::ViewedFile viewed;
    Mreport::ShownGraph shown;
    Mreport::SilentView<Mreport::SilentGraph> view(0);
    Mreport::ReportLoader(run, viewed, shown, view).ViewFile(File());
    Mreport::ExportCsv(viewed, File("viewer.csv"), Mreport::CsvReader::any, [] { return false; });
    const std::string expected = ReadBytes(File("viewer.csv"));
    ASSERT_GT(expected.size(), 1000u);

    const Ran beside = Run("csv run.4ch");
    EXPECT_EQ(beside.code, 0);
    EXPECT_EQ(beside.output, "run.csv: 30 records\n");
    EXPECT_EQ(ReadBytes(File("run.csv")), expected);
    const Ran output = Run("csv -o - run.4ch");
    EXPECT_EQ(output.code, 0);
    EXPECT_EQ(output.output, expected);
    EXPECT_EQ(Run("csv --spreadsheet -o - run.4ch").output, "\xEF\xBB\xBF" + expected);
}

TEST_F(FileProgram, Csv_replaces_no_file_that_it_was_not_told_to) {
    WriteBytes(File(), MeasuredRun(1, 3).Text());
    WriteBytes(File("run.csv"), "mine");
    const Ran refused = Run("csv run.4ch");
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(Holds(refused.errors, "The file is there already")) << refused.errors;
    EXPECT_EQ(ReadBytes(File("run.csv")), "mine");
    EXPECT_EQ(Run("csv --force run.4ch").code, 0);
    EXPECT_NE(ReadBytes(File("run.csv")), "mine");
    const std::string before = ReadBytes(File());
    EXPECT_EQ(Run("csv --force -o run.4ch run.4ch").code, 1);
    EXPECT_EQ(ReadBytes(File()), before);
}

TEST_F(FileProgram, A_full_standard_output_is_an_error) {
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    WriteBytes(File(), MeasuredRun(1, 3).Text());
    const std::string command = "cd '" + Folder().string() +
                                "' && '" VANTREL_FILE_PROGRAM
                                "' csv -o - run.4ch >/dev/full 2>errors";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_TRUE(Holds(ReadBytes(Folder() / "errors"), "standard output"));
}

TEST_F(FileProgram, A_seal_tells_verify_whether_the_file_is_what_was_sealed) {
    const std::string text = MeasuredRun(3, 20).Text();
    WriteBytes(File(), text);
    EXPECT_FALSE(Holds(Run("verify run.4ch").output, "Seal: "));
    const Ran sealed = Run("seal run.4ch");
    EXPECT_EQ(sealed.code, 0) << sealed.errors;
    EXPECT_EQ(sealed.output, "run.4ch.seal: 20 records sealed\n");
    const Ran same = Run("verify run.4ch");
    EXPECT_EQ(same.code, 0);
    EXPECT_TRUE(Holds(same.output, "  Seal: unchanged since ")) << same.output;

    std::string changed = text;
    changed[changed.find("14:05:33", changed.find("Record 9\t"))] = '2'; // no value diverges
    WriteBytes(File(), changed);
    const Ran other = Run("verify run.4ch");
    EXPECT_EQ(other.code, 1);
    EXPECT_TRUE(Holds(other.output, " none diverged, ")) << other.output;
    EXPECT_TRUE(Holds(other.output, ", behind record 8, or later\n")) << other.output;
    EXPECT_TRUE(Holds(Run("verify --json run.4ch").output, "\"seal\":\"changed since "));
}

TEST_F(FileProgram, A_seal_is_replaced_only_when_it_is_wanted_and_a_broken_one_is_told) {
    WriteBytes(File(), MeasuredRun(3, 2).Text());
    WriteBytes(File("run.4ch.seal"), "wax");
    const Ran broken = Run("verify run.4ch");
    EXPECT_EQ(broken.code, 1);
    EXPECT_TRUE(Holds(broken.errors, "Reading run.4ch.seal: This is no seal")) << broken.errors;
    EXPECT_EQ(Run("seal run.4ch").code, 1);
    EXPECT_EQ(ReadBytes(File("run.4ch.seal")), "wax");
    EXPECT_EQ(Run("seal --force run.4ch").code, 0);
    EXPECT_EQ(Run("verify run.4ch").code, 0);
}

TEST_F(FileProgram, Verify_tells_what_the_history_knows_of_the_file) {
    if (!History::CanBeKept())
        GTEST_SKIP() << "no history on this system";
    const std::string text = MeasuredRun(3, 5).Text();
    WriteBytes(File(), text);
    {
        const NotedEntries noted;
        FileOpr::TargetSeal seal;
        FileOpr::NoteSealed(seal, File());
    }
    const fs::path kept = History::UsualFile();
    const std::string told = "  History: unchanged since 07.Mar.2003 14:05:33\n";
    EXPECT_FALSE(Holds(Run("verify run.4ch").output, "History"));
    EXPECT_FALSE(fs::exists(File("data"))) << "none is made";
    const std::string named = "verify --history '" + kept.string() + "' ";
    const Ran same = Run(named + "run.4ch");
    EXPECT_EQ(same.code, 0);
    EXPECT_TRUE(Holds(same.output, told)) << same.output;
    fs::create_directories(File("data") / "Vantrel");
    fs::copy_file(kept, File("data") / "Vantrel/Vantrel.history");
    EXPECT_TRUE(Holds(Run("verify run.4ch").output, told)) << "the user's own";

    WriteBytes(File("other.4ch"), text);
    const Ran other = Run(named + "other.4ch");
    EXPECT_EQ(other.code, 0);
    EXPECT_FALSE(Holds(other.output, "History")) << "it does not know the file";
    WriteBytes(File(), text + "more");
    EXPECT_TRUE(Holds(Run(named + "run.4ch").output, "  History: grown since "));
    std::string changed = text;
    changed[changed.find("14:05:33", changed.find("Record 1\t"))] = '2'; // no value diverges
    WriteBytes(File(), changed);
    const Ran edited = Run(named + "--json run.4ch");
    EXPECT_EQ(edited.code, 1);
    EXPECT_TRUE(Holds(edited.output, "\"diverged\":0,")) << edited.output;
    EXPECT_TRUE(Holds(edited.output, "\"history\":\"changed since 07.Mar.2003 14:05:33: byte "))
        << edited.output;
}

TEST_F(FileProgram, A_recovery_is_taken_down_in_the_history) {
    if (!History::CanBeKept())
        GTEST_SKIP() << "no history on this system";
    SetUpRun();
    {
        const NotedEntries noted; // only begins it
        FileOpr::MeasuringRun run;
        run.currentMeasurementPath = run.GetTempFile();
        run.measuring = true;
        run.BeginTarget(File());
        run.SaveMeasure(run.currentMeasurementPath, 1, "", DisplayedRun());
    } // its program ends without a flush
    const std::string history = "--history '" + History::UsualFile().string() + "' run.4ch";
    const std::string left = platform::Current().places.TemporaryFolder().string();
    EXPECT_EQ(Run("recover --from '" + left + "' " + history).code, 0);
    const Ran verified = Run("verify " + history);
    EXPECT_TRUE(Holds(verified.output, "  History: unchanged since ")) << verified.output;
}

TEST_F(FileProgram, A_history_that_cannot_be_read_is_told_and_left_as_it_is) {
    if (!History::CanBeKept())
        GTEST_SKIP() << "no history on this system";
    WriteBytes(File(), MeasuredRun(3, 2).Text());
    const std::string wax(5000, 'x');
    WriteBytes(File("kept"), wax);
    const Ran broken = Run("verify --history kept run.4ch");
    EXPECT_EQ(broken.code, 0) << "the file itself is fine";
    EXPECT_TRUE(Holds(broken.output, "  History: kept: ")) << broken.output;
    EXPECT_EQ(ReadBytes(File("kept")), wax);
    WriteBytes(File("empty"), "");
    EXPECT_TRUE(Holds(Run("verify --history empty run.4ch").output, "empty: This is no history\n"));
    EXPECT_EQ(fs::file_size(File("empty")), 0U);
    const Ran gone = Run("verify --history gone run.4ch");
    EXPECT_EQ(gone.code, 1);
    EXPECT_TRUE(Holds(gone.errors, "Opening gone: File not found")) << gone.errors;
}

TEST_F(FileProgram, Recover_brings_in_what_a_recording_left_behind) {
    SetUpRun();
    const fs::path left = platform::Current().places.TemporaryFolder();
    {
        FileOpr::MeasuringRun run;
        run.currentMeasurementPath = run.GetTempFile();
        run.measuring = true;
        run.BeginTarget(File());
        run.SaveMeasure(run.currentMeasurementPath, 1, "", DisplayedRun());
        run.SaveMeasure(run.currentMeasurementPath, 2, "", DisplayedRun());
    } // its program ends without a flush
    const std::string from = "--from '" + left.string() + "' ";
    EXPECT_EQ(Run("recover " + from + "other.4ch").output,
              "other.4ch: no records were left behind for it\n");
    const Ran ran = Run("recover " + from + "run.4ch");
    EXPECT_EQ(ran.code, 0) << ran.errors;
    EXPECT_TRUE(
        Holds(ran.output, "run.4ch: 2 records brought in, the last of 14:05:33 07.Mar.2003"))
        << ran.output;
    EXPECT_TRUE(Holds(Run("info run.4ch").output, "Records  2"));
    EXPECT_EQ(Run("recover " + from + "--json run.4ch").output,
              "[{\"file\":\"run.4ch\",\"records\":0}]\n");
}
