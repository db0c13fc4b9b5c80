#pragma once

#include <QObject>

#include <memory>

class DesktopLook;
class QQuickView;
class SettingsStore;
class TolmiStudioWindowModel;

/// The Studio as a window of the desktop. Nothing of it is loaded before it is shown first or made ready for
/// that; from then on it stays loaded, but for the workspace, which goes while the window is closed.
class QuickStudioWindow final : public QObject {
    Q_OBJECT

public:
    /// All three outlive the window.
    QuickStudioWindow(TolmiStudioWindowModel &model, const SettingsStore &settings, const DesktopLook &look);
    ~QuickStudioWindow() override;

    /// Loads what the first show() needs.
    void prepare();

    /// Shows the window, which stays where and how it is when it is shown already.
    void show();

    /// The window itself; null before it was shown or made ready.
    QQuickView *view() { return m_view.get(); }

private:
    void load();
    void loadWorkspaceAfterFrame();
    void complete();
    void applyMinimumSize();

    TolmiStudioWindowModel &m_model;
    const SettingsStore &m_settings;
    const DesktopLook &m_look;
    std::unique_ptr<QQuickView> m_view;
};
