#include "app/program/SystemServices.h"
#include "app/program/theMain.h"
#include "platform/qt/QtPlaces.h"
#include "support/InstrumentProcess.h"
#include "tour/DialogAnswers.h"
#include "tour/Stage.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The user's folders, but for the temporary one: unfinished recordings of others are not the
/// tour's.
class TourPlaces : public platform::QtPlaces {
public:
    std::filesystem::path TemporaryFolder() const override {
        return std::filesystem::path(folder_.path().toStdString());
    }

private:
    QTemporaryDir folder_;
};

TEST(Tour, An_analyst_sets_up_calibrates_measures_views_and_prints) {
    TourPlaces places;
    const InstrumentProcess instrument(places.ConfigurationFolder().parent_path(),
                                       {"--ideal", "--fast"});
    const theMain::SystemServices services(places);
    DialogAnswers answers;
    theMain::Program program;
    program.Main();

    QWidget& splash = stage::Window("frmSplash");
    stage::Picture(splash, "splash");
    stage::Click(splash, "cmdCommand1");
    QWidget& main = stage::Window("frmMain");
    EXPECT_FALSE(splash.isVisible());
    stage::Picture(main, "setup");
}

} // namespace
