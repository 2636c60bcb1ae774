#pragma once

#include <QString>

class QLabel;

/// Shows a value in a label. A screen reader says the label's caption, which is the accessible name
/// that the form gives it, and the value behind it: a name alone would hide the text.
void ShowValue(QLabel& label, const QString& value);
