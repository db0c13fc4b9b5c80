// The status item in a real tray.

#include "Platform/Desktop/QtStatusItem.h"
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
    void press() {
        ASSERT_TRUE(untilTrue([this] { return m_item.geometry().has_value(); }));
        const QPoint middle = m_item.geometry()->center();
        ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                      { QStringLiteral("mousemove"), QString::number(middle.x()), QString::number(middle.y()),
                          QStringLiteral("click"), QStringLiteral("1") }),
            0);
    }

private:
    QtStatusItem m_item { whiteIcon() };
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Tray, StatusItemContract, InTray);

// The tray needs an application with widgets.
int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
