#include "Platform/Desktop/UserFolders.h"

#include <QStandardPaths>

FileURL downloadsDirectory() {
    return FileURL(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
}
