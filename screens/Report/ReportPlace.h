#pragma once

class QWidget;

/// Where the viewer stands on the screen; it outlives the program.
namespace ReportPlace {

void Restore(QWidget& form);
void Remember(const QWidget& form);

} // namespace ReportPlace
