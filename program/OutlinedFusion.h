#pragma once

#include <QProxyStyle>

/// Fusion, whose check boxes and radio buttons are seen on a dark palette, too: its own outline is
/// darker than the window.
class OutlinedFusion final : public QProxyStyle {
public:
    OutlinedFusion();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
};
