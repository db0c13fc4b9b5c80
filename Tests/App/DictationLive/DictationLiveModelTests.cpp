#include "TolmiApp/DictationLive/DictationLiveModel.h"

#include "App/Studio/StudioFixture.h"
#include "Support/SignalCounter.h"

namespace {

class DictationLiveModelTest : public StudioFixture {
protected:
    void SetUp() override {
        createSetUp();
        model.emplace(manager, DictationLiveModel::Platform { clock, pasteboard });
    }
    void TearDown() override { model.reset(); }

    std::optional<DictationLiveModel> model;
};

} // namespace

TEST_F(DictationLiveModelTest, ShowsTheLastTranscript) {
    SignalCounter changes(&*model, &DictationLiveModel::lastTranscriptChanged);
    EXPECT_EQ(model->lastTranscript(), QString());
    dictate(QStringLiteral("first"));
    EXPECT_EQ(model->lastTranscript(), QStringLiteral("first"));
    EXPECT_EQ(changes.count(), 1);
    clock.advance(2);
    dictate(QString());
    EXPECT_EQ(model->lastTranscript(), QString());
}

TEST_F(DictationLiveModelTest, CopiesItAsAnOrdinaryText) {
    dictate(QStringLiteral("Ședința la zece"));
    model->copyLastTranscript();
    const PasteboardItem copied { { { pasteboardTextType, QByteArrayLiteral("Ședința la zece") } } };
    EXPECT_EQ(pasteboard.content, std::vector { copied });
    EXPECT_FALSE(pasteboard.isMarked());
}

TEST_F(DictationLiveModelTest, DrivesTheFlow) {
    fakes.recorder->permission.give(true);
    model->dictation()->runAction();
    clock.runPosted();
    EXPECT_EQ(manager->state(), Kind::Recording);
}
