#pragma once

#include "Foundation/FileURL.h"

#include <QVariantMap>

/// Where the running program is installed and how it was started.
struct BundleInfo {
    /// argv[0] as given; may be empty.
    QString programArgument;
    /// The folder of the executable with links resolved, or on macOS the bundle.
    FileURL bundleURL;
    /// Values set at build time, by key: "CFBundleShortVersionString", "SUFeedURL", "SUPublicEDKey".
    QVariantMap infoDictionary = {};
};
