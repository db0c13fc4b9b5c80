#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickView>

#include <functional>
#include <memory>

class QQmlEngine;
class UpdateDialogModel;

/// The window of the update dialog, which exists only while there is something to show.
class UpdateWindow final : public QObject {
    Q_OBJECT

public:
    /// Sets up an engine with what all views of the program need, such as the palette.
    using PrepareEngine = std::function<void(QQmlEngine &)>;
    /// Runs work when a window may open that nobody has asked for.
    using OpenUnasked = std::function<void(std::function<void()>)>;

    /// The model outlives the window.
    UpdateWindow(UpdateDialogModel &model, PrepareEngine prepareEngine, OpenUnasked openUnasked);
    ~UpdateWindow() override;

    /// Absent while there is nothing to show.
    QQuickView *view() const { return m_view.get(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isWanted() const;
    bool isAskedFor() const;
    void follow();
    void openIfWanted();
    void open();
    void close();
    void bringToFront();
    void fit();
    void rename();

    UpdateDialogModel &m_model;
    const PrepareEngine m_prepareEngine;
    const OpenUnasked m_openUnasked;
    std::unique_ptr<QQuickView> m_view;
    /// The closed view, deleted in a later iteration of the event loop or with this.
    QPointer<QQuickView> m_closedView;
};
