#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/Desktop/SodiumSignatureVerifier.h"
#include "Support/SigningKey.h"
#include "TolmiApp/Updates/UpdateDownload.h"

/// A correctly signed published update, of which a test may falsify parts.
struct PublishedUpdate {
    SigningKey key;
    QByteArray content = "the new program";
    QByteArray signature = key.sign(content);
    QByteArray version = "2.0";
    QByteArray url = "files/tolmi-2.0.tar.xz";
    QByteArray length = QByteArray::number(content.size());
    /// By default computed for the version and signature above.
    std::optional<QByteArray> versionSignature;

    /// The feed that announces it.
    QByteArray feed() const;
    /// The update source of a program of version 1.0.
    UpdateSource source(const QUrl &feedURL, const FileURL &downloadsDirectory) const;
};
