#include "CoreIncludes.h"

#include "support/FakePlatform.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using Lines = std::vector<std::string>;

TEST(CoreIncludes, The_core_includes_neither_Qt_nor_screens_and_its_folders_point_one_way) {
    EXPECT_EQ(architecture::ForbiddenIncludes(VANTREL_SOURCE_FOLDER), Lines{});
}

/// A project of empty folders in which a test plants files.
class PlantedFiles : public testing::Test {
protected:
    PlantedFiles() {
        for (const char* name : {"app/program", "chem", "settings", "link", "files", "report",
                                 "platform/posix", "platform/win32", "platform/qt"})
            std::filesystem::create_directories(folder.Path() / name);
    }
    void Plant(const std::string& file, const std::string& bytes) {
        WriteBytes(folder.Path() / file, bytes);
    }
    Lines Found() { return architecture::ForbiddenIncludes(folder.Path()); }

    fake::TemporaryFolder folder;
};

TEST_F(PlantedFiles, An_include_of_Qt_is_found_with_its_file_and_line) {
    Plant("link/DataAcq.cpp", "#include \"link/DataAcq.h\"\n\n  #  include <QTimer>\n");
    Plant("app/Mcommon.h", "#include \"QString\"\n");
    std::filesystem::create_directories(folder.Path() / "report" / "inner");
    Plant("report/inner/Page.cpp", "#include \"ui_frmMain.h\"\n");
    EXPECT_EQ(Found(), (Lines{"app/Mcommon.h:1: includes Qt", "link/DataAcq.cpp:3: includes Qt",
                              "report/inner/Page.cpp:1: includes Qt"}));
}

TEST_F(PlantedFiles, An_include_of_a_screen_or_of_what_is_above_the_core_is_found) {
    Plant("files/a.cpp", "#include \"screens/frmMain/frmMain.h\"\n");
    Plant("files/b.cpp", "#include \"platform/qt/QtDialogs.h\"\n");
    Plant("platform/c.h", "#include \"program/theMain.h\"\n");
    EXPECT_EQ(Found(),
              (Lines{"files/a.cpp:1: includes screens", "files/b.cpp:1: includes platform/qt",
                     "platform/c.h:1: includes app/program"}));
}

TEST_F(PlantedFiles, An_include_against_the_direction_is_found) {
    Plant("chem/a.cpp", "#include \"settings/mWinInit.h\"\n");
    Plant("settings/b.cpp", "#include \"files/FileOpr.h\"\n");
    Plant("platform/posix/c.cpp", "#include \"link/CommPort.h\"\n");
    EXPECT_EQ(Found(), (Lines{"chem/a.cpp:1: includes settings, which stands above it",
                              "platform/posix/c.cpp:1: includes link from below the core",
                              "settings/b.cpp:1: includes files, which stands above it"}));
}

TEST_F(PlantedFiles, The_core_uses_the_seam_by_its_interfaces_alone) {
    Plant("settings/a.cpp", "#include \"platform/posix/PosixFile.h\"\n");
    EXPECT_EQ(Found(), Lines{"settings/a.cpp:1: includes the system's part of the seam instead of "
                             "its interface"});
}

TEST_F(PlantedFiles, What_is_allowed_is_not_reported) {
    Plant("report/a.cpp", "#include \"report/a.h\"\n#include \"files/FileOpr.h\"\n"
                          "#include \"app/Mcommon.h\"\n#include \"platform/Platform.h\"\n"
                          "#include <queue>\n// #include <QTimer>\n");
    Plant("platform/posix/b.cpp", "#include \"app/CodePage.h\"\n#include <fcntl.h>\n");
    Plant("platform/qt/c.cpp", "#include <QTimer>\n");
    Plant("program/d.cpp", "#include <QTimer>\n");
    EXPECT_EQ(Found(), Lines{});
}

TEST_F(PlantedFiles, A_missing_folder_is_an_error_not_a_success) {
    std::filesystem::remove_all(folder.Path() / "chem");
    EXPECT_THROW(Found(), std::runtime_error);
}

} // namespace
