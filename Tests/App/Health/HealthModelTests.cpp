#include "TolmiApp/Health/HealthModel.h"

#include "Support/FakeFlowCollaborators.h"
#include "Support/Print.h"
#include "Support/ScriptedOperation.h"
#include "Support/SettingsStoreFixture.h"

#include <gtest/gtest.h>

using Status = HealthCheckStatus;

namespace {
class HealthModelTest : public testing::Test {
protected:
    HealthModelTest() {
        settings.store.setUiLanguage(AppLanguage::English);
        model = std::make_unique<HealthModel>(settings.store, application, service());
    }

    StudioHealthCheckService service() {
        StudioHealthCheckService::Functions functions;
        functions.microphoneStatus = [this] { return microphoneStatus; };
        functions.accessibilityGranted = [] { return true; };
        functions.isExecutable = [](const QString &) { return true; };
        functions.fileExists = [](const QString &) { return true; };
        functions.ollamaProbe = [this](QUrl endpoint, double) {
            endpoints.append(endpoint.toString());
            return probe.call();
        };
        return StudioHealthCheckService(std::move(functions), PlatformTexts::forLinux());
    }
    Status statusOfOllama() const { return model->items().last().status; }
    bool isChecking() const {
        return model->items() == HealthCheckItem::checkingList(settings.store.uiLanguage());
    }

    SettingsStoreFixture settings;
    FlowJournal journal;
    FakeApplication application { journal };
    AuthorizationStatus microphoneStatus = AuthorizationStatus::Authorized;
    ScriptedOperation<bool> probe;
    QStringList endpoints;
    std::unique_ptr<HealthModel> model;
};
} // namespace

TEST_F(HealthModelTest, ShowsEveryRowBeforeAnythingRuns) {
    EXPECT_TRUE(isChecking());
    EXPECT_FALSE(model->isRefreshing());
    EXPECT_TRUE(endpoints.isEmpty());
}

TEST_F(HealthModelTest, ShowsTheOutcomeOfARun) {
    probe.suspend();
    model->runChecks();
    EXPECT_TRUE(model->isRefreshing());
    EXPECT_TRUE(isChecking());
    probe.answer(true);
    EXPECT_FALSE(model->isRefreshing());
    EXPECT_EQ(statusOfOllama(), Status::Ok);
    EXPECT_EQ(model->items().first().status, Status::Ok);
}

TEST_F(HealthModelTest, ShowsCheckingAgainWhileItRunsAgain) {
    probe.give(false);
    model->runChecks();
    EXPECT_EQ(statusOfOllama(), Status::Error);
    probe.suspend();
    model->runChecks();
    EXPECT_TRUE(isChecking());
    probe.answer(true);
    EXPECT_EQ(statusOfOllama(), Status::Ok);
}

TEST_F(HealthModelTest, ReadsTheSettingsAtEachRun) {
    settings.store.setOllamaEndpoint(QStringLiteral("http://one"));
    probe.give(true);
    model->runChecks();
    settings.store.setOllamaEndpoint(QStringLiteral("http://two"));
    probe.give(true);
    model->runChecks();
    EXPECT_EQ(endpoints, QStringList({ "http://one", "http://two" }));
    settings.store.setRefinementEnabled(false);
    model->runChecks();
    EXPECT_EQ(statusOfOllama(), Status::Warning);
}

TEST_F(HealthModelTest, RunsAgainInANewLanguage) {
    probe.give(true);
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(endpoints.size(), 1);
    EXPECT_EQ(model->items().first().message, QStringLiteral("Acordat"));
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(endpoints.size(), 1) << "the same language is no change";
}

TEST_F(HealthModelTest, RunsWhenTheApplicationBecomesActive) {
    microphoneStatus = AuthorizationStatus::Denied;
    probe.give(true);
    application.didBecomeActive();
    EXPECT_EQ(model->items().first().status, Status::Error);
    microphoneStatus = AuthorizationStatus::Authorized;
    probe.give(true);
    application.didBecomeActive();
    EXPECT_EQ(model->items().first().status, Status::Ok);
}

TEST_F(HealthModelTest, TheRunThatEndsLastIsShown) {
    probe.suspend();
    model->runChecks();
    probe.suspend();
    application.didBecomeActive();
    EXPECT_EQ(probe.waitingCount(), 2u);
    probe.answer(false);
    EXPECT_EQ(statusOfOllama(), Status::Error);
    EXPECT_FALSE(model->isRefreshing());
    probe.answer(true);
    EXPECT_EQ(statusOfOllama(), Status::Ok);
    EXPECT_FALSE(model->isRefreshing());
}

TEST_F(HealthModelTest, ARunThatOutlivesTheModelEndsQuietly) {
    probe.suspend();
    model->runChecks();
    model.reset();
    probe.answer(true);
    application.didBecomeActive();
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(endpoints.size(), 1);
}

TEST_F(HealthModelTest, AnAbandonedProbeEndsTheRun) {
    probe.suspend();
    model->runChecks();
    probe.abandonWaiting();
    EXPECT_TRUE(isChecking());
}

TEST_F(HealthModelTest, NotifiesViewsOfEveryStep) {
    int itemsCount = 0;
    int refreshingCount = 0;
    QObject::connect(model.get(), &HealthModel::itemsChanged, [&] { ++itemsCount; });
    QObject::connect(model.get(), &HealthModel::isRefreshingChanged, [&] { ++refreshingCount; });
    probe.give(true);
    model->runChecks();
    EXPECT_EQ(itemsCount, 1) << "the list was being checked before";
    EXPECT_EQ(refreshingCount, 2);
}
