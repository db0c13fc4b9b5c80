#pragma once

#include <QObject>
#include <QPoint>

#include <memory>
#include <optional>
#include <vector>

/// The hands of a user: presses physical keys of the display, moves its mouse, and watches what every key of
/// it does.
class VirtualUser : public QObject {
    Q_OBJECT

public:
    /// A key that really moved, whoever moved it.
    struct KeyEvent {
        int keyCode = 0;
        bool isPress = false;
        /// The display server's clock.
        qint64 milliseconds = 0;
    };

    /// X key code of the right Alt key.
    static constexpr int rightAlt = 108;

    /// Opens the display that the environment names; exits with a line of explanation when there is none.
    VirtualUser();
    ~VirtualUser() override;

    void press(int keyCode);
    void release(int keyCode);

    /// Presses and releases the key that gives the named symbol, with the Control key held.
    void typeWithControl(const char *keySymbol);
    /// Presses and releases the key that gives the named symbol.
    void type(const char *keySymbol);

    /// Types a text; a character that the present layout has on no key, alone or with Shift, is left out.
    void enter(const QString &text);

    /// Puts the pointer there, in pixels of the screen.
    void pointAt(QPoint place);
    /// Presses and releases the left button there.
    void click(QPoint place);

    /// Everything seen since the last call of forget().
    const std::vector<KeyEvent> &seen() const { return m_seen; }
    void forget() { m_seen.clear(); }

    /// Server time of the first matching event, once it has been seen.
    std::optional<qint64> timeOf(int keyCode, bool isPress) const;

    /// The key code that gives the named symbol in the present layout.
    int keyCodeOf(const char *keySymbol) const;

private:
    void enter(QChar character);
    void readEvents();

    struct Connection;
    std::unique_ptr<Connection> m_connection;
    std::vector<KeyEvent> m_seen;
};
