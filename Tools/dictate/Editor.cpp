#include "dictate/Editor.h"

#include "dictate/Waiting.h"

#include <QFileInfo>

namespace {
QString outputOf(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    process.waitForFinished(5000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

bool hasFocus(qint64 processId) {
    const QString owner = outputOf(
        QStringLiteral("xdotool"), { QStringLiteral("getactivewindow"), QStringLiteral("getwindowpid") });
    return owner.trimmed() == QString::number(processId);
}
} // namespace

Editor::Editor(VirtualUser &user, QString program)
    : m_user(user)
    , m_program(std::move(program)) { }

Editor::~Editor() {
    m_process.kill();
    m_process.waitForFinished(2000);
}

bool Editor::open() {
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    const bool isShared = m_program == u"mousepad";
    m_process.start(m_program, isShared ? QStringList(QStringLiteral("--disable-server")) : QStringList());
    return m_process.waitForStarted(5000)
        && waitUntil([this] { return hasFocus(m_process.processId()); }, 20);
}

bool Editor::bringToFront() {
    outputOf(QStringLiteral("wmctrl"),
        { QStringLiteral("-x"), QStringLiteral("-a"), QFileInfo(m_program).fileName() });
    return waitUntil([this] { return hasFocus(m_process.processId()); }, 20);
}

QString Editor::text() {
    // A marker after the text shows that all of it was copied, and distinguishes an empty editor from a slow
    // one.
    const QString mark = QStringLiteral("xxx");
    m_user.typeWithControl("End");
    for (int count = 0; count < mark.size(); ++count)
        m_user.type("x");
    QString found;
    for (int attempt = 0; attempt < 20 && !found.endsWith(mark); ++attempt) {
        m_user.typeWithControl("a");
        m_user.typeWithControl("c");
        waitUntil(
            [&found, &mark] {
                found = clipboardText();
                return found.endsWith(mark);
            },
            1);
    }
    return found.endsWith(mark) ? found.chopped(mark.size()) : QString();
}

void Editor::clear() {
    m_user.typeWithControl("a");
    m_user.type("Delete");
    pause(0.1);
}

QString clipboardText() {
    return outputOf(QStringLiteral("xclip"),
        { QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o") });
}

void setClipboardText(const QString &text) {
    QProcess process;
    // It keeps running to own the clipboard and must not hold our pipes open.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("xclip"), { QStringLiteral("-selection"), QStringLiteral("clipboard") });
    process.waitForStarted(5000);
    process.write(text.toUtf8());
    process.closeWriteChannel();
    process.waitForFinished(5000);
}
