#pragma once

#include <QObject>

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

Q_SIGNALS:
    /// The application has come to the front.
    void didBecomeActive();
};
