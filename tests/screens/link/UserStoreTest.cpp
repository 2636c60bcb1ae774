#include "platform/qt/QtUserStore.h"

#include "base/RunTimeError.h"
#include "support/FakePlatform.h"

#include <QSettings>

#include <gtest/gtest.h>

namespace {

/// The store in a folder of the test's own.
class UserStore : public testing::Test {
protected:
    void SetUp() override {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(folder.Path().string()));
    }

    fake::TemporaryFolder folder;
    platform::QtUserStore store;
};

TEST_F(UserStore, A_setting_comes_back) {
    store.SaveSetting("CommPort", "Startup", "BitRate", "2400");

    EXPECT_EQ(platform::QtUserStore().GetSetting("CommPort", "Startup", "BitRate", "9600"), "2400");
}

TEST_F(UserStore, One_that_cannot_be_written_is_an_error_that_names_the_file) {
    WriteBytes(folder.Path() / "Vantrel", "a file where the folder should be");
    try {
        store.SaveSetting("CommPort", "Startup", "BitRate", "2400");
        FAIL() << "saved";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("Saving BitRate: ")) << error.what();
        EXPECT_TRUE(std::string(error.what()).ends_with(" cannot be written")) << error.what();
    }
}

} // namespace
