// The status item in a real tray.

#include "Platform/Desktop/QtStatusItem.h"
#include "Platform/Linux/X11/X11StatusTray.h"
#include "Support/StatusItemContract.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPixmap>
#include <QProcess>

namespace {

QIcon whiteIcon() {
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::white);
    return QIcon(pixmap);
}

class InTray {
public:
    StatusItem &item() { return m_item; }

    /// Presses it, each time at another point: a quick second press at the same one ends a double click.
    void press() {
        ASSERT_TRUE(untilTrue([this] { return isAtRest(); }));
        m_offset = -m_offset;
        const QPoint point = m_item.geometry()->center() + QPoint(m_offset, 0);
        ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                      { QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
                          QStringLiteral("click"), QStringLiteral("1") }),
            0);
    }

private:
    /// The tray is at the lower edge of the screen; the item is created elsewhere. The tray moves it about
    /// for a moment after it has taken it, and a click would miss it.
    bool isAtRest() {
        const auto place = m_item.geometry();
        if (place != m_place)
            m_sinceMove.start();
        m_place = place;
        return place && place->top() > 1000 && m_sinceMove.hasExpired(500);
    }

    X11StatusTray m_tray;
    QtStatusItem m_item { whiteIcon(), { &m_tray } };
    std::optional<QRect> m_place;
    QElapsedTimer m_sinceMove;
    int m_offset = 6;
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Tray, StatusItemContract, InTray);

// The tray needs an application with widgets.
int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
