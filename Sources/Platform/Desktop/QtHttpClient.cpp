#include "Platform/Desktop/QtHttpClient.h"

#include <QNetworkProxy>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <array>
#include <coroutine>
#include <memory>
#include <variant>

namespace {
using Outcome = std::variant<HttpResponse, HttpError>;

/// Seconds. The clock's timers cannot represent arbitrary durations; a week is more than enough.
constexpr double longestWait = 7 * 24 * 3600;
/// Seconds; the clock has millisecond resolution.
constexpr double clockResolution = 0.001;
/// Bytes that the reply may buffer before TCP slows the server down.
constexpr qint64 replyBufferSize = qint64(64) * 1024;
constexpr int maximumRedirects = 16;

bool isHttp(const QUrl &url) {
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"http" || url.scheme() == u"https");
}

int portOf(const QUrl &url) {
    return url.port(url.scheme() == u"https" ? 443 : 80);
}

bool haveSameOrigin(const QUrl &left, const QUrl &right) {
    return left.scheme() == right.scheme() && left.host() == right.host() && portOf(left) == portOf(right);
}

/// A body that cannot be read twice. With any other body, Qt resends the request when the connection breaks
/// before the answer.
class ReadOnceDevice final : public QIODevice {
public:
    explicit ReadOnceDevice(QByteArray bytes)
        : m_bytes(std::move(bytes)) {
        open(ReadOnly | Unbuffered);
    }
    qint64 size() const override { return m_bytes.size(); }
    bool reset() override { return false; }

private:
    qint64 readData(char *data, qint64 maximum) override {
        const QByteArrayView left = QByteArrayView(m_bytes).sliced(pos());
        const qint64 count = std::min<qint64>(maximum, left.size());
        std::copy_n(left.data(), count, data);
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

    const QByteArray m_bytes;
};

/// The Authorization header for the user name and password in `url`.
QByteArray basicAuthorization(const QUrl &url) {
    const QString userInfo = url.userName(QUrl::FullyDecoded) + u':' + url.password(QUrl::FullyDecoded);
    return "Basic " + userInfo.toUtf8().toBase64();
}

QNetworkRequest networkRequest(const HttpRequest &request) {
    QNetworkRequest result(QUrl(request.url.adjusted(QUrl::RemoveUserInfo)));
    // Sent without waiting for a challenge, which would require sending the body again.
    if (!request.url.userInfo().isEmpty())
        result.setRawHeader("Authorization", basicAuthorization(request.url));
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(name, value);
    // Without decompression the body cannot grow beyond what was sent.
    result.setRawHeader("Accept-Encoding", "identity");
    // A connection that is never reused cannot have been closed by the server in the meantime.
    result.setRawHeader("Connection", "close");
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return result;
}

std::optional<int> statusCode(const QNetworkReply &reply) {
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    return status.isValid() ? std::optional(status.toInt()) : std::nullopt;
}

/// Whether the reply is a redirect, to any target.
bool isRedirect(const QNetworkReply &reply) {
    constexpr std::array redirects { 301, 302, 303, 307, 308 };
    return std::find(redirects.begin(), redirects.end(), statusCode(reply)) != redirects.end();
}

/// Whether the end of the connection marks the end of the body, and so is not an error.
bool endsWithConnection(const QNetworkReply &reply) {
    return statusCode(reply) && !reply.hasRawHeader("Content-Length")
        && !reply.hasRawHeader("Transfer-Encoding");
}

/// Why the reply is incomplete. Qt also reports errors for HTTP status codes; those are not failures here.
std::optional<HttpError> failure(const QNetworkReply &reply) {
    using Code = HttpError::Code;
    switch (reply.error()) {
    case QNetworkReply::NoError:
        return std::nullopt;
    case QNetworkReply::TimeoutError:
        return Code::TimedOut;
    case QNetworkReply::HostNotFoundError:
        return Code::HostNotFound;
    case QNetworkReply::ConnectionRefusedError:
        return Code::CannotConnect;
    case QNetworkReply::RemoteHostClosedError:
        return Code::ConnectionLost;
    case QNetworkReply::SslHandshakeFailedError:
        return Code::SecureConnectionFailed;
    case QNetworkReply::ProtocolFailure:
        return Code::BadResponse;
    case QNetworkReply::ContentReSendError:
        // For a redirect, Qt only prepared to follow it. Otherwise the connection ended before Qt had read
        // the reply and it tried to resend: unless the body ends with the connection, it is incomplete.
        return isRedirect(reply) || endsWithConnection(reply)
            ? std::nullopt
            : std::optional<HttpError>(Code::ConnectionLost);
    default:
        break;
    }
    const bool concernsTransport = reply.error() <= QNetworkReply::UnknownNetworkError;
    return concernsTransport || !statusCode(reply) ? std::optional<HttpError>(Code::Unknown) : std::nullopt;
}

/// The redirect target of the reply to `url`; absent if there is none.
std::optional<QUrl> redirectTarget(const QNetworkReply &reply, const QUrl &url) {
    if (!isRedirect(reply))
        return std::nullopt;
    const QUrl location = QUrl::fromEncoded(reply.rawHeader("Location"));
    if (location.isEmpty() || !location.isValid())
        return std::nullopt;
    return url.resolved(location);
}

struct ReplyCloser {
    void operator()(QNetworkReply *reply) const {
        reply->disconnect();
        reply->abort();
        reply->deleteLater();
    }
};

/// One request from sending to its outcome, redirects included.
class Exchange final : public QObject, public std::enable_shared_from_this<Exchange> {
public:
    Exchange(QNetworkAccessManager &manager, Clock &clock, HttpRequest request, HttpProgress progress)
        : m_manager(manager)
        , m_clock(clock)
        , m_request(std::move(request))
        , m_progress(std::move(progress))
        , m_idleTimeout(std::min(m_request.idleTimeout, longestWait)) { }

    void start() {
        if (!isHttp(m_request.url)) {
            m_outcome = HttpError(HttpError::Code::UnsupportedURL);
            return;
        }
        m_lastData = m_clock.now();
        callAfter(m_idleTimeout, &Exchange::checkIdle);
        callAfter(std::min(m_request.totalTimeout, longestWait), &Exchange::giveUp);
        send();
    }

    // Only a reference, because g++ 12 copies awaiters byte by byte.
    struct Awaiter {
        Exchange &exchange;
        bool await_ready() const noexcept { return exchange.m_outcome.has_value(); }
        void await_suspend(std::coroutine_handle<> waiting) { exchange.m_waiting = waiting; }
        Outcome await_resume() { return std::move(*exchange.m_outcome); }
    };

private:
    void callAfter(double seconds, void (Exchange::*work)()) {
        m_clock.callAfter(seconds, [weak = weak_from_this(), work] {
            if (const auto self = weak.lock())
                (self.get()->*work)();
        });
    }

    void checkIdle() {
        const double left
            = m_lastData.secondsSinceReferenceDate + m_idleTimeout - m_clock.now().secondsSinceReferenceDate;
        if (left < clockResolution)
            giveUp();
        else
            callAfter(std::min(left, m_idleTimeout), &Exchange::checkIdle);
    }

    void giveUp() { end(HttpError(HttpError::Code::TimedOut)); }

    void send() {
        // Reserved once, so never reallocated; unused pages take no memory.
        m_body.reserve(m_request.maximumBodySize);
        auto body = m_request.body.isEmpty() ? nullptr : std::make_unique<ReadOnceDevice>(m_request.body);
        m_reply.reset(m_manager.sendCustomRequest(networkRequest(m_request), m_request.method, body.get()));
        if (body)
            body.release()->setParent(m_reply.get());
        limitReadAhead();
        connect(m_reply.get(), &QNetworkReply::metaDataChanged, this, [this] { m_lastData = m_clock.now(); });
        connect(m_reply.get(), &QNetworkReply::readyRead, this, [this] { takeData(); });
        connect(m_reply.get(), &QNetworkReply::finished, this, [this] { finish(); });
    }

    void limitReadAhead() {
        m_reply->setReadBufferSize(replyBufferSize);
        // A request with a body is started by the event loop, and Qt's thread hears of no limit set before.
        QMetaObject::invokeMethod(
            m_reply.get(), [reply = m_reply.get()] { reply->setReadBufferSize(replyBufferSize); },
            Qt::QueuedConnection);
    }

    void takeData() {
        m_lastData = m_clock.now();
        const qint64 size = m_body.size() + m_reply->bytesAvailable();
        const bool isWanted = size <= m_request.maximumBodySize && m_progress(size);
        if (isWanted)
            m_body += m_reply->readAll();
        else
            end(HttpResponse { statusCode(*m_reply), std::nullopt });
    }

    void finish() {
        const auto self = shared_from_this();
        takeData();
        if (m_outcome)
            return;
        if (const auto error = failure(*m_reply)) {
            end(*error);
            return;
        }
        const auto target = redirectTarget(*m_reply, m_request.url);
        if (target && haveSameOrigin(*target, m_request.url))
            follow(*target);
        else
            end(HttpResponse { statusCode(*m_reply), std::move(m_body) });
    }

    void follow(const QUrl &target) {
        if (++m_redirectCount > maximumRedirects) {
            end(HttpError(HttpError::Code::TooManyRedirects));
            return;
        }
        const int status = *statusCode(*m_reply);
        m_request.url = target;
        m_body.clear();
        if (status == 303 || (m_request.method == "POST" && status < 303))
            turnIntoGet();
        send();
    }

    void turnIntoGet() {
        m_request.method = "GET";
        m_request.body.clear();
        std::erase_if(m_request.headers, [](const auto &header) {
            return header.first.compare("Content-Type", Qt::CaseInsensitive) == 0;
        });
    }

    void end(Outcome outcome) {
        if (m_outcome)
            return;
        m_outcome = std::move(outcome);
        m_reply.reset();
        if (m_waiting)
            m_waiting.resume();
    }

    QNetworkAccessManager &m_manager;
    Clock &m_clock;
    HttpRequest m_request;
    const HttpProgress m_progress;
    const double m_idleTimeout;
    Date m_lastData {};
    int m_redirectCount = 0;
    QByteArray m_body;
    std::unique_ptr<QNetworkReply, ReplyCloser> m_reply;
    std::optional<Outcome> m_outcome;
    std::coroutine_handle<> m_waiting;
};

struct ExchangeRequest {
    Exchange &exchange;
    Exchange::Awaiter operator co_await() const { return { exchange }; }
};
} // namespace

QtHttpClient::QtHttpClient(Clock &clock)
    : m_clock(clock) {
    // The data is private, so proxies set in the environment are ignored.
    m_manager.setProxy(QNetworkProxy::NoProxy);
}

Task<HttpResponse> QtHttpClient::send(HttpRequest request) {
    return download(std::move(request), [](qint64) { return true; });
}

Task<HttpResponse> QtHttpClient::download(HttpRequest request, HttpProgress progress) {
    const auto exchange
        = std::make_shared<Exchange>(m_manager, m_clock, std::move(request), std::move(progress));
    exchange->start();
    Outcome outcome = co_await ExchangeRequest { *exchange };
    if (const auto *error = std::get_if<HttpError>(&outcome))
        throw *error;
    co_return std::get<HttpResponse>(std::move(outcome));
}
