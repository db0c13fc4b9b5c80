#include "TolmiApp/Studio/QuickStudioWindow.h"

#include "TolmiApp/Dictation/DictationStages.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Shell/ViewAppearance.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "TolmiApp/Shell/Views.h"
#include "TolmiApp/Studio/TolmiStudioWindowModel.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>

namespace {
constexpr QSize defaultSize(1100, 700);
} // namespace

QuickStudioWindow::QuickStudioWindow(
    TolmiStudioWindowModel &model, const SettingsStore &settings, const DesktopLook &look)
    : m_model(model)
    , m_settings(settings)
    , m_look(look) { }

QuickStudioWindow::~QuickStudioWindow() {
    // Hidden on its way out, it has no workspace any more.
    if (m_view)
        m_view->disconnect(this);
}

void QuickStudioWindow::prepare() {
    if (!m_view)
        load();
}

void QuickStudioWindow::show() {
    prepare();
    if (m_view->isVisible())
        return;
    loadWorkspaceAfterFrame();
    // Not by show(), which takes a maximised window back to its usual size.
    m_view->setVisible(true);
}

void QuickStudioWindow::load() {
    QQmlEngine &engine = *new QQmlEngine(this);
    Views::prepareEngine(engine);
    const QUrl source(QStringLiteral("qrc:/qt/qml/Tolmi/TolmiStudioWindowView.qml"));
    // The engine reads the files on a thread of its own while the window gets its graphics.
    const QQmlComponent early(&engine, source, QQmlComponent::Asynchronous);
    m_view = std::make_unique<QQuickView>(&engine, nullptr);
    new ViewAppearance(engine, m_settings, m_look);
    auto *texts = new ViewTexts(m_settings, PlatformTexts::forLinux(), &engine);
    m_view->setTitle(studioWindowTitle());
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->resize(defaultSize);
    m_view->setInitialProperties({ { QStringLiteral("model"), QVariant::fromValue(&m_model) },
        { QStringLiteral("texts"), QVariant::fromValue(texts) }, { QStringLiteral("hasWorkspace"), false } });
    m_view->setSource(source);
    connect(m_view.get(), &QQuickView::frameSwapped, this, &logStudioShown, Qt::SingleShotConnection);
    // What nobody sees plays no recording and asks nobody for its health.
    connect(m_view.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            m_view->rootObject()->setProperty("hasWorkspace", false);
    });
    connect(&m_model, &TolmiStudioWindowModel::selectionChanged, this, [this] { applyMinimumSize(); });
    applyMinimumSize();
}

// The first frame would not show these yet: the workspace fades in, and over it the wizard of a new user.
void QuickStudioWindow::loadWorkspaceAfterFrame() {
    connect(m_view.get(), &QQuickView::frameSwapped, this, &QuickStudioWindow::complete,
        Qt::ConnectionType(Qt::SingleShotConnection | Qt::UniqueConnection));
}

void QuickStudioWindow::complete() {
    if (!m_view->isVisible())
        return;
    m_view->rootObject()->setProperty("hasWorkspace", true);
    m_model.appear();
}

void QuickStudioWindow::applyMinimumSize() {
    const QSize minimum = m_view->rootObject()->property("minimumSize").toSizeF().toSize();
    m_view->setMinimumSize(minimum);
    m_view->resize(m_view->size().expandedTo(minimum));
}
