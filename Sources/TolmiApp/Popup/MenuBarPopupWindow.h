#pragma once

#include "Platform/FloatingWindows.h"

#include <QObject>
#include <QRect>

#include <functional>
#include <memory>
#include <optional>

class Clock;
class MenuBarPopupModel;
class QQmlEngine;
class QQuickItem;
class QQuickWindow;
class ViewTexts;

/// The popup of the status item as a window of the desktop: it takes the keyboard, and goes when it loses it,
/// when something else is pressed, and before a dictation could be pasted into it.
class MenuBarPopupWindow final : public QObject {
    Q_OBJECT

public:
    /// What the popup works with; all of it outlives the window.
    struct Dependencies {
        MenuBarPopupModel &model;
        ViewTexts &texts;
        FloatingWindows &floatingWindows;
        const Clock &clock;
        /// Called once with the engine of the window, for the colours of what it draws.
        std::function<void(QQmlEngine &)> prepareEngine;
    };

    /// Loads nothing until the popup is shown for the first time.
    explicit MenuBarPopupWindow(Dependencies dependencies);
    ~MenuBarPopupWindow() override;

    /// Shows the popup at `anchor`, the status item's place, or at the pointer where nobody knows that; hides
    /// it when it is there.
    ///
    /// Pressing the status item may take the keyboard from the popup and so close it first; such a press
    /// does not open it again.
    void toggle(const std::optional<QRect> &anchor);

    Q_SLOT void close();

    /// The window itself, for those who look at what it draws; null before the first show.
    QQuickWindow *window() { return m_window.get(); }
    /// Where the popup stands, without the shadow around it.
    QRect frame() const;

private:
    double now() const;
    void load();
    void open(const QRect &anchor);
    void place();
    void closeWithoutKeyboard();
    void closeForElsewhere();

    Dependencies m_dependencies;
    QRect m_anchor;
    /// When the popup was last closed because the user went elsewhere, in seconds since 1970.
    std::optional<double> m_leftAt;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    /// Belongs to the window.
    QQuickItem *m_view = nullptr;
};
