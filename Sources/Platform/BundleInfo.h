#pragma once

#include "Platform/FileURL.h"

/// Where the running program lies and how it was started.
struct BundleInfo {
    /// The first command line argument as given; may be empty.
    QString programArgument;
    /// The folder of the real executable, or on macOS the bundle.
    FileURL bundleURL;
};
