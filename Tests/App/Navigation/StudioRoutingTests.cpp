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

TEST_F(StudioRoutingTest, BeginsAtTheCommandCenter) {
    EXPECT_EQ(router.destination(), StudioDestination::CommandCenter);
}

TEST_F(StudioRoutingTest, OpensTheWindowAtTheDestinationAndBringsItToTheFront) {
    router.open(StudioDestination::History, openWindow);
    EXPECT_EQ(journal.lines,
        (QStringList { QStringLiteral("open studio-window history"), QStringLiteral("application.activate"),
            QStringLiteral("application.orderFront Tolmi Studio") }));
}

TEST_F(StudioRoutingTest, KeepsTheDestinationWhileNoWindowIsThere) {
    router.open(StudioDestination::Health, [](const QString &) {});
    EXPECT_EQ(router.destination(), StudioDestination::Health);
}

TEST_F(StudioRoutingTest, AnnouncesTheDestinationBeforeTheWindowOpens) {
    QObject::connect(&router, &StudioRouter::destinationChanged, &router,
        [this] { journal.add(QStringLiteral("changed")); });
    router.open(StudioDestination::Profile, openWindow);
    EXPECT_EQ(journal.lines.first(), QStringLiteral("changed"));
}
