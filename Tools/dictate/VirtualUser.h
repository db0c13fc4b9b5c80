#pragma once

#include <QObject>
#include <QPoint>

#include <memory>
#include <optional>
#include <vector>

/// Simulates a user's input on the display: presses physical keys, moves the mouse, and records all key
/// events.
class VirtualUser : public QObject {
    Q_OBJECT

public:
    /// A physical key event from any source.
    struct KeyEvent {
        int keyCode = 0;
        bool isPress = false;
        /// Time of the X server.
        qint64 milliseconds = 0;
    };

    /// X key code of the right Alt key.
    static constexpr int rightAlt = 108;

    /// Opens the display named by the environment; exits with an error message if there is none.
    VirtualUser();
    ~VirtualUser() override;

    void press(int keyCode);
    void release(int keyCode);

    /// Presses and releases the key for the named keysym with Control held.
    void typeWithControl(const char *keySymbol);
    /// Presses and releases the key for the named keysym.
    void type(const char *keySymbol);

    /// Types a text, without characters that the current layout has on no key, plain or with Shift.
    void enter(const QString &text);

    /// Moves the pointer, in screen pixels.
    void pointAt(QPoint place);
    /// Presses and releases the left button there.
    void click(QPoint place);

    /// All key events since the last forget().
    const std::vector<KeyEvent> &seen() const { return m_seen; }
    void forget() { m_seen.clear(); }

    /// Server time of the first matching event, if any.
    std::optional<qint64> timeOf(int keyCode, bool isPress) const;

    /// The key code for the named keysym in the current layout.
    int keyCodeOf(const char *keySymbol) const;

private:
    void enter(QChar character);
    void readEvents();

    struct Connection;
    std::unique_ptr<Connection> m_connection;
    std::vector<KeyEvent> m_seen;
};
