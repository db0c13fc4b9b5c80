// The status item in a real tray.

#include "Platform/Desktop/QtStatusItem.h"
#include "Platform/Linux/X11/X11StatusTray.h"
#include "Support/StatusItemContract.h"

#include <QApplication>
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
        ASSERT_TRUE(untilTrue([this] { return isInTheTray(); }));
        m_offset = -m_offset;
        const QPoint point = m_item.geometry()->center() + QPoint(m_offset, 0);
        ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                      { QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y()),
                          QStringLiteral("click"), QStringLiteral("1") }),
            0);
    }

private:
    /// The tray is at the lower edge of the screen; the item comes into being elsewhere.
    bool isInTheTray() {
        const auto place = m_item.geometry();
        return place && place->top() > 1000;
    }

    X11StatusTray m_tray;
    QtStatusItem m_item { whiteIcon(), { &m_tray } };
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
