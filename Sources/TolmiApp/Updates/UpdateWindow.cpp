#include "TolmiApp/Updates/UpdateWindow.h"

#include "TolmiApp/Shell/Views.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"

#include <QEvent>
#include <QQmlEngine>
#include <QQuickItem>

UpdateWindow::UpdateWindow(UpdateDialogModel &model, PrepareEngine prepareEngine, OpenUnasked openUnasked)
    : m_model(model)
    , m_prepareEngine(std::move(prepareEngine))
    , m_openUnasked(std::move(openUnasked)) {
    connect(&model, &UpdateDialogModel::phaseChanged, this, &UpdateWindow::follow);
    connect(&model, &UpdateDialogModel::contentChanged, this, &UpdateWindow::rename);
}

UpdateWindow::~UpdateWindow() {
    delete m_closedView;
}

bool UpdateWindow::isWanted() const {
    return m_model.phase() != UpdatePrompt::Phase::Hidden;
}

/// What the user asks for begins with a check.
bool UpdateWindow::isAskedFor() const {
    return m_model.phase() != UpdatePrompt::Phase::Found;
}

void UpdateWindow::follow() {
    if (m_view) {
        if (!isWanted())
            close();
        else if (m_model.phase() == UpdatePrompt::Phase::Checking)
            bringToFront();
    } else if (isAskedFor()) {
        openIfWanted();
    } else {
        m_openUnasked([window = QPointer(this)] {
            if (window)
                window->openIfWanted();
        });
    }
}

void UpdateWindow::openIfWanted() {
    if (isWanted() && !m_view)
        open();
}

void UpdateWindow::open() {
    m_view = std::make_unique<QQuickView>();
    m_view->installEventFilter(this);
    m_view->setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    Views::prepareEngine(*m_view->engine());
    m_prepareEngine(*m_view->engine());
    m_view->setInitialProperties({ { QStringLiteral("model"), QVariant::fromValue(&m_model) } });
    m_view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tolmi/UpdateDialogView.qml")));
    connect(m_view->rootObject(), &QQuickItem::implicitHeightChanged, this, &UpdateWindow::fit);
    rename();
    fit();
    // What the updater found by itself must not take the keys that the user types elsewhere; X11 windows look
    // at this property.
    m_view->setProperty("_q_showWithoutActivating", !isAskedFor());
    m_view->show();
    if (isAskedFor())
        m_view->requestActivate();
}

void UpdateWindow::close() {
    m_view->hide();
    // Deleted later, because the call may come from one of its own buttons.
    m_closedView = m_view.release();
    m_closedView->deleteLater();
}

// The user asks for a check while the dialog stands somewhere behind other windows.
void UpdateWindow::bringToFront() {
    m_view->raise();
    m_view->requestActivate();
}

void UpdateWindow::fit() {
    if (!m_view)
        return;
    const QQuickItem *root = m_view->rootObject();
    const QSize size = QSizeF(root->implicitWidth(), root->implicitHeight()).toSize();
    m_view->setMinimumSize(size);
    m_view->setMaximumSize(size);
    m_view->resize(size);
}

void UpdateWindow::rename() {
    if (m_view)
        m_view->setTitle(m_model.windowTitle());
}

bool UpdateWindow::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_view.get() && event->type() == QEvent::Close)
        m_model.dismiss();
    return QObject::eventFilter(watched, event);
}
