#include "Platform/HttpClient.h"

QString HttpError::errorDescription() const {
    switch (m_code) {
    case Code::TimedOut:
        return QStringLiteral("The server took too long to answer.");
    case Code::UnsupportedURL:
        return QStringLiteral("The address is not an HTTP address.");
    case Code::HostNotFound:
        return QStringLiteral("The server's name is not known.");
    case Code::CannotConnect:
        return QStringLiteral("The server does not accept connections.");
    case Code::ConnectionLost:
        return QStringLiteral("The connection to the server was lost.");
    case Code::SecureConnectionFailed:
        return QStringLiteral("No secure connection to the server could be made.");
    case Code::UntrustedServer:
        return QStringLiteral("Another user's program answers at this address.");
    case Code::TooManyRedirects:
        return QStringLiteral("The server redirects too often.");
    case Code::BadResponse:
        return QStringLiteral("The server's answer is not valid HTTP.");
    case Code::Unknown:
        break;
    }
    return QStringLiteral("The request failed.");
}

QUrl appendingPathComponent(QUrl url, const QString &component) {
    QString path = url.path(QUrl::FullyEncoded);
    if (!path.endsWith(u'/'))
        path += u'/';
    url.setPath(path + component, QUrl::TolerantMode);
    return url;
}
