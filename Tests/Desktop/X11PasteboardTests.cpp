#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Desktop/TestPrograms.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Support/PasteboardContract.h"
#include "Support/UntilTrue.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>

namespace {
using testing::IsEmpty;

class MadeReal {
public:
    Pasteboard &pasteboard() { return m_pasteboard; }

private:
    X11Pasteboard m_pasteboard { std::make_shared<PasteProgress>() };
};

QStringList offeredTypes() {
    return QString::fromUtf8(clipboard(QStringLiteral("TARGETS"))).split(u'\n');
}

QString base64(const QByteArray &bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray pngPicture() {
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(QColor(10, 120, 200));
    image.setPixel(3, 4, 0xff00ff);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray longText() {
    QByteArray text;
    for (int line = 0; text.size() < 5 * 1024 * 1024; ++line)
        text += "line " + QByteArray::number(line) + " țară\n";
    return text;
}
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(X11, PasteboardContract, MadeReal);

namespace {
class X11PasteboardTests : public testing::Test {
protected:
    std::shared_ptr<PasteProgress> progress = std::make_shared<PasteProgress>();
    X11Pasteboard pasteboard { progress };
};

TEST_F(X11PasteboardTests, OtherProgramsFindTheDictatedTextMarked) {
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("Bună ziua €")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "Bună ziua €");
    EXPECT_EQ(clipboard(QStringLiteral("text/plain;charset=utf-8")), "Bună ziua €");
    EXPECT_EQ(clipboard(QStringLiteral("x-kde-passwordManagerHint")), "secret");
    EXPECT_EQ(clipboard(QStringLiteral("application/x-copyq-hidden")), "1");
    pasteboard.setItems(pasteboard.items());
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "Bună ziua €");
    EXPECT_EQ(clipboard(QStringLiteral("x-kde-passwordManagerHint")), "secret");
    pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, "copied" } } } });
    EXPECT_FALSE(offeredTypes().contains(QStringLiteral("x-kde-passwordManagerHint")));
}

TEST_F(X11PasteboardTests, BringsEveryTypeOfAProgramBack) {
    const QByteArray picture = pngPicture();
    const QJsonObject content { { QStringLiteral("text/html"), base64("<p>h\xc4\x83</p>") },
        { QStringLiteral("text/plain"), base64("h\xc4\x83") },
        { QStringLiteral("text/uri-list"), base64("file:///tmp/a%20b\r\n") },
        { QStringLiteral("application/x-own"), base64(QByteArray("\0\1\2\xff", 4)) },
        { QStringLiteral("image/png"), base64(picture) },
        { QStringLiteral("color"), QStringLiteral("#1a2b3c") } };
    const QStringList asked { QStringLiteral("text/html"), QStringLiteral("text/plain"),
        QStringLiteral("text/uri-list"), QStringLiteral("application/x-own"), QStringLiteral("image/png") };
    TestEditor owner;
    TestEditor reader;
    owner.copy(content);
    const QJsonObject before = reader.read(asked);
    const std::vector<PasteboardItem> saved = pasteboard.items();
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
    pasteboard.setItems(saved);
    const QJsonObject after = reader.read(asked);
    EXPECT_EQ(before.keys(), content.keys());
    EXPECT_EQ(after.keys(), content.keys());
    for (const QString &type : content.keys()) {
        // The same picture may be stored in other bytes.
        if (type != QLatin1String("image/png")) {
            EXPECT_EQ(after.value(type).toString(), before.value(type).toString()) << type.toStdString();
        }
    }
    const auto image = [](const QJsonObject &found) {
        return QImage::fromData(
            QByteArray::fromBase64(found.value(QLatin1String("image/png")).toString().toLatin1()));
    };
    EXPECT_EQ(image(after), QImage::fromData(picture));
    EXPECT_EQ(offeredTypes().filter(QStringLiteral("image/")), QStringList { QStringLiteral("image/png") });
}

TEST_F(X11PasteboardTests, BringsALargeTextBack) {
    const QByteArray text = longText();
    CopyingProgram owner(text);
    const std::vector<PasteboardItem> saved = pasteboard.items();
    ASSERT_EQ(saved.size(), 1);
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
    pasteboard.setItems(saved);
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), text);
}

TEST_F(X11PasteboardTests, ServesALargeTextToSeveralProgramsAtOnce) {
    const QByteArray text = longText();
    pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, text } } } });
    QProcess readers[3];
    for (QProcess &reader : readers)
        reader.start(QStringLiteral("xclip"),
            { QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o"),
                QStringLiteral("-t"), QStringLiteral("UTF8_STRING") });
    for (QProcess &reader : readers) {
        EXPECT_TRUE(reader.waitForFinished());
        EXPECT_EQ(reader.readAllStandardOutput(), text);
    }
}

TEST_F(X11PasteboardTests, AReaderThatGivesUpHarmsNobody) {
    const QByteArray text = longText();
    pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, text } } } });
    for (int round = 0; round < 5; ++round) {
        QProcess reader;
        reader.start(QStringLiteral("xclip"),
            { QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o") });
        reader.waitForReadyRead(10);
        reader.kill();
        reader.waitForFinished();
    }
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), text);
}

TEST_F(X11PasteboardTests, AHungOwnerCostsABoundedTimeAndIsTakenOverFrom) {
    CopyingProgram owner("copied");
    owner.hang();
    QElapsedTimer timer;
    timer.start();
    EXPECT_THAT(pasteboard.items(), IsEmpty());
    RecordProperty("milliseconds", int(timer.elapsed()));
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
}

TEST_F(X11PasteboardTests, KeepsWhatWasReadBeforeAnOwnerHung) {
    TestEditor owner;
    owner.copy({ { QStringLiteral("text/plain"), base64("kept") },
        { QStringLiteral("held"), QStringLiteral("yes") } });
    pasteboard.readAhead();
    owner.waitUntilAsked();
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_THAT(items.front().representations,
        testing::Contains(testing::Pair(QStringLiteral("UTF8_STRING"), "kept")));
    EXPECT_THAT(items.front().representations,
        testing::Not(testing::Contains(testing::Pair(QStringLiteral("application/x-held"), testing::_))));
    // The late answer finds nobody waiting and does no harm.
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(owner.read({ QStringLiteral("text/plain") }).value(QLatin1String("text/plain")).toString(),
        base64("dictated"));
}

TEST_F(X11PasteboardTests, TakesTheClipboardFromAProgramThatJustTookIt) {
    for (int round = 0; round < 10; ++round) {
        CopyingProgram other("other " + QByteArray::number(round));
        EXPECT_TRUE(pasteboard.setDictatedText(QString::number(round)));
        EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), QByteArray::number(round));
    }
}

TEST_F(X11PasteboardTests, ReadsWhatAnotherProgramCopiedMeanwhile) {
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    CopyingProgram other("copied");
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_THAT(items.front().representations,
        testing::Contains(testing::Pair(QStringLiteral("UTF8_STRING"), "copied")));
}

TEST_F(X11PasteboardTests, AProgramThatStandsStillDisplacesNoLaterCopy) {
    const CopyingProgram owner("before");
    const std::vector<PasteboardItem> saved = pasteboard.items();
    ASSERT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    progress->post(0);
    EXPECT_TRUE(untilTrue([] { return clipboard(QStringLiteral("UTF8_STRING")) == "before"; }));
    const CopyingProgram later("copied meanwhile");
    pasteboard.restore(saved);
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "copied meanwhile");
}

TEST_F(X11PasteboardTests, WithoutAManagerHandingOverDoesNothing) {
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    pasteboard.handOver();
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
}

TEST(X11PasteboardWithoutServerTests, StaysEmpty) {
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>(), ":4711");
    EXPECT_FALSE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_FALSE(pasteboard.holdsDictatedText());
    pasteboard.handOver();
    EXPECT_THAT(pasteboard.items(), IsEmpty());
}
} // namespace
