#pragma once

class QWidget;

namespace Mcommon {

/// Moves the form to the middle of its screen.
void CenterForm(QWidget& form);

/// Moves the control to the middle of its parent's width; its top stays.
void CenterControl(QWidget& control);

/// Places the form above all other windows, or releases it, without moving or resizing it.
void SetTopMost(QWidget& form, bool topMost);

/// Makes the form, its frame included, no larger than its screen.
void FitOntoScreen(QWidget& form);

/// Moves the form to the position, or as near as keeps it on a screen that is there now.
void MoveOntoScreen(QWidget& form, int left, int top);

/// For a form that the desktop has placed: moves it if a part of it lies off the screen.
void KeepOnScreen(QWidget& form);

} // namespace Mcommon
