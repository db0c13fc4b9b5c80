// The program under a panel that shows status items over the bus, as most desktops of today do. Such an item
// does not know where it is shown.

#include "Desktop/StatusNotifierHost.h"
#include "Support/Print.h"

#include "desktop-driver/AccessibleProgram.h"
#include "desktop-driver/ProgramWindows.h"
#include "dictate/Home.h"
#include "dictate/RunningProgram.h"
#include "dictate/Waiting.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using ProgramWindows::popup;

constexpr double patience = 20;
const QRect screen(0, 0, 1920, 1080);

class UnderAPanel : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(prepareHome({}));
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
        ASSERT_TRUE(waitUntil([this] { return !m_panel.items().isEmpty(); }, patience))
            << "the program registered no item";
    }

    void TearDown() override { EXPECT_TRUE(m_program.quit()); }

    void press(const QPoint &point) {
        outputOf(QStringLiteral("xdotool"),
            { "mousemove", QString::number(point.x()), QString::number(point.y()) });
        m_panel.activate(point);
    }

    static bool isShown() {
        return waitUntil([] { return !popup().isNull(); }, patience);
    }
    static bool isGone() {
        return waitUntil([] { return popup().isNull(); }, patience);
    }

    StatusNotifierHost m_panel;
    RunningProgram m_program;
};

} // namespace

TEST_F(UnderAPanel, TheStudioStaysClosedAtLaunch) {
    EXPECT_FALSE(waitUntil([] { return !ProgramWindows::ofWidth(500, screen.width()).isNull(); }, 2));
}

TEST_F(UnderAPanel, TheItemTellsItsNameAndHasAMenu) {
    EXPECT_EQ(m_panel.property("Title").toString(), QString("Tolmi"));
    EXPECT_FALSE(m_panel.menu().isEmpty());
    EXPECT_FALSE(m_panel.menu().contains(QString()));
}

// Nobody tells of a light desktop here, and so the panel is taken for a dark one.
TEST_F(UnderAPanel, TheItemIsASymbolInTheColourOfThePanel) {
    const QList<QImage> images = m_panel.images();
    ASSERT_FALSE(images.isEmpty());
    for (const QImage &image : images) {
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 0xff) {
                    EXPECT_EQ(image.pixel(x, y), 0xffffffff);
                    ++count;
                }
            }
        }
        EXPECT_GT(count, image.width() * image.height() / 4);
    }
}

TEST_F(UnderAPanel, ThePopupStandsAtThePointerWhereverThePanelIs) {
    for (const QPoint &point : { QPoint(1890, 1070), QPoint(1890, 10), QPoint(20, 10), QPoint(960, 1070) }) {
        press(point);
        ASSERT_TRUE(isShown()) << m_program.output().toStdString();
        const QRect shown = popup();
        EXPECT_TRUE(screen.contains(shown)) << testing::PrintToString(shown);
        const int gap = std::max({ shown.left() - point.x(), point.x() - shown.right(),
            shown.top() - point.y(), point.y() - shown.bottom() });
        EXPECT_LE(gap, 24) << testing::PrintToString(shown) << " is far from "
                           << testing::PrintToString(point);
        press(point);
        ASSERT_TRUE(isGone());
    }
}

TEST_F(UnderAPanel, TheLinesOfTheMenuLeadWhereTheySay) {
    const AccessibleProgram program(m_program.processId());
    const auto expectWorkspace = [&](const QString &heading) {
        EXPECT_TRUE(program.find("heading", heading, patience)) << program.described().toStdString();
    };
    m_panel.choose("Settings...");
    expectWorkspace("Hotkey");
    m_panel.choose("Open Studio");
    expectWorkspace("Command Center");
    m_panel.choose("Tolmi Flow");
    EXPECT_TRUE(isShown());
    m_panel.choose("Quit Tolmi");
    EXPECT_TRUE(waitUntil([this] { return !m_program.isRunning(); }, patience));
}
