// The history of the real program: what the user does with mouse and keys, and what the disk and the speaker
// have of it.

#include "Desktop/OpenStudio.h"
#include "Desktop/SpeakerRecording.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/History/HistoryExportFormatter.h"

#include <QDir>
#include <QtEndian>

#include <numeric>

namespace {

const QString clearAllQuestion = QStringLiteral("Clear all transcription history?");
const QString searchPrompt = QStringLiteral("Search raw or refined text");

QJsonObject stored(const HistoryEntry &entry) {
    for (const QJsonValue &each : historyEntries()) {
        if (QUuid(each["id"].toString()) == entry.id)
            return each.toObject();
    }
    return {};
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What a sound carries, whatever its rate.
double energyOf(const std::vector<double> &samples, double rate) {
    return std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0) / rate;
}

/// The samples of a recording of 16-bit integers with the usual head.
std::vector<double> recorded(const QString &path) {
    constexpr qsizetype headSize = 44;
    const QByteArray bytes = contentOf(path);
    std::vector<double> samples;
    for (qsizetype place = headSize; place + 1 < bytes.size(); place += 2)
        samples.push_back(qFromLittleEndian<qint16>(bytes.constData() + place) / 32768.0);
    return samples;
}

class HistoryClicks : public OpenStudio {
protected:
    const HistoryEntry &build = history()[0];
    const HistoryEntry &pinned = history()[1];
    const HistoryEntry &heard = history()[2];
    const HistoryEntry &shopping = history()[3];
};

} // namespace

TEST_F(HistoryClicks, SearchLeavesWhatItFinds) {
    open();
    choose(build);
    const AccessibleElement field = control("text", searchPrompt);
    m_user.typeWithControl("f");
    ASSERT_TRUE(untilTrue([&field] { return field.now().is(State::Focused); }));
    m_user.enter("green");
    EXPECT_TRUE(untilTrue([this] { return !isShown(pinned) && !isShown(heard); }));
    EXPECT_TRUE(isShown(build));
    EXPECT_TRUE(isShown(shopping));
    m_user.type("Escape");
    EXPECT_TRUE(untilTrue(
        [this] { return isShown(build) && isShown(pinned) && isShown(heard) && isShown(shopping); }));
}

TEST_F(HistoryClicks, PinStandsInTheFile) {
    open();
    choose(build);
    click(buttonInRow(shopping, "Pin"));
    EXPECT_TRUE(untilTrue([this] { return stored(shopping)["isPinned"].toBool(); }));
    click(buttonInRow(shopping, "Unpin"));
    EXPECT_TRUE(untilTrue([this] { return stored(shopping)["isPinned"] == QJsonValue(false); }));
    EXPECT_TRUE(stored(pinned)["isPinned"].toBool());
}

TEST_F(HistoryClicks, ExportGoesWhereTheDialogSays) {
    open();
    choose(build);
    clickButton("Export All");
    const AccessibleElement name = control("text", "File name:");
    ASSERT_TRUE(untilTrue([&name] { return name.now().is(State::Focused); }));
    EXPECT_TRUE(name.text().startsWith(u"tolmi-history-all-")) << name.text().toStdString();
    m_user.typeWithControl("a");
    m_user.enter("Words of mine");
    ASSERT_TRUE(untilTrue([&name] { return name.text() == "Words of mine"; })) << name.text().toStdString();
    clickButton("Save");
    const QString path = QDir::homePath() + "/Words of mine.txt";
    ASSERT_TRUE(untilTrue([&path] { return QFile::exists(path); }));
    EXPECT_EQ(contentOf(path), HistoryExportFormatter::format({ pinned, build, heard, shopping }).toUtf8());
}

TEST_F(HistoryClicks, RecordingIsHeardWhole) {
    open();
    SpeakerRecording speaker;
    choose(heard);
    ASSERT_EQ(energyOf(speaker.samples(), 48000), 0) << "nothing was to be heard yet";
    clickButton("Play");
    ASSERT_TRUE(untilTrue([&speaker] { return energyOf(speaker.samples(), 48000) > 0; }));
    // The button pauses while it plays.
    control("push button", "Play");
    ASSERT_TRUE(speaker.listen(48000));
    // The one channel plays on both, whole.
    const double energy = energyOf(recorded(recordingPath()), 16000);
    EXPECT_NEAR(energyOf(speaker.samples(), 48000), energy, energy / 10);
}

TEST_F(HistoryClicks, DeletedEntryIsGoneFromTheFile) {
    open();
    choose(build);
    click(buttonInRow(shopping, "Delete"));
    EXPECT_TRUE(untilTrue([this] { return stored(shopping).isEmpty(); }));
    EXPECT_TRUE(untilTrue([this] { return !isShown(shopping); }));
    EXPECT_EQ(historyEntries().size(), 3);
    EXPECT_TRUE(isShown(build));
}

TEST_F(HistoryClicks, TheQuestionBeforeClearingIsAnsweredByTheMouse) {
    open();
    choose(build);
    const auto answer = [this](const QString &title) {
        clickButton("Clear All");
        const AccessibleElement question = control("dialog", clearAllQuestion);
        click(buttonIn(question, title));
        EXPECT_TRUE(untilTrue([this] { return !isShown("dialog", clearAllQuestion); }));
    };
    answer("Cancel");
    EXPECT_EQ(historyEntries().size(), 4);
    EXPECT_TRUE(isShown(build));
    answer("Clear All");
    EXPECT_TRUE(untilTrue([] { return historyEntries().isEmpty(); }));
    EXPECT_TRUE(isShown("label", "No transcriptions yet"));
}

TEST_F(HistoryClicks, TheQuestionBeforeClearingIsAnsweredByTheKeyboard) {
    open();
    choose(build);
    const auto ask = [this](const QString &focused) {
        clickButton("Clear All");
        const AccessibleElement button = buttonIn(control("dialog", clearAllQuestion), focused);
        EXPECT_TRUE(untilTrue([&button] { return button.now().is(State::Focused); }));
    };
    const auto answer = [this](const char *key) {
        m_user.type(key);
        EXPECT_TRUE(untilTrue([this] { return !isShown("dialog", clearAllQuestion); })) << key;
    };
    ask("Cancel");
    answer("Escape");
    ask("Cancel");
    answer("Return");
    EXPECT_EQ(historyEntries().size(), 4);
    EXPECT_TRUE(isShown(build));
    ask("Cancel");
    m_user.type("Tab");
    const AccessibleElement clear = buttonIn(control("dialog", clearAllQuestion), "Clear All");
    ASSERT_TRUE(untilTrue([&clear] { return clear.now().is(State::Focused); }));
    answer("Return");
    EXPECT_TRUE(untilTrue([] { return historyEntries().isEmpty(); }));
}

TEST_F(HistoryClicks, UndoBringsBackWhatTheDeleteKeyTook) {
    open();
    choose(heard);
    const QJsonArray before = historyEntries();
    m_user.type("Delete");
    ASSERT_TRUE(untilTrue([this] { return stored(heard).isEmpty(); }));
    EXPECT_TRUE(untilTrue([this] { return !isShown(heard); }));
    clickButton("Undo");
    EXPECT_TRUE(untilTrue([this] { return isShown(heard); }));
    EXPECT_TRUE(untilTrue([&before] { return historyEntries() == before; }));
    control("push button", "Play");
    EXPECT_TRUE(untilTrue([this] { return !isShown("push button", "Undo"); }));
}
