#include "TolmiApp/Settings/ApplicationFolder.h"

FileURL tolmiRootDirectoryURL(const FileManager &fileManager) {
    const std::optional<FileURL> applicationSupport = fileManager.applicationSupportDirectory();
    const FileURL base = applicationSupport ? *applicationSupport : fileManager.temporaryDirectory();
    return base.appendingPathComponent(QStringLiteral("Tolmi"));
}

bool staysInFolder(const std::optional<QString> &relativePath) {
    return relativePath && !relativePath->isEmpty() && !relativePath->startsWith(u'/')
        && !relativePath->contains(QStringLiteral(".."));
}
