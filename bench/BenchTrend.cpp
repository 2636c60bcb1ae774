// Measures what the trend of the measuring page costs: the processor time of a second of readings
// while it shows an hour of eight channels, in ms. Needs a display.

#include "screens/controls/TrendPanel.h"
#include "support/FakePlatform.h"

#include <QApplication>
#include <QCheckBox>
#include <QVBoxLayout>

#include <chrono>
#include <cstdio>
#include <ctime>

namespace {

using namespace std::chrono_literals;

/// The panel in a window of the measuring page's size, two readings a second.
class Trend {
public:
    Trend() {
        auto* layout = new QVBoxLayout(&window_);
        layout->addWidget(panel_);
        window_.resize(900, 700);
        window_.show();
        panel_->SetChoice({true, 60, Quantity::mV});
    }

    void Show(bool shown) {
        window_.findChild<QCheckBox*>("chkTrend")->setChecked(shown);
        QCoreApplication::processEvents();
    }

    void Read(std::chrono::seconds time) {
        for (auto passed = 0ms; passed < time; passed += 500ms) {
            platform_.clock.monotonic += 500ms;
            ++readings_;
            TrendHistory::Reading reading;
            for (std::size_t channel = 0; channel < reading.size(); ++channel)
                reading[channel][Quantity::mV] =
                    static_cast<float>(channel) * 50 + static_cast<float>(readings_ % 17) / 10;
            panel_->AddReading(reading);
            if (readings_ % 2 == 0)
                QCoreApplication::processEvents();
        }
    }

private:
    fake::Platform platform_;
    QWidget window_;
    TrendPanel* panel_ = new TrendPanel;
    int readings_ = 0;
};

} // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    Trend trend;
    trend.Show(false);
    trend.Read(1h);
    trend.Show(true);
    constexpr auto measured = 10min;
    const std::clock_t begin = std::clock(); // of this process alone
    trend.Read(measured);
    const double taken_s = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    const auto seconds = std::chrono::seconds(measured).count();
    std::printf("trend of an hour, eight channels: %.2f ms a second (%.2f %% of a core)\n",
                1000 * taken_s / static_cast<double>(seconds),
                100 * taken_s / static_cast<double>(seconds));
    return 0;
}
