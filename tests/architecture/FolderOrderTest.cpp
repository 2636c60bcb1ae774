#include "FolderOrder.h"

#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using Lines = std::vector<std::string>;

TEST(FolderOrder, No_folder_of_the_house_includes_one_above_it_and_the_core_includes_no_Qt) {
    EXPECT_EQ(architecture::ForbiddenIncludes(VANTREL_SOURCE_FOLDER), Lines{});
}

/// A project of empty folders in which a test plants files.
class PlantedFiles : public testing::Test {
protected:
    PlantedFiles() {
        for (const char* name : {"base",
                                 "platform/posix",
                                 "platform/win32",
                                 "platform/qt",
                                 "app",
                                 "chem",
                                 "settings",
                                 "link",
                                 "history",
                                 "files",
                                 "report",
                                 "screens/controls",
                                 "screens/calibration",
                                 "screens/frmSplash",
                                 "screens/frmSimulated",
                                 "screens/frmPortSettings",
                                 "screens/frmCommon",
                                 "screens/frmSrch",
                                 "screens/frmPrint",
                                 "screens/frmLimits",
                                 "screens/frmVerify",
                                 "screens/frmHistory",
                                 "screens/frmCheck",
                                 "screens/Report",
                                 "screens/frmCalib",
                                 "screens/SimultCalib",
                                 "screens/frmMain",
                                 "program",
                                 "simulator",
                                 "tools"})
            std::filesystem::create_directories(folder.Path() / name);
    }
    void Plant(const std::string& file, const std::string& bytes) {
        std::filesystem::create_directories((folder.Path() / file).parent_path());
        WriteBytes(folder.Path() / file, bytes);
    }
    Lines Found() { return architecture::ForbiddenIncludes(folder.Path()); }

    fake::TemporaryFolder folder;
};

TEST_F(PlantedFiles, An_include_of_Qt_in_the_core_is_found_with_its_file_and_line) {
    Plant("link/DataAcq.cpp", "#include \"link/DataAcq.h\"\n\n  #  include <QTimer>\n");
    Plant("app/Mcommon.h", "#include \"QString\"\n");
    Plant("report/inner/Page.cpp", "#include \"ui_frmMain.h\"\n");
    EXPECT_EQ(Found(), (Lines{"app/Mcommon.h:1: includes Qt", "link/DataAcq.cpp:3: includes Qt",
                              "report/inner/Page.cpp:1: includes Qt"}));
}

TEST_F(PlantedFiles, An_include_of_a_folder_above_is_found_on_every_floor) {
    Plant("base/a.h", "#include \"platform/Clock.h\"\n");
    Plant("platform/b.h", "#include \"app/Mcommon.h\"\n");
    Plant("chem/c.cpp", "#include \"settings/mWinInit.h\"\n");
    Plant("files/d.cpp", "#include \"screens/frmMain/frmMain.h\"\n");
    Plant("screens/controls/e.h", "#include \"screens/Report/Report.h\"\n");
    Plant("screens/frmMain/f.cpp", "#include \"program/theMain.h\"\n");
    EXPECT_EQ(Found(),
              (Lines{"base/a.h:1: includes platform, which stands above it",
                     "chem/c.cpp:1: includes settings, which stands above it",
                     "files/d.cpp:1: includes screens/frmMain, which stands above it",
                     "platform/b.h:1: includes app, which stands above it",
                     "screens/controls/e.h:1: includes screens/Report, which stands above it",
                     "screens/frmMain/f.cpp:1: includes program, which stands above it"}));
}

TEST_F(PlantedFiles, The_house_uses_the_seam_by_its_interfaces_alone) {
    Plant("settings/a.cpp", "#include \"platform/posix/PosixFile.h\"\n");
    Plant("platform/win32/b.cpp", "#include \"platform/posix/PosixFile.h\"\n");
    EXPECT_EQ(
        Found(),
        (Lines{"platform/win32/b.cpp:1: includes platform/posix instead of the seam's interface",
               "settings/a.cpp:1: includes platform/posix instead of the seam's interface"}));
}

TEST_F(PlantedFiles, The_seam_knows_nothing_of_the_core_that_it_serves) {
    Plant("platform/qt/a.cpp", "#include \"link/CommPort.h\"\n");
    EXPECT_EQ(Found(), Lines{"platform/qt/a.cpp:1: includes link from below the seam"});
}

TEST_F(PlantedFiles, The_simulated_instrument_shares_the_ground_alone) {
    Plant("simulator/a.cpp", "#include \"base/NumberText.h\"\n#include \"link/Frame.h\"\n");
    Plant("link/b.cpp", "#include \"simulator/Faults.h\"\n");
    EXPECT_EQ(Found(),
              (Lines{"link/b.cpp:1: includes simulator, which is no part of its building",
                     "simulator/a.cpp:2: includes link, which is no part of its building"}));
}

TEST_F(PlantedFiles, The_program_for_measurement_files_knows_the_core_and_no_screen) {
    Plant("tools/a.cpp", "#include \"report/Verify.h\"\n#include \"files/FileOpr.h\"\n"
                         "#include \"tools/a.h\"\n");
    Plant("tools/b.cpp", "#include \"platform/qt/Text.h\"\n#include <QString>\n"
                         "#include \"simulator/Faults.h\"\n");
    Plant("report/c.cpp", "#include \"tools/a.h\"\n");
    EXPECT_EQ(Found(),
              (Lines{"report/c.cpp:1: includes tools, which is no part of its building",
                     "tools/b.cpp:1: includes platform/qt, which is no part of its building",
                     "tools/b.cpp:2: includes Qt",
                     "tools/b.cpp:3: includes simulator, which is no part of its building"}));
}

TEST_F(PlantedFiles, What_is_allowed_is_not_reported) {
    Plant("report/a.cpp", "#include \"report/a.h\"\n#include \"files/FileOpr.h\"\n"
                          "#include \"app/Mcommon.h\"\n#include \"platform/Platform.h\"\n"
                          "#include <queue>\n// #include <QTimer>\n");
    Plant("platform/posix/b.cpp", "#include \"base/CodePage.h\"\n#include <fcntl.h>\n");
    Plant("platform/qt/c.cpp", "#include <QTimer>\n#include \"platform/Desktop.h\"\n");
    Plant("program/d.cpp", "#include <QTimer>\n#include \"screens/frmMain/frmMain.h\"\n");
    EXPECT_EQ(Found(), Lines{});
}

TEST_F(PlantedFiles, A_missing_folder_is_an_error_not_a_success) {
    std::filesystem::remove_all(folder.Path() / "chem");
    EXPECT_THROW(Found(), std::runtime_error);
}

} // namespace
