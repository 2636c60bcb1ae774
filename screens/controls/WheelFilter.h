#pragma once

class QWidget;

/// Lets the wheel change the lists and number boxes below `page` only while they have the focus;
/// otherwise it scrolls the page, so that a stray notch changes nothing.
void TakeWheelOnlyWithFocus(QWidget& page);
