#include "TolmiApp/Popup/MenuBarPopupWindow.h"

#include "Foundation/Clock.h"
#include "TolmiApp/Popup/MenuBarPopupModel.h"
#include "TolmiApp/Popup/PopupPlacement.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "TolmiApp/Shell/Views.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace {

/// Room for the shadow around the popup.
constexpr int windowMargin = 40;
constexpr int cornerRadius = 12;
/// Longer than a press of the pointer's button takes.
constexpr double secondsOfAPress = 0.4;

QRect screenAround(const QPoint &point) {
    const QScreen *screen = QGuiApplication::screenAt(point);
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? QRect() : screen->availableGeometry();
}

} // namespace

MenuBarPopupWindow::MenuBarPopupWindow(Dependencies dependencies)
    : m_dependencies(std::move(dependencies)) { }

MenuBarPopupWindow::~MenuBarPopupWindow() = default;

void MenuBarPopupWindow::load() {
    m_engine = std::make_unique<QQmlEngine>();
    Views::prepareEngine(*m_engine);
    m_dependencies.prepareEngine(*m_engine);
    m_window = std::make_unique<QQuickWindow>();
    QSurfaceFormat format = m_window->format();
    format.setAlphaBufferSize(8);
    m_window->setFormat(format);
    m_window->setColor(Qt::transparent);
    m_window->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);

    QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/Tolmi/MenuBarPopupView.qml")));
    QObject *const made = component.createWithInitialProperties(
        { { QStringLiteral("model"), QVariant::fromValue(&m_dependencies.model) },
            { QStringLiteral("texts"), QVariant::fromValue<QObject *>(&m_dependencies.texts) },
            { QStringLiteral("windowMargin"), windowMargin } });
    m_view = qobject_cast<QQuickItem *>(made);
    if (m_view == nullptr)
        qFatal("%s", qUtf8Printable(component.errorString()));
    m_view->setParent(m_window->contentItem());
    m_view->setParentItem(m_window->contentItem());
    m_view->setPosition({ windowMargin, windowMargin });

    connect(m_view, SIGNAL(closeRequested()), this, SLOT(close()));
    connect(m_view, &QQuickItem::heightChanged, this, &MenuBarPopupWindow::place);
    connect(m_window.get(), &QWindow::activeChanged, this, &MenuBarPopupWindow::closeWithoutKeyboard);
    connect(&m_dependencies.model, &MenuBarPopupModel::targetNeedsKeyboard, this, &MenuBarPopupWindow::close);
    m_dependencies.floatingWindows.prepare(*m_window);
    m_dependencies.floatingWindows.watchPressesElsewhere(*m_window, [this] { closeForElsewhere(); });
}

double MenuBarPopupWindow::now() const {
    return m_dependencies.clock.now().secondsSince1970();
}

void MenuBarPopupWindow::toggle(const std::optional<QRect> &anchor) {
    if (m_window && m_window->isVisible())
        return close();
    const auto leftAt = std::exchange(m_leftAt, std::nullopt);
    if (leftAt && now() - *leftAt < secondsOfAPress)
        return;
    open(anchor.value_or(QRect(QCursor::pos(), QSize(1, 1))));
}

void MenuBarPopupWindow::open(const QRect &anchor) {
    if (!m_window)
        load();
    m_anchor = anchor;
    m_dependencies.model.profile()->refreshPicture();
    m_view->forceActiveFocus();
    place();
    m_window->show();
    m_window->requestActivate();
}

void MenuBarPopupWindow::place() {
    const QSize size = m_view->size().toSize();
    const QPoint origin = PopupPlacement::origin(m_anchor, size, screenAround(m_anchor.center()));
    const QMargins margins(windowMargin, windowMargin, windowMargin, windowMargin);
    m_window->setGeometry(QRect(origin, size).marginsAdded(margins));
    const RoundedRectangle popup { QRect(QPoint(windowMargin, windowMargin), size), cornerRadius };
    m_dependencies.floatingWindows.setShape(*m_window, popup, popup);
}

QRect MenuBarPopupWindow::frame() const {
    const QMargins margins(windowMargin, windowMargin, windowMargin, windowMargin);
    return m_window ? m_window->geometry().marginsRemoved(margins) : QRect();
}

void MenuBarPopupWindow::close() {
    if (m_window)
        m_window->hide();
}

void MenuBarPopupWindow::closeWithoutKeyboard() {
    if (!m_window->isActive() && m_window->isVisible())
        closeForElsewhere();
}

void MenuBarPopupWindow::closeForElsewhere() {
    m_leftAt = now();
    close();
}
