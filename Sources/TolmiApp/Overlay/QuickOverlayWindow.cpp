#include "TolmiApp/Overlay/QuickOverlayWindow.h"

#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Shell/Views.h"

#include <QEasingCurve>
#include <QPointF>
#include <QQmlEngine>
#include <QQuickView>
#include <QScreen>
#include <QTimerEvent>

#include <algorithm>

namespace {

/// The disc that answers the pointer, so that the words of the state can be asked for.
constexpr int touchedDiameter = 44;
/// What is cut out where nothing can be translucent.
constexpr int ringDiameter = 124;
constexpr int iconDiameter = 48;
constexpr int fadeStepMilliseconds = 16;

double opacityAt(double part) {
    static const QEasingCurve easeInOut = [] {
        QEasingCurve curve(QEasingCurve::BezierSpline);
        curve.addCubicBezierSegment({ 0.42, 0 }, { 0.58, 1 }, { 1, 1 });
        return curve;
    }();
    return 1 - easeInOut.valueForProgress(part);
}

/// In the middle of the panel.
RoundedRectangle disc(int diameter) {
    const int edge = (OverlayPanelController::panelSize - diameter) / 2;
    return { QRect(edge, edge, diameter, diameter), diameter / 2 };
}

} // namespace

QuickOverlayWindow::QuickOverlayWindow(OverlayViewModel &viewModel, FloatingWindows &floatingWindows)
    : m_view(std::make_unique<QQuickView>())
    , m_viewModel(viewModel)
    , m_floatingWindows(floatingWindows) {
    Views::prepareEngine(*m_view->engine());
    QSurfaceFormat format = m_view->format();
    format.setAlphaBufferSize(8);
    m_view->setFormat(format);
    m_view->setColor(Qt::transparent);
    m_view->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
        | Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);
    m_view->resize(OverlayPanelController::panelSize, OverlayPanelController::panelSize);
    m_view->setInitialProperties({ { QStringLiteral("viewModel"), QVariant::fromValue(&viewModel) } });
    m_view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Tolmi/OverlayContentView.qml")));
    m_floatingWindows.prepare(*m_view);
}

QuickOverlayWindow::~QuickOverlayWindow() = default;

std::optional<QRect> QuickOverlayWindow::visibleFrame() const {
    const QScreen *screen = m_floatingWindows.mainScreen();
    return screen == nullptr ? std::nullopt : std::optional(screen->availableGeometry());
}

void QuickOverlayWindow::setOrigin(const QPoint &origin) {
    m_view->setPosition(origin);
}

void QuickOverlayWindow::orderFront() {
    for (Fade &fade : m_fades)
        fade.isVisible = false;
    m_view->setOpacity(1);
    if (!m_view->isVisible())
        m_view->show();
    m_view->raise();
    reshape();
}

void QuickOverlayWindow::reshape() {
    const bool isRecording = m_viewModel.state().kind() == DictationState::Kind::Recording;
    m_floatingWindows.setShape(
        *m_view, disc(touchedDiameter), disc(isRecording ? ringDiameter : iconDiameter));
}

void QuickOverlayWindow::fadeOut(double seconds, std::function<void()> completion) {
    Fade fade { seconds, std::move(completion), {}, true };
    fade.since.start();
    m_fades.append(std::move(fade));
    m_fadeTimer.start(fadeStepMilliseconds, Qt::PreciseTimer, this);
}

void QuickOverlayWindow::timerEvent(QTimerEvent *event) {
    if (event->timerId() == m_fadeTimer.timerId())
        stepFades();
}

void QuickOverlayWindow::stepFades() {
    const Fade &newest = m_fades.constLast();
    if (newest.isVisible)
        m_view->setOpacity(opacityAt(std::min(1.0, double(newest.since.elapsed()) / 1000 / newest.seconds)));
    while (!m_fades.isEmpty()
        && double(m_fades.constFirst().since.elapsed()) / 1000 >= m_fades.constFirst().seconds) {
        const Fade ended = m_fades.takeFirst();
        ended.completion();
    }
    if (m_fades.isEmpty())
        m_fadeTimer.stop();
}

void QuickOverlayWindow::orderOut() {
    m_view->hide();
}
