#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/Desktop/SodiumSignatureVerifier.h"
#include "Support/SigningKey.h"
#include "TolmiApp/Updates/UpdateDownload.h"

/// A published update, as its makers describe and sign it; a test spoils what it wants to.
struct PublishedUpdate {
    SigningKey key;
    QByteArray content = "the new program";
    QByteArray signature = key.sign(content);
    QByteArray version = "2.0";
    QByteArray url = "files/tolmi-2.0.tar.xz";
    QByteArray length = QByteArray::number(content.size());
    /// Made for the version and the signature above where the test gives none.
    std::optional<QByteArray> versionSignature;

    /// The feed that announces it.
    QByteArray feed() const;
    /// Where a program of version 1.0 looks for it.
    UpdateSource source(const QUrl &feedURL, const FileURL &downloadsDirectory) const;
};
