#pragma once

#include <QObject>
#include <QString>

#include <optional>

/// A look that is forced on the program's windows.
enum class Appearance {
    Light,
    Dark,
};

/// The running application as the desktop sees it. Main thread only.
class Application : public QObject {
    Q_OBJECT

public:
    /// Applies the look to the process and every open window; absent follows the system.
    virtual void setAppearance(std::optional<Appearance> appearance) = 0;

    /// Brings the program before all others, even if the user works in another one.
    virtual void activate() = 0;

    /// Shows the program's first window with that title before all others and gives it the keyboard. Nothing
    /// happens when there is none.
    virtual void orderFront(const QString &title) = 0;

Q_SIGNALS:
    /// The application has come to the front.
    void didBecomeActive();
};
