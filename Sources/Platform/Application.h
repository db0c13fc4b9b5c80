#pragma once

#include <QObject>
#include <QString>

#include <optional>

/// A colour scheme forced on the program's windows.
enum class Appearance {
    Light,
    Dark,
};

/// The running application as the desktop sees it. Main thread only.
class Application : public QObject {
    Q_OBJECT

public:
    /// Applies the appearance to the process and every open window; absent follows the system.
    virtual void setAppearance(std::optional<Appearance> appearance) = 0;

    /// Brings the program to the front, even if the user is working in another one.
    virtual void activate() = 0;

    /// Brings the program's first window with that title to the front and focuses it. Does nothing if there
    /// is none.
    virtual void orderFront(const QString &title) = 0;

Q_SIGNALS:
    /// The application has come to the front.
    void didBecomeActive();
};
