#include "TolmiApp/Updates/UpdateWindow.h"

#include "TolmiApp/Shell/Views.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"

#include <QEvent>
#include <QQmlEngine>
#include <QQuickItem>

UpdateWindow::UpdateWindow(UpdateDialogModel &model, PrepareEngine prepareEngine)
    : m_model(model)
    , m_prepareEngine(std::move(prepareEngine)) {
    connect(&model, &UpdateDialogModel::phaseChanged, this, &UpdateWindow::follow);
    connect(&model, &UpdateDialogModel::contentChanged, this, &UpdateWindow::rename);
}

UpdateWindow::~UpdateWindow() {
    delete m_closedView;
}

void UpdateWindow::follow() {
    const bool isWanted = m_model.phase() != UpdatePrompt::Phase::Hidden;
    if (isWanted && !m_view)
        open();
    else if (!isWanted && m_view)
        close();
    else if (m_model.phase() == UpdatePrompt::Phase::Checking)
        bringToFront();
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
    const bool isAskedFor = m_model.phase() != UpdatePrompt::Phase::Found;
    m_view->setProperty("_q_showWithoutActivating", !isAskedFor);
    m_view->show();
    if (isAskedFor)
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
