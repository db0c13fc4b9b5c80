#include "TolmiApp/Design/Drawing/Symbol.h"
#include "TolmiApp/Design/Drawing/SymbolPaths.h"
#include "Views/ViewsFixture.h"

#include <QDirIterator>
#include <QRegularExpression>

namespace {

/// The drawn area in fully covered pixels.
double inkOf(const QImage &image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    }
    return sum;
}

class Symbols : public ViewsFixture { };

} // namespace

TEST_F(Symbols, EverySymbolOfTheInterfaceExists) {
    const char *const names[] { "arrow.right.circle.fill", "arrow.triangle.2.circlepath",
        "briefcase.circle.fill", "character.cursor.ibeam", "checkmark.circle.fill", "checkmark.seal.fill",
        "circle", "circle.inset.filled", "clock.arrow.circlepath", "command.circle", "cpu", "dial.high.fill",
        "doc.on.clipboard.fill", "doc.on.doc", "doc.text", "exclamationmark.shield.fill",
        "exclamationmark.triangle.fill", "gear", "gearshape", "globe", "hourglass", "keyboard", "mic.fill",
        "person.crop.circle", "person.crop.circle.fill", "pin", "pin.fill", "power", "rectangle.on.rectangle",
        "sparkles", "sparkles.rectangle.stack", "stethoscope", "trash", "wand.and.stars", "waveform",
        "waveform.circle", "waveform.circle.fill", "xmark.octagon.fill" };
    for (const char *name : names)
        EXPECT_TRUE(SymbolPaths::contains(QString::fromLatin1(name))) << name;
}

TEST_F(Symbols, EverySymbolNamedInQmlExists) {
    const QRegularExpression use(QStringLiteral("(?<!\\.)\\b(?:symbol|icon|name): \"([^\"]+)\""));
    for (const char *folder : { TOLMI_SOURCE_DIR "/Sources/TolmiApp", TOLMI_SOURCE_DIR "/Tools/gallery" }) {
        int found = 0;
        QDirIterator files(QString::fromUtf8(folder), { QStringLiteral("*.qml") }, QDir::Files,
            QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            ASSERT_TRUE(file.open(QFile::ReadOnly));
            auto uses = use.globalMatch(QString::fromUtf8(file.readAll()));
            while (uses.hasNext()) {
                const QString name = uses.next().captured(1);
                EXPECT_TRUE(SymbolPaths::contains(name))
                    << name.toStdString() << " in " << file.fileName().toStdString();
                ++found;
            }
        }
        EXPECT_GT(found, 5) << folder;
    }
}

TEST_F(Symbols, EverySymbolIsDrawnInsideItsSquareAtEverySize) {
    for (const QString &name : SymbolPaths::names()) {
        for (const double size : { 12.0, 16.0, 20.0, 48.0 }) {
            const QImage image = SymbolPaths::image(name, size, 1);
            EXPECT_GT(inkOf(image), size * size / 30) << name.toStdString() << " at " << size;
        }
        const QImage large = SymbolPaths::image(name, 96, 1);
        for (int edge = 0; edge < 96; ++edge) {
            for (const QPoint point :
                { QPoint(edge, 0), QPoint(edge, 95), QPoint(0, edge), QPoint(95, edge) })
                EXPECT_EQ(qAlpha(large.pixel(point)), 0) << name.toStdString();
        }
    }
}

TEST_F(Symbols, SmallOnesHaveFewerDetails) {
    EXPECT_NE(SymbolPaths::steps(QStringLiteral("waveform"), 15).first().path,
        SymbolPaths::steps(QStringLiteral("waveform"), 16).first().path);
    EXPECT_EQ(SymbolPaths::steps(QStringLiteral("trash"), 12).size(),
        SymbolPaths::steps(QStringLiteral("trash"), 40).size());
}

TEST_F(Symbols, AbsoluteAndRelativeNotationAreEquivalent) {
    const QPainterPath absolute = SymbolPaths::fromNotation(QLatin1String("M2 3L10 3L10 9L2 9Z"));
    const QPainterPath relative = SymbolPaths::fromNotation(QLatin1String("m2 3h8v6h-8z"));
    EXPECT_EQ(absolute.boundingRect(), QRectF(2, 3, 8, 6));
    EXPECT_EQ(relative.boundingRect(), QRectF(2, 3, 8, 6));
}

TEST_F(Symbols, NotationDrawsArcsToTheirSide) {
    const QRectF below = SymbolPaths::fromNotation(QLatin1String("M6 12a6 6 0 0 0 12 0")).boundingRect();
    const QRectF above = SymbolPaths::fromNotation(QLatin1String("M6 12a6 6 0 0 1 12 0")).boundingRect();
    EXPECT_NEAR(below.bottom(), 18, 1e-6);
    EXPECT_NEAR(below.top(), 12, 1e-6);
    EXPECT_NEAR(above.top(), 6, 1e-6);
    const QRectF large = SymbolPaths::fromNotation(QLatin1String("M12 6a6 6 0 1 1-6 6")).boundingRect();
    EXPECT_NEAR(large.width(), 12, 1e-6);
    EXPECT_NEAR(large.height(), 12, 1e-6);
}

TEST_F(Symbols, UnknownNameIsReported) {
    Symbol symbol;
    symbol.setName(QStringLiteral("no.such.symbol"));
    EXPECT_EQ(takeWarnings(), QStringList({ QStringLiteral("there is no symbol named \"no.such.symbol\"") }));
}
