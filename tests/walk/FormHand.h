#pragma once

#include "walk/Course.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QAction;

/// Names the windows and controls of the program's forms, finds them again, and does the steps of a
/// course with them. A step whose control is not there is left out.
namespace FormHand {

QString NameOf(const QWidget& window);

/// By object name; what has none by its class, its parent and its place among its like.
QString NameOf(const QWidget& window, const QWidget& control);

/// What is seen and can be used in a window.
std::vector<QWidget*> ControlsIn(const QWidget& window);

/// The menu entries of a window that can be chosen.
std::vector<QAction*> EntriesOf(const QWidget& window);

/// Windows that are seen and can be used.
std::vector<QWidget*> ShownWindows();

/// The open menu, else the window that waits for an answer, else none.
QWidget* Foremost();

/// What a box or dialog of the toolkit asks; nothing where the window is another one.
std::optional<QString> QuestionOf(const QWidget& window);

/// `files` is the folder of the files that are named.
void Do(const Step& step, const QString& files);

} // namespace FormHand
