// Cost of the overlay during a recording: CPU time of the whole process per frame, with a level that changes
// fifty times a second, on the software renderer. Then its activity once it is hidden.

#include "Platform/FloatingWindows.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Overlay/QuickOverlayWindow.h"
#include "TolmiApp/Shell/Views.h"

#include <QGuiApplication>
#include <QQuickView>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <vector>

#include <time.h>

namespace {
constexpr int levelIntervalMilliseconds = 20;
constexpr int settlingMilliseconds = 2000;
constexpr int recordingMilliseconds = 10000;
constexpr int hiddenMilliseconds = 3000;

/// Ignores all window settings.
class PlainWindows final : public FloatingWindows {
public:
    void prepare(QWindow &) override { }
    void setShape(QWindow &, const RoundedRectangle &, const RoundedRectangle &) override { }
    void watchPressesElsewhere(QWindow &, std::function<void()>) override { }
    QScreen *mainScreen() override { return QGuiApplication::primaryScreen(); }
};

/// Counts the timers that fire in the main thread.
class TimerCounter final : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Timer)
            ++count;
        return QObject::eventFilter(watched, event);
    }
};

double processorMilliseconds() {
    timespec time {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Runs the event loop.
void run(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A simulated voice level with syllables and sentences.
double levelAt(int step) {
    const double seconds = step * levelIntervalMilliseconds / 1000.0;
    return (0.5 + 0.5 * std::sin(seconds * 1.3)) * (0.5 + 0.5 * std::sin(seconds * 22));
}

class Recording {
public:
    explicit Recording(OverlayPanelController &panel, QQuickView &view)
        : m_panel(panel) {
        QObject::connect(
            &m_levels, &QTimer::timeout, &m_levels, [this] { m_panel.updateAudioLevel(levelAt(++m_step)); });
        QObject::connect(&view, &QQuickView::frameSwapped, &m_levels, [this] { endFrame(); });
        m_levels.start(levelIntervalMilliseconds);
    }

    void forget() { m_costs.clear(); }
    std::vector<double> costs() const { return m_costs; }

private:
    void endFrame() {
        const double now = processorMilliseconds();
        m_costs.push_back(now - m_lastEnd);
        m_lastEnd = now;
    }

    OverlayPanelController &m_panel;
    QTimer m_levels;
    int m_step = 0;
    double m_lastEnd = processorMilliseconds();
    std::vector<double> m_costs;
};

double quantile(const std::vector<double> &sorted, double share) {
    return sorted[size_t(share * double(sorted.size() - 1))];
}

void measureRecording(OverlayPanelController &panel, QQuickView &view) {
    panel.show(DictationState::Kind::Recording, AppLanguage::English);
    Recording recording(panel, view);
    run(settlingMilliseconds);
    recording.forget();
    run(recordingMilliseconds);
    std::vector<double> costs = recording.costs();
    if (costs.empty()) {
        std::printf("no frame was drawn\n");
        return;
    }
    std::sort(costs.begin(), costs.end());
    std::printf("recording, %zu frames in %d s\n", costs.size(), recordingMilliseconds / 1000);
    std::printf("  processor time for a frame, median            %6.3f ms\n", quantile(costs, 0.5));
    std::printf(
        "  processor time for a frame, 99th percentile   %6.3f ms   under 1 ms\n", quantile(costs, 0.99));
    std::printf("  share of one core                             %6.2f %%\n",
        100 * std::accumulate(costs.begin(), costs.end(), 0.0) / recordingMilliseconds);
}

void measureHidden(OverlayPanelController &panel, QQuickView &view) {
    panel.hide();
    while (view.isVisible())
        run(10);
    // Lets animations finish.
    run(1000);
    int frameCount = 0;
    QObject::connect(&view, &QQuickView::frameSwapped, &view, [&] { ++frameCount; });
    TimerCounter timers;
    qApp->installEventFilter(&timers);
    const double before = processorMilliseconds();
    run(hiddenMilliseconds);
    std::printf("hidden, %d s\n", hiddenMilliseconds / 1000);
    std::printf("  frames                                        %6d      0\n", frameCount);
    // One timer is this program's own.
    std::printf("  timers                                        %6d      0\n", timers.count - 1);
    std::printf(
        "  processor time                                %6.3f ms\n", processorMilliseconds() - before);
}
} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QSG_RENDER_LOOP", "basic");
    QGuiApplication application(argc, argv);
    Views::prepareApplication();
    PlainWindows floatingWindows;
    QQuickView *view = nullptr;
    OverlayPanelController panel([&](OverlayViewModel &model) {
        auto window = std::make_unique<QuickOverlayWindow>(model, floatingWindows);
        view = &window->view();
        return window;
    });
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    measureRecording(panel, *view);
    measureHidden(panel, *view);
    return 0;
}
