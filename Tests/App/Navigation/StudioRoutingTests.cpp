#include "TolmiApp/Navigation/StudioRouting.h"

#include "Support/FakeFlowCollaborators.h"
#include "Support/Print.h"

#include <gtest/gtest.h>

namespace {

class StudioRoutingTest : public testing::Test {
protected:
    StudioRouter::OpenWindow openWindow = [this](const QString &id) {
        journal.add(QStringLiteral("open ") + id + u' ' + rawValue(router.destination()));
    };

    FlowJournal journal;
    FakeApplication application { journal };
    StudioRouter router { application };
};

} // namespace

TEST_F(StudioRoutingTest, beginsAtTheCommandCenter) {
    EXPECT_EQ(router.destination(), StudioDestination::CommandCenter);
}

TEST_F(StudioRoutingTest, opensTheWindowAtTheDestinationAndBringsItToTheFront) {
    router.open(StudioDestination::History, openWindow);
    EXPECT_EQ(journal.lines,
        (QStringList { QStringLiteral("open studio-window history"), QStringLiteral("application.activate"),
            QStringLiteral("application.orderFront Tolmi Studio") }));
}

TEST_F(StudioRoutingTest, keepsTheDestinationWhileNoWindowIsThere) {
    router.open(StudioDestination::Health, [](const QString &) {});
    EXPECT_EQ(router.destination(), StudioDestination::Health);
}

TEST_F(StudioRoutingTest, announcesTheDestinationBeforeTheWindowOpens) {
    QObject::connect(&router, &StudioRouter::destinationChanged, &router,
        [this] { journal.add(QStringLiteral("changed")); });
    router.open(StudioDestination::Profile, openWindow);
    EXPECT_EQ(journal.lines.first(), QStringLiteral("changed"));
}
