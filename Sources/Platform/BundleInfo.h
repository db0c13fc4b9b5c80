#pragma once

#include "Foundation/FileURL.h"

#include <QVariantMap>

/// Where the running program lies and how it was started.
struct BundleInfo {
    /// The first command line argument as given; may be empty.
    QString programArgument;
    /// The folder of the real executable, or on macOS the bundle.
    FileURL bundleURL;
    /// What the builder of the program told about it, by key: "CFBundleShortVersionString", "SUFeedURL",
    /// "SUPublicEDKey".
    QVariantMap infoDictionary = {};
};
