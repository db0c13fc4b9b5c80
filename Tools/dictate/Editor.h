#pragma once

#include "dictate/VirtualUser.h"

#include <QProcess>
#include <QString>

/// A text editor on the desktop, controlled by keyboard and clipboard only.
class Editor {
public:
    /// `program` is the path or name of an editor that starts one process per window.
    explicit Editor(VirtualUser &user, QString program = QStringLiteral("mousepad"));
    /// Ends the editor.
    ~Editor();

    /// Starts the editor and waits until its window has the focus; false on time-out.
    bool open();

    /// Focuses the editor's window, as a click does; false on time-out.
    bool bringToFront();

    /// The editor's text, read by select all and copy. The clipboard contains it afterwards.
    QString text();

    /// Clears the editor.
    void clear();

private:
    VirtualUser &m_user;
    const QString m_program;
    QProcess m_process;
};

/// The clipboard's text, read by another program; empty if there is none.
QString clipboardText();

/// Sets the clipboard's text through another program, which keeps owning it.
void setClipboardText(const QString &text);
