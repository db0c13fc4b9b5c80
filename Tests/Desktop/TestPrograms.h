#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QStringList>

/// The standard output of a program that ends by itself; a failure of the test when it fails.
QByteArray outputOf(const QString &program, const QStringList &arguments, const QByteArray &input = {});

/// What programs find on the clipboard under a type; empty when there is nothing.
QByteArray clipboard(const QString &type, const QString &selection = QStringLiteral("clipboard"));

/// Keys of the real keyboard path, by key code.
void pressKey(int keyCode);
void releaseKey(int keyCode);
void typeKey(int keyCode);
/// Several layouts stand in a row with commas between; the first is in use.
void setLayout(const QString &layout, const QString &variant = {});
void selectNextLayout();

constexpr int rightAlt = 108;
constexpr int leftAlt = 64;
constexpr int leftShift = 50;

/// A program that runs until the object goes. Constructed when its window has the focus.
class TestProgram {
public:
    /// `windowClass` is WM_CLASS of its window.
    TestProgram(const QString &program, const QStringList &arguments, const QString &windowClass);
    ~TestProgram();

    qint64 processID() const { return m_process.processId(); }
    /// The program does nothing between these two.
    void hang() const;
    void resume() const;

protected:
    TestProgram() = default;
    /// `platform` is the toolkit's, where the program uses that toolkit.
    void startProgram(const QString &program, const QStringList &arguments,
        const QString &platform = QStringLiteral("xcb"));

    QProcess m_process;
};

/// A program that keeps a text on the clipboard until another takes it.
class CopyingProgram {
public:
    /// `selection` may also be "primary", for what is selected.
    explicit CopyingProgram(const QByteArray &text, const QString &selection = QStringLiteral("clipboard"));
    ~CopyingProgram();

    /// From now on the program neither answers nor ends.
    void hang();

private:
    QProcess m_process;
};

/// The test editor; see its source for what it does.
class TestEditor : public TestProgram {
public:
    explicit TestEditor(const QStringList &arguments = {}, const QString &platform = QStringLiteral("xcb"));

    /// The text in the window.
    QString text();
    bool waitForText(const QString &text);
    /// Puts these types on the clipboard, as a program does when the user copies.
    void copy(const QJsonObject &content);
    /// Waits until somebody wants the type that the program holds back until it gets the next command.
    void waitUntilAsked();
    /// What the program finds on the clipboard under these types.
    QJsonObject read(const QStringList &types);

    /// Has the program take the keyboard for itself, as menus and password dialogs do.
    void grabKeyboard();

private:
    void readOutput();
    QJsonObject ask(const QJsonObject &command, const QString &answer);

    QByteArray m_output;
    QJsonObject m_said;
};
