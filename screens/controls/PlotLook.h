#pragma once

class QColor;
class QCPAxis;
class QCPItemText;
class QCPRange;
class QCPTextElement;
class QCustomPlot;
class QFont;
class QPalette;

/// What all plots of the program share in their look.
namespace PlotLook {

/// Line, ticks, title and numbers of an axis in one colour and one font.
void DressAxis(QCPAxis& axis, const QColor& text, const QFont& font);

/// Background, axes over a dotted grid, and a legend without a frame, in the palette's colours.
void Dress(QCustomPlot& plot, const QPalette& palette, const QFont& font);
void DressTitle(QCPTextElement& title, const QPalette& palette, const QFont& font);

/// A title above the axes, and between both the legend in a row of its own, where it never covers
/// a point. The plot owns the title.
QCPTextElement* AddHead(QCustomPlot& plot);

/// The head takes no room of a plot that is too low for both it and its curves; fewer numbers stand
/// beside them.
void FitHead(QCustomPlot& plot, int plotHeight_px);

/// A text in the middle of the axes, for a plot without values; hidden at first. The plot owns it.
QCPItemText* AddEmptyText(QCustomPlot& plot);
void DressText(QCPItemText& text, const QPalette& palette, const QFont& font);

inline constexpr double spaceAboveValues = 0.06; ///< of a curve's scale, and below them

/// Values with this share of them free above and below; an axis also where they are all alike.
QCPRange WithSpace(double low, double high, double share);

/// The colours of white paper, whatever the screen's.
QPalette Paper();

} // namespace PlotLook
