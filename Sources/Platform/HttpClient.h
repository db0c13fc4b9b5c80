#pragma once

#include "Platform/Error.h"
#include "Platform/Task.h"

#include <QByteArray>
#include <QUrl>

#include <optional>
#include <utility>
#include <vector>

/// What is asked of a server.
struct HttpRequest {
    QByteArray method = "GET";
    QUrl url;
    /// Name and value of each header.
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Seconds without any data until the request is given up.
    double idleTimeout = 60;
    /// Seconds until the request is given up although data still comes.
    double totalTimeout = 62;

    friend bool operator==(const HttpRequest &, const HttpRequest &) = default;
};

/// A complete answer.
struct HttpResponse {
    /// Absent when the answer did not come by HTTP.
    std::optional<int> statusCode;
    /// Absent when it was longer than the client keeps.
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

/// Asks servers over HTTP. Main thread only.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Sends the request, one with a body never twice, and gives the answer when all of it is there. A
    /// redirect is followed within its origin (scheme, host and port); any other counts as the answer. Throws
    /// HttpError. The client must outlive the wait.
    virtual Task<HttpResponse> send(HttpRequest request) = 0;
};

/// The URL with `component` added to its path behind one slash; a query stays where it is.
QUrl appendingPathComponent(QUrl url, const QString &component);
