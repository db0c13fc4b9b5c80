// Dictations one after the other while programs of all kinds own the clipboard: what each of them had copied
// comes back every time, and nothing but the text is ever pasted. TOLMI_CLIPBOARD_ROUNDS is the number of
// dictations for each kind.

#include "Desktop/DesktopPaste.h"
#include "Desktop/TestPrograms.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"

#include <QBuffer>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include <gtest/gtest.h>

#include <iostream>

namespace {
const QString plainText = QStringLiteral("text/plain");
const QString html = QStringLiteral("text/html");
const QString picture = QStringLiteral("image/png");

QString base64(const QByteArray &bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

/// Like a photo: smooth, with some noise, so that encoding it takes its time.
QByteArray photo(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            noise = noise * 1664525 + 1013904223;
            line[x] = qRgb(x * 255 / size.width(), y * 255 / size.height(), 100 + int(noise >> 30));
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A program that has something on the clipboard.
class Owner {
public:
    virtual ~Owner() = default;
    virtual void copy() = 0;
    /// The key has gone down, and the clipboard is being read.
    virtual void whileSpeaking() { }
    /// What must come back; nothing for an owner that is gone by then.
    virtual QStringList types() const { return { plainText }; }
};

class OwnWindow : public Owner {
public:
    void copy() override {
        auto *data = new QMimeData;
        data->setText(QStringLiteral("copied here"));
        data->setHtml(QStringLiteral("<b>copied here</b>"));
        QGuiApplication::clipboard()->setMimeData(data);
    }
    QStringList types() const override { return { plainText, html }; }
};

/// A program of the same toolkit that has copied a text or a picture.
class QtProgram : public Owner {
public:
    explicit QtProgram(QJsonObject content)
        : m_content(std::move(content)) { }

    void copy() override { m_editor.copy(m_content); }
    QStringList types() const override { return m_content.keys(); }

private:
    const QJsonObject m_content;
    TestEditor m_editor;
};

class GtkProgram : public Owner {
public:
    void copy() override {
        activate(m_window);
        EXPECT_TRUE(untilTrue([] {
            outputOf(QStringLiteral("xdotool"), { "key", "ctrl+a", "ctrl+c" });
            return clipboard(QStringLiteral("UTF8_STRING")) == "copied in GTK";
        }));
    }

    static void activate(const QString &window) {
        outputOf(QStringLiteral("xdotool"), { "windowactivate", "--sync", window });
    }
    static QString windowOf(const TestProgram &program) {
        QByteArray window;
        EXPECT_TRUE(untilTrue([&] {
            QProcess search;
            search.start("xdotool",
                { "search", "--all", "--onlyvisible", "--pid", QString::number(program.processID()), "--name",
                    "." });
            search.waitForFinished();
            window = search.readAllStandardOutput().trimmed();
            return !window.isEmpty() && !window.contains('\n');
        }));
        return QString::fromLatin1(window);
    }

private:
    static QString file() {
        QFile file(qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/gtk.txt"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write("copied in GTK") > 0);
        return file.fileName();
    }

    TestProgram m_editor { QStringLiteral("mousepad"), { file() }, QStringLiteral("Mousepad") };
    const QString m_window = windowOf(m_editor);
};

/// A program that ends while the user speaks; what it had copied goes with it.
class DyingProgram : public Owner {
public:
    void copy() override { m_program = std::make_unique<CopyingProgram>("copied by the dying"); }
    void whileSpeaking() override { m_program.reset(); }
    QStringList types() const override { return {}; }

private:
    std::unique_ptr<CopyingProgram> m_program;
};

QJsonObject veryManyTypes() {
    QJsonObject content { { plainText, base64("copied") } };
    for (int number = 0; number < 20000; ++number)
        content.insert(QStringLiteral("application/x-type-%1").arg(number), base64("x"));
    return content;
}

struct Kind {
    const char *name;
    std::unique_ptr<Owner> (*make)();
    /// Whether only its text need come back.
    bool isTextEnough = false;
    /// In milliseconds. A program may take seconds to encode a large picture.
    int speechTime = 1500;
};

template <typename Made>
std::unique_ptr<Owner> make() {
    return std::make_unique<Made>();
}

const std::array kinds {
    Kind { "OwnWindow", &make<OwnWindow> },
    Kind { "Qt",
        [] {
            return std::unique_ptr<Owner>(std::make_unique<QtProgram>(
                QJsonObject { { plainText, base64("copied") }, { html, base64("<i>copied</i>") } }));
        } },
    Kind { "Gtk", &make<GtkProgram> },
    Kind { "Slow",
        [] {
            return std::unique_ptr<Owner>(std::make_unique<QtProgram>(
                QJsonObject { { plainText, base64("copied") }, { QStringLiteral("slow"), QString() } }));
        },
        true },
    Kind { "Dying", &make<DyingProgram> },
    Kind { "TwentyThousandTypes",
        [] { return std::unique_ptr<Owner>(std::make_unique<QtProgram>(veryManyTypes())); }, true },
    Kind { "Photo1080p",
        [] {
            return std::unique_ptr<Owner>(
                std::make_unique<QtProgram>(QJsonObject { { picture, base64(photo({ 1920, 1080 })) } }));
        } },
    Kind { "Picture4K",
        [] {
            return std::unique_ptr<Owner>(
                std::make_unique<QtProgram>(QJsonObject { { picture, base64(photo({ 3840, 2160 })) } }));
        },
        false, 8000 },
};

int rounds() {
    const int asked = qEnvironmentVariableIntValue("TOLMI_CLIPBOARD_ROUNDS");
    return asked > 0 ? asked : 2;
}

class ClipboardOwners : public testing::TestWithParam<Kind> {
protected:
    /// Lets the main loop turn for a while.
    static void pass(int milliseconds) {
        QElapsedTimer timer;
        timer.start();
        untilTrue([&] { return timer.hasExpired(milliseconds); });
    }

    /// What another program finds under the types that must come back.
    QJsonObject found() {
        const QStringList types = GetParam().isTextEnough ? QStringList { plainText } : m_owner->types();
        return types.isEmpty() ? QJsonObject() : m_target.read(types);
    }

    /// One dictation: the key goes down, the user speaks for a while, the text is pasted.
    void dictate(int number) {
        m_owner->copy();
        GtkProgram::activate(m_targetWindow);
        const QJsonObject before = found();
        m_paste.service->prepare();
        m_owner->whileSpeaking();
        pass(GetParam().speechTime);
        const QString text = QStringLiteral("dictated %1 ").arg(number);
        m_expected += text;
        QElapsedTimer timer;
        timer.start();
        m_paste.service->paste(text, AppLanguage::English);
        m_longestPaste = std::max(m_longestPaste, timer.elapsed());
        ASSERT_TRUE(m_target.waitForText(m_expected)) << m_target.text().toStdString();
        m_marked += clipboard(QStringLiteral("x-kde-passwordManagerHint")) == "secret";
        pass(1100);
        m_restored += untilTrue([&] { return found() == before; });
    }

    std::unique_ptr<Owner> m_owner = GetParam().make();
    TestEditor m_target;
    const QString m_targetWindow = GtkProgram::windowOf(m_target);
    QString m_expected;
    int m_marked = 0;
    int m_restored = 0;
    qint64 m_longestPaste = 0;
    DesktopPaste m_paste;
};
} // namespace

TEST_P(ClipboardOwners, GetTheirContentBack) {
    const int count = rounds();
    for (int number = 0; number < count && !HasFailure(); ++number)
        dictate(number);
    std::cout << GetParam().name << ": " << count << " dictations, " << m_restored << " restored, "
              << (m_target.text() == m_expected ? 0 : 1) << " foreign pastes, " << m_marked
              << " marked, longest paste " << m_longestPaste << " ms\n";
    EXPECT_EQ(m_target.text(), m_expected);
    EXPECT_EQ(m_marked, count);
    EXPECT_EQ(m_restored, count);
}

INSTANTIATE_TEST_SUITE_P(Kind, ClipboardOwners, testing::ValuesIn(kinds),
    [](const auto &info) { return std::string(info.param.name); });
