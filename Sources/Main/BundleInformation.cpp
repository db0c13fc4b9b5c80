#include "Main/BundleInformation.h"

#include "Main/BundleValues.h"

QVariantMap bundleInformation() {
    return {
        { QStringLiteral("CFBundleShortVersionString"), QString::fromUtf8(bundleVersion) },
        { QStringLiteral("SUFeedURL"), QString::fromUtf8(updateFeedURL) },
        { QStringLiteral("SUPublicEDKey"), QString::fromUtf8(updatePublicKey) },
    };
}
