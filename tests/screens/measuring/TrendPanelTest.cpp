#include "screens/controls/TrendPanel.h"

#include "screens/controls/SeriesStyle.h"
#include "screens/controls/TrendGraph.h"
#include "screens/support/ScreenTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace std::chrono_literals;

namespace {

constexpr int firstChannel = 0;
constexpr int thirdChannel = 2;

/// A window as the measuring page's: readings that take all the room they get, the trend below.
class TrendPanelTest : public ScreenTest {
protected:
    TrendPanelTest() {
        auto* layout = new QVBoxLayout(&window);
        readings = new QWidget;
        readings->setMinimumHeight(200);
        panel = new TrendPanel;
        layout->addWidget(readings, 1);
        layout->addWidget(panel);
        window.resize(900, 700);
        platform.clock.now = {2003, 3, 7, 14, 54, 0};
        platform.clock.monotonic = 1h;
    }

    /// Readings of channels 1 and 3, one each half second.
    void Read(std::chrono::seconds time) {
        for (auto passed = 0ms; passed < time; passed += 500ms) {
            platform.clock.monotonic += 500ms;
            TrendHistory::Reading reading;
            reading[firstChannel][Quantity::mV] = -55.3F;
            reading[thirdChannel][Quantity::mV] = 101.2F;
            reading[thirdChannel][Quantity::ppm] = 12.5F;
            panel->AddReading(reading);
        }
        Settle();
    }

    TrendGraph& Graph() { return Find<TrendGraph>(window, "graTrend"); }
    QCPGraph& Line(int channel) { return *Graph().graph(channel); }
    QStringList Legend() {
        QStringList names;
        for (int i = 0; i < Graph().legend->itemCount(); ++i)
            names +=
                qobject_cast<QCPPlottableLegendItem*>(Graph().legend->item(i))->plottable()->name();
        return names;
    }
    /// How many pixels have the colour of a channel.
    int Inked(int channel) {
        const QColor colour = SeriesStyle::Colour(channel, Graph().palette());
        const QImage picture = Graph().grab().toImage();
        int inked = 0;
        for (int x = 0; x < picture.width(); ++x)
            for (int y = 0; y < picture.height(); ++y)
                inked += picture.pixelColor(x, y) == colour ? 1 : 0;
        return inked;
    }

    QWidget window;
    QWidget* readings = nullptr;
    TrendPanel* panel = nullptr;
};

} // namespace

TEST_F(TrendPanelTest, Each_channel_with_values_has_a_line_in_its_own_colour) {
    Show(window);
    Read(60s);
    EXPECT_EQ(Legend(), (QStringList{"Ch. 1", "Ch. 3"}));
    EXPECT_EQ(Line(thirdChannel).pen().color(),
              SeriesStyle::Colour(thirdChannel, Graph().palette()));
    EXPECT_GT(Inked(firstChannel), 40); // of 900 pixels, a tenth of the ten minutes
    EXPECT_GT(Inked(thirdChannel), 40);
    EXPECT_EQ(Inked(1), 0);
}

TEST_F(TrendPanelTest, The_axis_ends_now_and_begins_the_chosen_minutes_before) {
    Show(window);
    Read(2s);
    constexpr double now_s = 53640; // 14:54:00
    EXPECT_EQ(Graph().xAxis->range().upper, now_s);
    EXPECT_EQ(Graph().xAxis->range().size(), 600);
    Pick(window, "cboTrend", "1 min");
    EXPECT_EQ(Graph().xAxis->range().size(), 60);
    Pick(window, "cboTrend", "60 min");
    EXPECT_EQ(Graph().xAxis->range().size(), 3600);
}

TEST_F(TrendPanelTest, Another_unit_shows_the_channels_that_have_it) {
    Show(window);
    Read(2s);
    Pick(window, "cboTrendUnit", "ppm");
    EXPECT_EQ(Legend(), QStringList("Ch. 3"));
    EXPECT_EQ(Graph().yAxis->label(), "ppm");
    EXPECT_NEAR(Graph().yAxis->range().center(), 12.5, 0.01);
    Pick(window, "cboTrendUnit", QString("%1C").arg(QChar(0xB0)));
    EXPECT_TRUE(Legend().isEmpty());
}

TEST_F(TrendPanelTest, A_choice_set_by_code_acts_as_one_by_hand) {
    Show(window);
    Read(2s);
    QSignalSpy changed(panel, &TrendPanel::ChoiceChanged);
    Find<QComboBox>(window, "cboTrend").setCurrentIndex(2);
    Find<QCheckBox>(window, "chkTrend").setChecked(false);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(panel->Chosen(), (TrendPanel::Choice{false, 60, Quantity::mV}));
}

TEST_F(TrendPanelTest, A_remembered_choice_is_shown_without_a_signal) {
    QSignalSpy changed(panel, &TrendPanel::ChoiceChanged);
    const TrendPanel::Choice choice{true, 60, Quantity::celsius};
    panel->SetChoice(choice);
    EXPECT_EQ(panel->Chosen(), choice);
    EXPECT_EQ(Find<QComboBox>(window, "cboTrend").currentText(), "60 min");
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(TrendPanelTest, Put_away_it_leaves_its_room_to_the_readings_and_goes_on_gathering) {
    Show(window);
    const int before = readings->height();
    Find<QCheckBox>(window, "chkTrend").setChecked(false);
    Settle();
    EXPECT_FALSE(Graph().isVisible());
    EXPECT_GT(readings->height(), before + 80);
    Read(30s);
    Find<QCheckBox>(window, "chkTrend").setChecked(true);
    Settle();
    EXPECT_TRUE(Graph().isVisible());
    EXPECT_EQ(readings->height(), before);
    EXPECT_EQ(Line(firstChannel).dataCount(), 60);
}

TEST_F(TrendPanelTest, It_folds_away_where_the_window_has_no_room_and_comes_back) {
    Show(window);
    const int folded = panel->minimumSizeHint().height();
    ASSERT_TRUE(Graph().isVisible());
    window.resize(900, 290);
    Settle();
    EXPECT_FALSE(Graph().isVisible());
    EXPECT_EQ(panel->height(), folded) << "no empty strip stays";
    EXPECT_TRUE(panel->Chosen().shown) << "it is not the user's choice";
    window.resize(900, 700);
    Settle();
    EXPECT_TRUE(Graph().isVisible());
    EXPECT_GT(Graph().height(), 100);
}

TEST_F(TrendPanelTest, It_never_makes_the_window_larger_than_its_choices_need) {
    Show(window);
    ASSERT_TRUE(Graph().isVisible());
    EXPECT_EQ(panel->minimumSizeHint().height(),
              Find<QComboBox>(window, "cboTrend").sizeHint().height());
    ExpectFitsAtDoubleScale(*panel);
    ExpectRestsInEverySize(*panel);
}

TEST_F(TrendPanelTest, Readings_that_ended_are_not_joined_with_later_ones) {
    Show(window);
    Read(10s);
    panel->EndReadings();
    platform.clock.monotonic += 2min;
    Read(10s);
    int parted = 0;
    for (const QCPGraphData& point : *Line(firstChannel).data())
        parted += qIsNaN(point.value) ? 1 : 0;
    EXPECT_EQ(parted, 1);
    panel->Clear();
    EXPECT_TRUE(Legend().isEmpty());
}

TEST_F(TrendPanelTest, Its_values_are_centred_and_noise_does_not_fill_it) {
    Show(window);
    TrendHistory::Reading reading;
    for (int i = 0; i < 20; ++i) {
        platform.clock.monotonic += 1s;
        reading[firstChannel][Quantity::mV] = i % 2 == 0 ? 10.0F : 10.1F;
        panel->AddReading(reading);
    }
    EXPECT_NEAR(Graph().yAxis->range().center(), 10.05, 0.001);
    EXPECT_GE(Graph().yAxis->range().size(), 2);
}

TEST_F(TrendPanelTest, In_a_dark_palette_it_is_dark) {
    panel->setPalette(QPalette(QColor(45, 45, 48), QColor(35, 35, 38)));
    Show(window);
    Read(2s);
    EXPECT_LT(Graph().grab().toImage().pixelColor(2, 2).lightness(), 80);
}
