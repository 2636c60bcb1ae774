#pragma once

#include <QFrame>

/// The picture of the splash: a calibration line through its standards, on a band of colour.
class SplashArtwork : public QFrame {
    Q_OBJECT

public:
    using QFrame::QFrame;

protected:
    void paintEvent(QPaintEvent* event) override;
};
