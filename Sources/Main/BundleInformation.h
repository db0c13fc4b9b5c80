#pragma once

#include <QVariantMap>

/// What the configuration of the build tells about the program; see BundleInfo::infoDictionary.
QVariantMap bundleInformation();
