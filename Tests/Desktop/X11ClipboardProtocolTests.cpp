// The macros of Xlib break GoogleTest's headers, so those come first.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Desktop/TestPrograms.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/X11/X11ClipboardReader.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"

#include <X11/Xatom.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {
X11Display::Instant inAWhile() {
    return std::chrono::steady_clock::now() + std::chrono::seconds(10);
}

/// Another program at the clipboard, on the level of the protocol.
class Client {
public:
    Display *get() const { return m_display->get(); }
    X11Display &display() { return *m_display; }
    Window window() const { return m_window; }
    X11ClipboardReader &reader() { return m_reader; }

    /// Handles one event, if one comes before long.
    std::optional<XEvent> nextEvent() {
        m_display->wait(-1, std::chrono::steady_clock::now() + std::chrono::milliseconds(20));
        const auto event = m_display->takeEvent();
        if (event)
            m_reader.handle(*event);
        return event;
    }

    /// Answers a request for a selection with this property, or with None.
    void notify(const XSelectionRequestEvent &request, Atom property) {
        XEvent answer {};
        answer.xselection.type = SelectionNotify;
        answer.xselection.requestor = request.requestor;
        answer.xselection.selection = request.selection;
        answer.xselection.target = request.target;
        answer.xselection.property = property;
        XSendEvent(get(), request.requestor, False, NoEventMask, &answer);
        XSync(get(), False);
    }

private:
    Window makeWindow() {
        const Window window = XCreateSimpleWindow(get(), m_display->root(), -1, -1, 1, 1, 0, 0, 0);
        XSelectInput(get(), window, PropertyChangeMask);
        return window;
    }

    std::unique_ptr<X11Display> m_display = X11Display::open();
    Window m_window = makeWindow();
    X11ClipboardEncodings m_encodings;
    X11ClipboardReader m_reader { *m_display, m_window, m_encodings,
        [this](const std::function<bool()> &isDone, X11Display::Instant until) {
            while (!isDone() && std::chrono::steady_clock::now() < until)
                nextEvent();
        } };
};

/// Saves the text of whoever asks it to, as a clipboard manager does.
class ClipboardManager {
public:
    ClipboardManager() {
        XSetSelectionOwner(
            m_client.get(), m_client.display().atom("CLIPBOARD_MANAGER"), m_client.window(), CurrentTime);
        XSync(m_client.get(), False);
        m_thread = std::thread([this] { serve(); });
    }
    ~ClipboardManager() { end(); }

    QByteArray savedText() {
        end();
        return m_savedText;
    }

private:
    void end() {
        m_isEnding = true;
        if (m_thread.joinable())
            m_thread.join();
    }
    void serve() {
        while (!m_isEnding) {
            const auto event = m_client.nextEvent();
            if (event && event->type == SelectionRequest)
                save(event->xselectionrequest);
        }
    }
    void save(const XSelectionRequestEvent &request) {
        X11Display &display = m_client.display();
        const auto targets = display.property(request.requestor, request.property);
        const auto text
            = m_client.reader().convert(display.atom("CLIPBOARD"), display.atom("UTF8_STRING"), inAWhile());
        if (targets && text)
            m_savedText = text->bytes;
        m_client.notify(request, request.property);
    }

    Client m_client;
    std::atomic<bool> m_isEnding = false;
    QByteArray m_savedText;
    std::thread m_thread;
};

TEST(X11ClipboardProtocolTests, SeveralTypesAreGivenInOneAnswer) {
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    pasteboard.setItems(
        { PasteboardItem { { { pasteboardTextType, "text" }, { QStringLiteral("text/html"), "html" } } } });
    Client client;
    X11Display &display = client.display();
    const Atom first = display.atom("_TEST_FIRST");
    const Atom second = display.atom("_TEST_SECOND");
    const X11Property pairs { display.atom("ATOM_PAIR"), 32,
        packedProperty({ quint32(display.atom("UTF8_STRING")), quint32(first),
            quint32(display.atom("image/png")), quint32(display.atom("_TEST_NEVER")),
            quint32(display.atom("text/html")), quint32(second) }) };
    const auto answer
        = client.reader().convert(display.atom("CLIPBOARD"), display.atom("MULTIPLE"), inAWhile(), pairs);
    ASSERT_TRUE(answer);
    EXPECT_EQ(unpackedProperty(*answer)[1], first);
    EXPECT_EQ(unpackedProperty(*answer)[3], 0);
    EXPECT_EQ(display.property(client.window(), first).value().bytes, "text");
    EXPECT_EQ(display.property(client.window(), second).value().bytes, "html");
    EXPECT_FALSE(display.property(client.window(), display.atom("_TEST_NEVER")));
}

TEST(X11ClipboardProtocolTests, WhatIsNotThereIsRefused) {
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("text")));
    Client client;
    X11Display &display = client.display();
    EXPECT_FALSE(client.reader().convert(display.atom("CLIPBOARD"), display.atom("image/png"), inAWhile()));
    EXPECT_FALSE(client.reader().convert(display.atom("CLIPBOARD"), display.atom("MULTIPLE"), inAWhile()));
    EXPECT_EQ(client.reader()
                  .convert(display.atom("CLIPBOARD"), display.atom("TIMESTAMP"), inAWhile())
                  .value()
                  .type,
        Atom(XA_INTEGER));
    EXPECT_TRUE(client.reader().convert(display.atom("CLIPBOARD"), display.atom("SAVE_TARGETS"), inAWhile()));
}

std::vector<PasteboardItem> copied(const QByteArray &text) {
    return { PasteboardItem { { { pasteboardTextType, text } } } };
}

TEST(X11ClipboardProtocolTests, TheContentGoesToTheClipboardManager) {
    ClipboardManager manager;
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    pasteboard.setItems(copied("copied"));
    pasteboard.handOver();
    EXPECT_EQ(manager.savedText(), "copied");
}

TEST(X11ClipboardProtocolTests, DictatedTextIsNotHandedOver) {
    ClipboardManager manager;
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("one")));
    pasteboard.restore(pasteboard.items());
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("two")));
    pasteboard.handOver();
    pasteboard.restore({});
    pasteboard.handOver();
    EXPECT_EQ(manager.savedText(), "");
}

TEST(X11ClipboardProtocolTests, WhatADictatedTextDisplacesIsHandedOverInItsPlace) {
    ClipboardManager manager;
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    CopyingProgram user("copied before");
    pasteboard.items();
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("one")));
    // A second text within the second.
    pasteboard.items();
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("two")));
    pasteboard.handOver();
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "copied before");
    EXPECT_EQ(manager.savedText(), "copied before");
}

TEST(X11ClipboardProtocolTests, TheContentOfAnotherProgramIsNotHandedOver) {
    ClipboardManager manager;
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    pasteboard.setItems(copied("ours"));
    CopyingProgram other("theirs");
    pasteboard.handOver();
    EXPECT_EQ(manager.savedText(), "");
}

/// A program that offers a text, and more types than it gives.
class OfferingProgram {
public:
    explicit OfferingProgram(int emptyTypeCount, bool holdsBack = false)
        : m_holdsBack(holdsBack) {
        for (int number = 0; number < emptyTypeCount; ++number)
            m_names.push_back(QByteArrayLiteral("application/x-empty-") + QByteArray::number(number));
        m_names.push_back("application/x-slow");
        m_names.push_back("UTF8_STRING");
        const Atom clipboard = m_client.display().atom("CLIPBOARD");
        XSetSelectionOwner(m_client.get(), clipboard, m_client.window(), CurrentTime);
        XSync(m_client.get(), False);
        m_thread = std::thread([this, targets = atoms()] { serve(targets); });
    }
    ~OfferingProgram() {
        m_isEnding = true;
        m_thread.join();
    }

    /// Ends the time that the slow type takes.
    void release() { m_holdsBack = false; }

    std::atomic<int> textRequests = 0;
    std::atomic<int> slowRequests = 0;
    std::atomic<int> slowAnswers = 0;

private:
    std::vector<quint32> atoms() {
        std::vector<char *> names;
        for (QByteArray &name : m_names)
            names.push_back(name.data());
        std::vector<Atom> atoms(names.size());
        XInternAtoms(m_client.get(), names.data(), int(names.size()), False, atoms.data());
        return { atoms.begin(), atoms.end() };
    }
    void serve(const std::vector<quint32> &targets) {
        while (!m_isEnding) {
            const auto event = m_client.nextEvent();
            if (event && event->type == SelectionRequest)
                answer(event->xselectionrequest, targets);
        }
    }
    void answer(const XSelectionRequestEvent &request, const std::vector<quint32> &targets) {
        X11Display &display = m_client.display();
        const bool isSlow = request.target == display.atom("application/x-slow");
        slowRequests += isSlow;
        textRequests += request.target == display.atom("UTF8_STRING");
        while (isSlow && m_holdsBack && !m_isEnding)
            std::this_thread::yield();
        Atom property = request.property;
        if (request.target == display.atom("TARGETS"))
            display.setProperty(
                request.requestor, request.property, { XA_ATOM, 32, packedProperty(targets) });
        else if (isSlow || request.target == display.atom("UTF8_STRING"))
            display.setProperty(request.requestor, request.property, { request.target, 8, "copied" });
        else
            property = None;
        m_client.notify(request, property);
        slowAnswers += isSlow;
    }

    Client m_client;
    std::vector<QByteArray> m_names;
    std::atomic<bool> m_holdsBack;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

TEST(X11ClipboardProtocolTests, AnOwnerOfVeryManyTypesKeepsNothingBack) {
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    OfferingProgram other(20000);
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_THAT(items.front().representations,
        testing::Contains(testing::Pair(QStringLiteral("UTF8_STRING"), "copied")));
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
}

TEST(X11ClipboardProtocolTests, AConnectionThatBreaksHasASuccessor) {
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    for (const char *text : { "one", "two", "three" }) {
        EXPECT_TRUE(pasteboard.setDictatedText(QLatin1String(text)));
        EXPECT_TRUE(pasteboard.holdsDictatedText());
        EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), text);
        Client killer;
        XKillClient(killer.get(), XGetSelectionOwner(killer.get(), killer.display().atom("CLIPBOARD")));
        XSync(killer.get(), False);
        EXPECT_FALSE(pasteboard.holdsDictatedText());
    }
    CopyingProgram other("copied");
    EXPECT_EQ(pasteboard.items().size(), 1);
}

TEST(X11ClipboardProtocolTests, ATextThatAnotherProgramHasDisplacedIsNotHeld) {
    X11Pasteboard pasteboard(std::make_shared<PasteProgress>());
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    CopyingProgram other("copied");
    EXPECT_FALSE(pasteboard.holdsDictatedText());
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_TRUE(pasteboard.holdsDictatedText());
}

class X11ReadingAheadTests : public testing::Test {
protected:
    static bool has(const std::vector<PasteboardItem> &items, const char *type) {
        return !items.empty()
            && std::ranges::find(
                   items.front().representations, QLatin1String(type), &std::pair<QString, QByteArray>::first)
            != items.front().representations.end();
    }

    OfferingProgram owner { 0, true };
    X11Pasteboard pasteboard { std::make_shared<PasteProgress>() };
};

TEST_F(X11ReadingAheadTests, WhatTakesTimeIsThereLater) {
    pasteboard.readAhead();
    ASSERT_TRUE(untilTrue([this] { return owner.slowRequests == 1; }));
    owner.release();
    ASSERT_TRUE(untilTrue([this] { return owner.slowAnswers == 1; }));
    const std::vector<PasteboardItem> items = pasteboard.items();
    EXPECT_TRUE(has(items, "UTF8_STRING"));
    EXPECT_TRUE(has(items, "application/x-slow"));
    EXPECT_EQ(owner.textRequests, 1) << "nothing is read twice";
    EXPECT_EQ(owner.slowRequests, 1) << "nothing is read twice";
}

TEST_F(X11ReadingAheadTests, WhatIsNotThereByThenIsLeftOut) {
    pasteboard.readAhead();
    ASSERT_TRUE(untilTrue([this] { return owner.slowRequests == 1; }));
    const std::vector<PasteboardItem> items = pasteboard.items();
    EXPECT_TRUE(has(items, "UTF8_STRING"));
    EXPECT_FALSE(has(items, "application/x-slow"));
}

TEST_F(X11ReadingAheadTests, WhatAnotherProgramCopiesMeanwhileCounts) {
    pasteboard.readAhead();
    ASSERT_TRUE(untilTrue([this] { return owner.slowRequests == 1; }));
    owner.release();
    CopyingProgram other("copied meanwhile");
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.front().representations.front().second, "copied meanwhile");
    EXPECT_FALSE(has(items, "application/x-slow"));
}

TEST_F(X11ReadingAheadTests, NothingWaitsForIt) {
    pasteboard.readAhead();
    ASSERT_TRUE(untilTrue([this] { return owner.slowRequests == 1; }));
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
}

/// A paste whose command has gone to a window of `target`.
class X11RestoringTests : public testing::Test {
protected:
    void post() { progress->post(target.window()); }
    void targetReads() {
        EXPECT_TRUE(target.reader().convert(
            target.display().atom("CLIPBOARD"), target.display().atom("UTF8_STRING"), inAWhile()));
    }
    static QByteArray found() { return clipboard(QStringLiteral("UTF8_STRING")); }

    CopyingProgram user { "copied before" };
    Client target;
    std::shared_ptr<PasteProgress> progress = std::make_shared<PasteProgress>();
    X11Pasteboard pasteboard { progress };
    std::vector<PasteboardItem> before = pasteboard.items();
    bool hasText = pasteboard.setDictatedText(QStringLiteral("dictated"));
};

TEST_F(X11RestoringTests, WaitsForATargetThatHasNotReadTheText) {
    ASSERT_TRUE(hasText);
    post();
    pasteboard.restore(before);
    EXPECT_EQ(found(), "dictated") << "others that read do not count";
    targetReads();
    EXPECT_TRUE(untilTrue([] { return found() == "copied before"; }));
}

TEST_F(X11RestoringTests, ComesAtOnceWhenTheTargetHasReadTheText) {
    post();
    targetReads();
    pasteboard.restore(before);
    EXPECT_EQ(found(), "copied before");
}

TEST_F(X11RestoringTests, AReadingBeforeTheCommandDoesNotCount) {
    targetReads();
    post();
    pasteboard.restore(before);
    EXPECT_EQ(found(), "dictated");
}

TEST_F(X11RestoringTests, ComesAtOnceWithoutATarget) {
    progress->post(None);
    pasteboard.restore(before);
    EXPECT_EQ(found(), "copied before");
}

TEST_F(X11RestoringTests, WhatIsCopiedWhileItWaitsStays) {
    post();
    pasteboard.restore(before);
    CopyingProgram other("copied meanwhile");
    targetReads();
    pasteboard.handOver();
    EXPECT_EQ(found(), "copied meanwhile");
}

TEST_F(X11RestoringTests, WhatTheProgramItselfCopiesWhileItWaitsStays) {
    post();
    pasteboard.restore(before);
    pasteboard.setItems(copied("copied here"));
    pasteboard.handOver();
    EXPECT_EQ(found(), "copied here");
}

TEST_F(X11RestoringTests, TheNextDictationKeepsWhatWaits) {
    post();
    pasteboard.restore(before);
    EXPECT_EQ(pasteboard.items(), before);
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("second")));
    pasteboard.restore(before);
    EXPECT_EQ(found(), "copied before");
}

TEST_F(X11RestoringTests, TheEndOfTheProgramDoesNotWait) {
    post();
    pasteboard.restore(before);
    pasteboard.handOver();
    EXPECT_EQ(found(), "copied before");
}
} // namespace
