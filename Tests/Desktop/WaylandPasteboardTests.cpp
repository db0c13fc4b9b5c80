#include "Platform/Linux/Wayland/WaylandPasteboard.h"

#include "Desktop/TestPrograms.h"
#include "Desktop/WaylandPrograms.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Support/PasteboardContract.h"
#include "Support/UntilTrue.h"

#include <QElapsedTimer>

namespace {
using testing::Contains;
using testing::IsEmpty;
using testing::Pair;

class MadeReal {
public:
    Pasteboard &pasteboard() { return m_pasteboard; }

private:
    WaylandPasteboard m_pasteboard { std::make_shared<PasteProgress>() };
};

QByteArray largeContent() {
    QByteArray content;
    for (int line = 0; content.size() < 5 * 1024 * 1024; ++line)
        content += "line " + QByteArray::number(line) + " țară\n";
    return content;
}
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Wayland, PasteboardContract, MadeReal);

namespace {
class WaylandPasteboardTests : public testing::Test {
protected:
    std::vector<std::pair<QString, QByteArray>> read() {
        const std::vector<PasteboardItem> items = pasteboard.items();
        return items.empty() ? std::vector<std::pair<QString, QByteArray>>() : items.front().representations;
    }

    std::shared_ptr<PasteProgress> progress = std::make_shared<PasteProgress>();
    WaylandPasteboard pasteboard { progress };
};

TEST_F(WaylandPasteboardTests, OtherProgramsFindTheDictatedTextMarked) {
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("Bună ziua €")));
    EXPECT_EQ(waylandClipboard(), "Bună ziua €");
    EXPECT_EQ(waylandClipboard(QStringLiteral("x-kde-passwordManagerHint")), "secret");
    EXPECT_THAT(waylandClipboardTypes(), Contains(QStringLiteral("text/plain")));
}

TEST_F(WaylandPasteboardTests, ALargeContentComesBack) {
    const QByteArray content = largeContent();
    {
        WaylandCopyingProgram owner(content, QStringLiteral("image/png"));
        EXPECT_THAT(read(), Contains(Pair(QStringLiteral("image/png"), content)));
        const std::vector<PasteboardItem> items = pasteboard.items();
        EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
        pasteboard.restore(items);
    }
    EXPECT_EQ(waylandClipboard(QStringLiteral("image/png")), content);
}

TEST_F(WaylandPasteboardTests, EveryTypeOfAProgramOfTheXServerComesBack) {
    TestEditor owner;
    const auto base64 = [](const QByteArray &bytes) { return QString::fromLatin1(bytes.toBase64()); };
    const QJsonObject content { { QStringLiteral("text/plain"), base64("kept") },
        { QStringLiteral("text/html"), base64("<b>kept</b>") },
        { QStringLiteral("application/x-own"), base64(QByteArray("\0\1\xff", 3)) } };
    owner.copy(content);
    ASSERT_TRUE(untilTrue([&] { return waylandClipboard(QStringLiteral("text/html")) == "<b>kept</b>"; }));
    const std::vector<PasteboardItem> items = pasteboard.items();
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(waylandClipboard(), "dictated");
    pasteboard.restore(items);
    EXPECT_EQ(waylandClipboard(), "kept");
    EXPECT_EQ(waylandClipboard(QStringLiteral("text/html")), "<b>kept</b>");
    EXPECT_EQ(waylandClipboard(QStringLiteral("application/x-own")), QByteArray("\0\1\xff", 3));
}

TEST_F(WaylandPasteboardTests, ServesALargeTextToSeveralProgramsAtOnce) {
    const QByteArray text = largeContent();
    EXPECT_TRUE(pasteboard.setDictatedText(QString::fromUtf8(text)));
    std::vector<std::unique_ptr<QProcess>> readers;
    for (int number = 0; number < 4; ++number) {
        readers.push_back(std::make_unique<QProcess>());
        readers.back()->start(QStringLiteral("wl-paste"), { QStringLiteral("--no-newline") });
    }
    for (const auto &reader : readers) {
        EXPECT_TRUE(reader->waitForFinished());
        EXPECT_EQ(reader->readAllStandardOutput(), text);
    }
}

TEST_F(WaylandPasteboardTests, AReaderThatGivesUpHarmsNobody) {
    const QByteArray text = largeContent();
    EXPECT_TRUE(pasteboard.setDictatedText(QString::fromUtf8(text)));
    for (int number = 0; number < 3; ++number)
        outputOf(QStringLiteral("sh"), { QStringLiteral("-c"), QStringLiteral("wl-paste | head -c 100") });
    EXPECT_EQ(waylandClipboard(), text);
}

TEST_F(WaylandPasteboardTests, AHungOwnerCostsABoundedTimeAndIsTakenOverFrom) {
    WaylandCopyingProgram owner("copied");
    owner.hang();
    QElapsedTimer timer;
    timer.start();
    EXPECT_THAT(pasteboard.items(), IsEmpty());
    RecordProperty("milliseconds", int(timer.elapsed()));
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(waylandClipboard(), "dictated");
}

TEST_F(WaylandPasteboardTests, ReadsWhatAnotherProgramCopiedMeanwhile) {
    WaylandCopyingProgram first("first");
    pasteboard.readAhead();
    WaylandCopyingProgram second("second");
    EXPECT_THAT(read(), Contains(Pair(pasteboardTextType, "second")));
}

TEST_F(WaylandPasteboardTests, ATextThatWasNotReadWaitsForItsReader) {
    WaylandCopyingProgram user("copied before");
    const std::vector<PasteboardItem> items = pasteboard.items();
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    progress->post(1);
    pasteboard.restore(items);
    EXPECT_TRUE(pasteboard.holdsDictatedText());
    EXPECT_EQ(waylandClipboard(), "dictated");
    EXPECT_TRUE(untilTrue([] { return waylandClipboard() == "copied before"; }));
}

TEST_F(WaylandPasteboardTests, AProgramThatStandsStillDisplacesNoLaterCopy) {
    WaylandCopyingProgram user("copied before");
    const std::vector<PasteboardItem> items = pasteboard.items();
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    progress->post(1);
    EXPECT_EQ(waylandClipboard(), "dictated");
    // The main thread stands still while the test waits here.
    while (waylandClipboard() != "copied before") { }
    WaylandCopyingProgram later("copied later");
    pasteboard.restore(items);
    EXPECT_EQ(waylandClipboard(), "copied later");
}

TEST_F(WaylandPasteboardTests, WithoutACompositorItStaysEmpty) {
    WaylandPasteboard none(progress, "/nowhere");
    EXPECT_THAT(none.items(), IsEmpty());
    EXPECT_FALSE(none.setDictatedText(QStringLiteral("dictated")));
    none.handOver();
}
} // namespace
