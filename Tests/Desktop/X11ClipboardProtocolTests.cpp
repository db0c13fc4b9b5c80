// The macros of Xlib break GoogleTest's headers, so those come first.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Desktop/TestPrograms.h"
#include "Platform/Linux/X11/X11ClipboardReader.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Support/Print.h"

#include <X11/Xatom.h>

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
        XEvent answer {};
        answer.xselection.type = SelectionNotify;
        answer.xselection.requestor = request.requestor;
        answer.xselection.selection = request.selection;
        answer.xselection.target = request.target;
        answer.xselection.property = request.property;
        XSendEvent(m_client.get(), request.requestor, False, NoEventMask, &answer);
        XSync(m_client.get(), False);
    }

    Client m_client;
    std::atomic<bool> m_isEnding = false;
    QByteArray m_savedText;
    std::thread m_thread;
};

TEST(X11ClipboardProtocolTests, SeveralTypesAreGivenInOneAnswer) {
    X11Pasteboard pasteboard;
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
    X11Pasteboard pasteboard;
    pasteboard.setDictatedText(QStringLiteral("text"));
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

TEST(X11ClipboardProtocolTests, TheContentGoesToTheClipboardManager) {
    ClipboardManager manager;
    X11Pasteboard pasteboard;
    pasteboard.setDictatedText(QStringLiteral("dictated"));
    pasteboard.handOver();
    EXPECT_EQ(manager.savedText(), "dictated");
}

TEST(X11ClipboardProtocolTests, TheContentOfAnotherProgramIsNotHandedOver) {
    ClipboardManager manager;
    X11Pasteboard pasteboard;
    pasteboard.setDictatedText(QStringLiteral("dictated"));
    CopyingProgram other("copied");
    pasteboard.handOver();
    EXPECT_EQ(manager.savedText(), "");
}
} // namespace
