#pragma once

#include "dictate/VirtualUser.h"

#include <QProcess>
#include <QString>

/// A text editor on the desktop, used by keyboard and clipboard only, as a user does.
class Editor {
public:
    /// `program` is the path or name of an editor whose windows come one to a process.
    explicit Editor(VirtualUser &user, QString program = QStringLiteral("mousepad"));
    /// Ends the editor.
    ~Editor();

    /// Starts the editor and waits until its window has the focus; false when that does not happen in time.
    bool open();

    /// Gives the focus back to the editor's window, as a click on it does; false when that does not happen in
    /// time.
    bool bringToFront();

    /// Everything that stands in the editor's window: select all, copy, and read what the editor then offers.
    /// The clipboard holds that text afterwards.
    QString text();

    /// Empties the editor.
    void clear();

private:
    VirtualUser &m_user;
    const QString m_program;
    QProcess m_process;
};

/// The text of the clipboard, asked of its owner by another program; empty when there is none.
QString clipboardText();

/// Puts a text on the clipboard by another program, which goes on owning it.
void setClipboardText(const QString &text);
