#pragma once

#include "Foundation/Error.h"
#include "Foundation/Task.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

/// A request to a server.
struct HttpRequest {
    /// Bytes.
    static constexpr qint64 usualMaximumBodySize = 16LL * 1024 * 1024;

    QByteArray method = "GET";
    QUrl url;
    /// Name and value of each header.
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Seconds without data until the request is aborted.
    double idleTimeout = 60;
    /// Seconds until the request is aborted even if data still arrives.
    double totalTimeout = 62;
    /// Bytes; a longer response body is discarded.
    qint64 maximumBodySize = usualMaximumBodySize;

    friend bool operator==(const HttpRequest &, const HttpRequest &) = default;
};

/// A complete response.
struct HttpResponse {
    /// Absent if the response did not come by HTTP.
    std::optional<int> statusCode;
    /// Absent if it was discarded.
    std::optional<QByteArray> body;

    friend bool operator==(const HttpResponse &, const HttpResponse &) = default;
};

/// Why there is no complete response. A status code is never an error. The messages are English in every
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

/// Receives the number of body bytes received so far; returns whether to continue.
using HttpProgress = std::function<bool(qint64 receivedSize)>;

/// Sends HTTP requests. Main thread only.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Sends the request and returns the complete response. A request with a body is never resent. Redirects
    /// are followed within the same origin (scheme, host and port); any other is the response. Throws
    /// HttpError. The client must outlive the request.
    virtual Task<HttpResponse> send(HttpRequest request) = 0;

    /// Like send(), but calls `progress` for each received piece of the body. When that returns false, the
    /// body is discarded.
    virtual Task<HttpResponse> download(HttpRequest request, HttpProgress progress) = 0;
};

/// The URL with `component` appended to its path after one slash, before any query.
QUrl appendingPathComponent(QUrl url, const QString &component);
