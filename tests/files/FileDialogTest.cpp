#include "base/RunTimeError.h"
#include "files/FileOpr.h"
#include "files/MeasurementDialog.h"
#include "settings/mWinInit.h"
#include "support/FakePlatform.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using FileOpr::DialogMode;
using platform::FileDialogRequest;

class ShowFileDialog : public testing::Test {
protected:
    /// Answers the next dialog with this file and keeps what was asked.
    void Answer(const std::optional<fs::path>& file) {
        platform.dialogs.ExpectFileDialog([this, file](const FileDialogRequest& request) {
            asked = request;
            return file;
        });
    }

    fake::Platform platform;
    FileOpr::MeasurementDialog dialog;
    FileDialogRequest asked;
    fs::path name;
};

TEST_F(ShowFileDialog, The_save_dialog_of_four_channels_asks_for_4ch_files) {
    Answer("/data/run.4ch");
    EXPECT_TRUE(dialog.ShowFileDialog(name, DialogMode::save));
    EXPECT_EQ(asked.kind, FileDialogRequest::Kind::save);
    EXPECT_EQ(asked.title, "Save File As");
    EXPECT_EQ(asked.fileName, "*.4ch");
    EXPECT_EQ(asked.defaultExtension, "4ch");
    EXPECT_EQ(asked.filter, "Measurement Files (*.4ch)|*.4ch|All Files (*.*)|*.*");
    EXPECT_EQ(name, "/data/run.4ch");
}

TEST_F(ShowFileDialog, The_open_dialog_of_eight_channels_asks_for_8ch_files) {
    mWinInit::HardwareSettings.ChannelCount = 8;
    Answer("/data/run.8ch");
    EXPECT_TRUE(dialog.ShowFileDialog(name, DialogMode::open));
    EXPECT_EQ(asked.kind, FileDialogRequest::Kind::open);
    EXPECT_EQ(asked.title, "Open File");
    EXPECT_EQ(asked.fileName, "*.8ch");
    EXPECT_EQ(asked.defaultExtension, "8ch");
    EXPECT_EQ(asked.filter, "Measurement Files (*.8ch)|*.8ch|All Files (*.*)|*.*");
}

TEST_F(ShowFileDialog, A_name_without_extension_gets_that_of_the_channel_count) {
    Answer("/data.d/run");
    EXPECT_TRUE(dialog.ShowFileDialog(name, DialogMode::save));
    EXPECT_EQ(name, "/data.d/run.4ch");
    mWinInit::HardwareSettings.ChannelCount = 8;
    Answer("/data.d/run");
    EXPECT_TRUE(dialog.ShowFileDialog(name, DialogMode::save));
    EXPECT_EQ(name, "/data.d/run.8ch");
}

TEST_F(ShowFileDialog, A_name_with_another_extension_is_kept_as_typed) {
    Answer("/data/run.txt");
    EXPECT_TRUE(dialog.ShowFileDialog(name, DialogMode::save));
    EXPECT_EQ(name, "/data/run.txt");
    Answer("/data/run.");
    EXPECT_TRUE(dialog.ShowFileDialog(name, DialogMode::save));
    EXPECT_EQ(name, "/data/run.");
}

TEST_F(ShowFileDialog, A_cancelled_dialog_leaves_the_mask_and_the_last_folder) {
    dialog.lastFolder = "/before";
    Answer(std::nullopt);
    EXPECT_FALSE(dialog.ShowFileDialog(name, DialogMode::save));
    EXPECT_EQ(name, "*.4ch");
    EXPECT_EQ(dialog.lastFolder, "/before");
}

TEST_F(ShowFileDialog, The_next_dialog_starts_in_the_folder_of_the_last_file) {
    Answer("/data/sub/run.4ch");
    dialog.ShowFileDialog(name, DialogMode::save);
    EXPECT_EQ(dialog.lastFolder, "/data/sub");
    Answer("/run.4ch");
    dialog.ShowFileDialog(name, DialogMode::save);
    EXPECT_EQ(asked.initialFolder, "/data/sub");
    EXPECT_EQ(dialog.lastFolder, "/"); // a root keeps its separator
}

TEST_F(ShowFileDialog, The_first_dialog_starts_in_the_projects_folder) {
    mWinInit::ProjectInfo.MeasurementFileLocation = "/project";
    Answer(std::nullopt);
    dialog.ShowFileDialog(name, DialogMode::save);
    EXPECT_EQ(asked.initialFolder, "/project");
    mWinInit::ProjectInfo.MeasurementFileLocation.clear();
    Answer(std::nullopt);
    dialog.ShowFileDialog(name, DialogMode::save);
    EXPECT_EQ(asked.initialFolder, mWinInit::DefaultDataFolder());
}

TEST(SetDataFolder, The_data_folder_is_made_and_becomes_the_current_one) {
    fake::Platform platform;
    const auto data = platform.places.DataParentFolder() / "Data";
    FileOpr::SetDataFolder();
    EXPECT_TRUE(fs::equivalent(fs::current_path(), data));
}

TEST(SetDataFolder, A_file_in_its_place_is_a_run_time_error) {
    fake::Platform platform;
    WriteBytes(platform.places.DataParentFolder() / "Data", "");
    EXPECT_THROW(FileOpr::SetDataFolder(), RunTimeError);
}

} // namespace
