#include "Foundation/Log.h"

#include <cstdio>
#include <cstdlib>

void logLine(const QString &line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

void fatalError(const QString &line) {
    logLine(line);
    std::abort();
}
