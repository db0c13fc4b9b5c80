#include "Platform/Linux/X11/X11FrontmostApplication.h"

#include "Platform/Linux/X11/X11ActiveWindow.h"
#include "Platform/Linux/X11/X11Display.h"

#include <QFileInfo>

namespace {
QString programOf(std::optional<qint64> processID) {
    if (!processID)
        return {};
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(*processID))).fileName();
}
} // namespace

X11FrontmostApplication::X11FrontmostApplication(DesktopEntries entries, const QByteArray &displayName)
    : m_entries(std::move(entries))
    , m_display(X11Display::open(displayName)) { }

X11FrontmostApplication::~X11FrontmostApplication() = default;

std::optional<FrontApplication> X11FrontmostApplication::current() {
    if (!m_display)
        return {};
    // Every client is told of new keyboard layouts, and nobody else reads this connection.
    while (m_display->takeEvent()) { }
    const auto window = X11ActiveWindow::current(*m_display);
    if (!window)
        return {};
    if (const auto entry = m_entries.find(*window, programOf(window->processID)))
        return FrontApplication { entry->name, entry->id, window->isTerminal() };
    const QString &name = window->className.isEmpty() ? window->instance : window->className;
    const QString &identifier = window->instance.isEmpty() ? window->className : window->instance;
    return FrontApplication { name, identifier, window->isTerminal() };
}
