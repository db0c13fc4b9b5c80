#pragma once

#include <QProcess>
#include <QStringList>

/// What programs of Wayland find on the clipboard under a type; empty when there is nothing.
QByteArray waylandClipboard(
    const QString &type = QStringLiteral("text/plain;charset=utf-8"), bool isPrimary = false);
/// The types that they find.
QStringList waylandClipboardTypes();

/// A program of Wayland that keeps a content on the clipboard until another takes it. Constructed when it has
/// it there.
class WaylandCopyingProgram {
public:
    explicit WaylandCopyingProgram(
        const QByteArray &content, const QString &type = QStringLiteral("text/plain;charset=utf-8"));
    ~WaylandCopyingProgram();

    /// From now on the program neither answers nor ends.
    void hang() const;

private:
    QProcess m_process;
};

/// A program with a window of Wayland. Constructed when its window has the focus.
class WaylandProgram {
public:
    WaylandProgram(const QString &program, const QStringList &arguments, const QString &applicationID);
    ~WaylandProgram();

private:
    QProcess m_process;
};

/// Types on a keyboard of Wayland, with the arguments of wtype.
void typeOnWayland(const QStringList &arguments);
