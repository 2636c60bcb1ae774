#pragma once

#include <QObject>
#include <QString>

/// Lets the controls be seen on a dark palette. Fusion is outlined, and stands in for a style that
/// stays light as long as the application's palette is dark: such a style would put the palette's
/// white letters onto light pictures.
class DarkPaletteStyle final : public QObject {
public:
    /// For the name of such a style, empty where there is none. Another style is left alone.
    explicit DarkPaletteStyle(const QString& staysLight);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Choose() const;

    QString staysLight_;
};
