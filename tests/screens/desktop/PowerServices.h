#pragma once

#include "screens/desktop/BusService.h"

#include <QDBusUnixFileDescriptor>
#include <QStringList>

#include <set>

/// How a service answers.
enum class Manner { grants, refuses, hangs };

/// A manager that can keep the computer awake. It notes what it is asked for and how many locks it
/// has given and not got back.
class PowerService : public BusService {
    Q_OBJECT

public:
    ~PowerService() override;

    QStringList Asked() const; ///< the arguments of each call, joined by "|"
    virtual int Held() const = 0;

protected:
    explicit PowerService(Manner manner) : manner_(manner) {}

    /// Notes the call; false when no lock is given.
    bool Answer(const QStringList& arguments);

private:
    Manner manner_;
    QStringList asked_;
};

/// A login manager gives open files.
class LoginManager : public PowerService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    explicit LoginManager(const QString& busAddress, Manner manner = Manner::grants);
    ~LoginManager() override;

    int Held() const override;

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why,
                                    const QString& mode);

private:
    int watched_ = -1; ///< the other end of the file that was given
};

/// What the desktops' managers have in common: numbers that are given and taken back.
class CookieService : public PowerService {
    Q_OBJECT

public:
    int Held() const override;

protected:
    using PowerService::PowerService;
    uint Give(const QStringList& arguments);
    void TakeBack(uint cookie);

private:
    uint last_ = 40;
    std::set<uint> given_;
};

class PowerManagement : public CookieService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PowerManagement.Inhibit")

public:
    explicit PowerManagement(const QString& busAddress, Manner manner = Manner::grants);
    ~PowerManagement() override { Withdraw(); }

public Q_SLOTS:
    uint Inhibit(const QString& application, const QString& reason);
    void UnInhibit(uint cookie) { TakeBack(cookie); }
};

class SessionManager : public CookieService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.SessionManager")

public:
    explicit SessionManager(const QString& busAddress, Manner manner = Manner::grants);
    ~SessionManager() override { Withdraw(); }

public Q_SLOTS:
    uint Inhibit(const QString& application, uint window, const QString& reason, uint flags);
    void Uninhibit(uint cookie) { TakeBack(cookie); }
};
