#include "Foundation/FileURL.h"

#include <QDir>

namespace {
QString withoutTrailingSlashes(QString path) {
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}
} // namespace

FileURL::FileURL(const QString &path) {
    if (path.isEmpty())
        return;
    const bool isAbsolute = path.startsWith(u'/');
    m_path = withoutTrailingSlashes(isAbsolute ? path : QDir::currentPath() + u'/' + path);
}

QString FileURL::lastPathComponent() const {
    if (m_path == u"/")
        return m_path;
    return m_path.mid(m_path.lastIndexOf(u'/') + 1);
}

QString FileURL::pathExtension() const {
    const QString name = lastPathComponent();
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.mid(dot + 1) : QString();
}

FileURL FileURL::standardizedFileURL() const {
    if (m_path.isEmpty())
        return *this;
    QString cleaned = QDir::cleanPath(m_path);
    // ".." at the root is the root.
    while (cleaned == u"/.." || cleaned.startsWith(u"/../"))
        cleaned.remove(0, 3);
    return FileURL(cleaned.isEmpty() ? QStringLiteral("/") : cleaned);
}

FileURL FileURL::appendingPathComponent(const QString &component) const {
    qsizetype start = 0;
    while (start < component.size() && component[start] == u'/')
        ++start;
    const QString base = m_path.endsWith(u'/') ? m_path : m_path + u'/';
    return FileURL(base + component.mid(start));
}

FileURL FileURL::deletingLastPathComponent() const {
    const qsizetype slash = m_path.lastIndexOf(u'/');
    if (slash < 0)
        return *this;
    return FileURL(slash == 0 ? QStringLiteral("/") : m_path.left(slash));
}
