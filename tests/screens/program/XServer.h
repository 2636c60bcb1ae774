#pragma once

#include <QImage>
#include <QProcess>
#include <QSize>
#include <QString>

/// An X server of the test's own, with its screen in memory; it ends with its object.
class XServer {
public:
    /// `folder` takes the file that the screen is kept in. Fails the test where it does not start.
    XServer(const QString& folder, QSize screen);
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    const QString& Display() const { return display_; } ///< ":3"

    /// What the screen shows at this moment; an X server begins with black.
    QImage Picture() const;

private:
    QProcess server_;
    QString folder_;
    QString display_;
};
