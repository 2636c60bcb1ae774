#pragma once

#include <QRect>
#include <QWheelEvent>

#include <algorithm>

inline constexpr double zoomStep = 1.25; ///< of a graph's span, by wheel, key or menu

/// What a turn of the wheel over a graph wants of its span.
struct WheelZoom {
    double factor = 1; ///< of the span's length; 1: nothing
    double share = 0;  ///< of the span at which the mouse is, 0 to 1; it stays in its place
};

/// Away from the user the span becomes shorter, towards him longer.
inline WheelZoom ZoomOf(const QWheelEvent& wheel, const QRect& axes) {
    const QPoint angle = wheel.angleDelta();
    const int turned = angle.y() != 0 ? angle.y() : angle.x(); // Shift or Alt turns it aside
    if (turned == 0)
        return {};
    const double share = (wheel.position().x() - axes.left()) / std::max(axes.width(), 1);
    return {turned > 0 ? 1 / zoomStep : zoomStep, std::clamp(share, 0.0, 1.0)};
}
