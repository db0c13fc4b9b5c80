#include "TolmiApp/Templates/TemplatesModel.h"

#include "Support/FakeAtomicFileWriter.h"
#include "Support/FakePasteboard.h"
#include "Support/Print.h"
#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Navigation/HistorySelection.h"

#include <gtest/gtest.h>

namespace {
class TemplatesModelTest : public testing::Test {
protected:
    TemplatesModelTest() { settings.store.setUiLanguage(AppLanguage::English); }

    /// Adds a dictation and returns the ID of its entry.
    QUuid add(const QString &refined, const QString &raw = QStringLiteral("raw")) {
        history.add({ .rawText = raw, .refinedText = refined, .language = QStringLiteral("en") });
        return history.entries().first().id;
    }
    QUuid addAndSelect(const QString &refined, const QString &raw = QStringLiteral("raw")) {
        const QUuid id = add(refined, raw);
        selection.setSelectedHistoryEntryID(id);
        return id;
    }

    SettingsStoreFixture settings;
    FakeAtomicFileWriter writer;
    TranscriptionHistory history { settings.clock, settings.files, writer };
    HistorySelection selection;
    FakePasteboard pasteboard;
    TemplatesModel model { history, settings.store, selection, pasteboard };
};
} // namespace

TEST_F(TemplatesModelTest, StartsWithTheEmailPresetAndNoPreview) {
    EXPECT_EQ(model.selectedPreset(), TemplatePreset::EmailClear);
    EXPECT_EQ(model.selectedPresetID(), QStringLiteral("emailClear"));
    EXPECT_FALSE(model.hasSelectedEntry());
    EXPECT_FALSE(model.hasPreview());
    EXPECT_EQ(model.inputText(), QString());
    EXPECT_EQ(model.outputText(), QString());
}

TEST_F(TemplatesModelTest, OffersThePresetsInTheLanguageOfTheInterface) {
    QStringList texts;
    for (const QVariant &preset : model.presets())
        texts.append(preset.toMap()[QStringLiteral("text")].toString());
    EXPECT_EQ(texts, QStringList({ "Email Clear", "Meeting Summary", "Action Items", "Customer Reply" }));
    EXPECT_EQ(model.presets()[3].toMap()[QStringLiteral("value")], QStringLiteral("customerReply"));
    EXPECT_EQ(model.presetSubtitle(), QStringLiteral("Clean text into a concise email"));
    int presetsCount = 0;
    int subtitleCount = 0;
    QObject::connect(&model, &TemplatesModel::presetsChanged, [&] { ++presetsCount; });
    QObject::connect(&model, &TemplatesModel::presetSubtitleChanged, [&] { ++subtitleCount; });
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(presetsCount, 1);
    EXPECT_EQ(subtitleCount, 1);
    EXPECT_EQ(
        model.presets()[1].toMap()[QStringLiteral("text")].toString(), QStringLiteral("Rezumat sedinta"));
    model.selectPreset(QStringLiteral("actionItems"));
    EXPECT_EQ(subtitleCount, 2);
    EXPECT_EQ(model.presetSubtitle(), QStringLiteral("Extrage actiuni tip checklist"));
}

TEST_F(TemplatesModelTest, IgnoresAnUnknownPreset) {
    model.selectPreset(QStringLiteral("meetingSummary"));
    model.selectPreset(QStringLiteral("poem"));
    EXPECT_EQ(model.selectedPreset(), TemplatePreset::MeetingSummary);
}

TEST_F(TemplatesModelTest, FindsAnEntryThatWasChosenBefore) {
    addAndSelect(QStringLiteral("Hello."));
    const TemplatesModel later { history, settings.store, selection, pasteboard };
    EXPECT_TRUE(later.hasSelectedEntry());
    EXPECT_EQ(later.inputText(), QStringLiteral("Hello."));
}

TEST_F(TemplatesModelTest, UsesTheRawTextWithoutRefinement) {
    addAndSelect({}, QStringLiteral("as spoken"));
    EXPECT_EQ(model.inputText(), QStringLiteral("as spoken"));
    model.applyTemplate();
    EXPECT_EQ(model.previewState()->inputText, QStringLiteral("as spoken"));
    addAndSelect(QStringLiteral(" "), QStringLiteral("as spoken"));
    EXPECT_EQ(model.inputText(), QStringLiteral(" ")) << "a blank is a text";
}

TEST_F(TemplatesModelTest, AppliesThePresetToTheEntry) {
    const QUuid id = addAndSelect(QStringLiteral("ship it. now"));
    model.selectPreset(QStringLiteral("actionItems"));
    model.applyTemplate();
    EXPECT_EQ(model.previewState(),
        (TemplatePreviewState { TemplatePreset::ActionItems, id, QStringLiteral("ship it. now"),
            QStringLiteral("Action Items\n\n- [ ] ship it.\n- [ ] now") }));
    EXPECT_TRUE(model.hasPreview());
    EXPECT_EQ(model.outputText(), model.previewState()->outputText);
}

TEST_F(TemplatesModelTest, AppliesNothingWithoutAnEntry) {
    model.applyTemplate();
    EXPECT_FALSE(model.hasPreview());
    selection.setSelectedHistoryEntryID(QUuid::createUuid());
    model.applyTemplate();
    EXPECT_FALSE(model.hasPreview());
    EXPECT_FALSE(model.hasSelectedEntry());
}

TEST_F(TemplatesModelTest, UsesTheLanguageOfTheInterfaceNotOfTheEntry) {
    addAndSelect(QStringLiteral("hello"));
    settings.store.setUiLanguage(AppLanguage::Romanian);
    model.applyTemplate();
    EXPECT_TRUE(model.outputText().startsWith(QStringLiteral("Subiect: Hello\n")));
}

TEST_F(TemplatesModelTest, KeepsThePreviewWhenAnotherPresetIsChosen) {
    addAndSelect(QStringLiteral("hello"));
    model.applyTemplate();
    const auto before = model.previewState();
    model.setSelectedPreset(TemplatePreset::CustomerReply);
    EXPECT_EQ(model.previewState(), before);
    model.applyTemplate();
    EXPECT_EQ(model.previewState()->preset, TemplatePreset::CustomerReply);
}

TEST_F(TemplatesModelTest, DropsThePreviewForAnotherEntryOrLanguage) {
    const QUuid id = addAndSelect(QStringLiteral("hello"));
    model.applyTemplate();
    selection.setSelectedHistoryEntryID(id);
    EXPECT_TRUE(model.hasPreview()) << "the same entry";
    addAndSelect(QStringLiteral("other"));
    EXPECT_FALSE(model.hasPreview());
    model.applyTemplate();
    settings.store.setUiLanguage(AppLanguage::English);
    EXPECT_TRUE(model.hasPreview()) << "the same language";
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_FALSE(model.hasPreview());
    model.applyTemplate();
    selection.setSelectedHistoryEntryID(std::nullopt);
    EXPECT_FALSE(model.hasPreview());
}

TEST_F(TemplatesModelTest, KeepsThePreviewOfAnEntryThatIsDeleted) {
    const QUuid id = addAndSelect(QStringLiteral("hello"));
    model.applyTemplate();
    int selectedCount = 0;
    QObject::connect(&model, &TemplatesModel::selectedEntryChanged, [&] { ++selectedCount; });
    history.deleteEntry(id);
    EXPECT_EQ(selectedCount, 1);
    EXPECT_FALSE(model.hasSelectedEntry());
    EXPECT_TRUE(model.hasPreview());
    model.applyTemplate();
    EXPECT_TRUE(model.outputText().contains(QStringLiteral("hello")));
    selection.setSelectedHistoryEntryID(std::nullopt);
    EXPECT_FALSE(model.hasPreview());
}

TEST_F(TemplatesModelTest, CopiesThePreviewUnmarked) {
    addAndSelect(QStringLiteral("Ședința"));
    model.applyTemplate();
    model.copyPreview();
    const PasteboardItem expected { { { pasteboardTextType, model.outputText().toUtf8() } } };
    EXPECT_EQ(pasteboard.content, std::vector { expected });
    EXPECT_FALSE(pasteboard.isMarked());
    EXPECT_EQ(pasteboard.calls.size(), 1u);
}

TEST_F(TemplatesModelTest, CopiesNothingWhenThereIsNothing) {
    model.copyPreview();
    addAndSelect(QStringLiteral(" \n\t "));
    model.applyTemplate();
    EXPECT_TRUE(model.hasPreview());
    EXPECT_EQ(model.outputText(), QString());
    model.copyPreview();
    EXPECT_TRUE(pasteboard.calls.empty());
}
