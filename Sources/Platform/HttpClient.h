#pragma once

#include "Foundation/Error.h"
#include "Foundation/Task.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// What is asked of a server.
struct HttpRequest {
    /// Bytes.
    static constexpr qint64 usualMaximumBodySize = 16LL * 1024 * 1024;

    QByteArray method = "GET";
    QUrl url;
    /// Name and value of each header.
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Seconds without any data until the request is given up.
    double idleTimeout = 60;
    /// Seconds until the request is given up although data still comes.
    double totalTimeout = 62;
    /// Bytes; a longer body of the answer is given up.
    qint64 maximumBodySize = usualMaximumBodySize;

    friend bool operator==(const HttpRequest &, const HttpRequest &) = default;
};

/// A complete answer.
struct HttpResponse {
    /// Absent when the answer did not come by HTTP.
    std::optional<int> statusCode;
    /// Absent when it was given up.
    std::optional<QByteArray> body;

    friend bool operator==(const HttpResponse &, const HttpResponse &) = default;
};

/// Why there is no complete answer. A status code is never an error. The texts are English whatever the
/// interface language.
class HttpError final : public LocalizedError {
public:
    enum class Code {
        TimedOut,
        UnsupportedURL,
        HostNotFound,
        CannotConnect,
        ConnectionLost,
        SecureConnectionFailed,
        UntrustedServer,
        TooManyRedirects,
        BadResponse,
        Unknown,
    };

    HttpError(Code code)
        : m_code(code) { }

    Code code() const { return m_code; }
    QString errorDescription() const override;

    friend bool operator==(const HttpError &left, const HttpError &right) {
        return left.m_code == right.m_code;
    }

private:
    Code m_code;
};

/// Hears how many bytes of a body have come so far, and tells whether the rest is still wanted.
using HttpProgress = std::function<bool(qint64 receivedSize)>;

/// Asks servers over HTTP. Main thread only.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Sends the request, one with a body never twice, and gives the answer when all of it is there. A
    /// redirect is followed within its origin (scheme, host and port); any other counts as the answer. Throws
    /// HttpError. The client must outlive the wait.
    virtual Task<HttpResponse> send(HttpRequest request) = 0;

    /// As send(), and `progress` hears of each piece of the body while the request waits. When it wants no
    /// more, the body is given up.
    virtual Task<HttpResponse> download(HttpRequest request, HttpProgress progress) = 0;
};

/// The URL with `component` added to its path behind one slash; a query stays where it is.
QUrl appendingPathComponent(QUrl url, const QString &component);
