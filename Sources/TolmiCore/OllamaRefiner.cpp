#include "TolmiCore/OllamaRefiner.h"

#include "Text/Text.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace {
/// Seconds, if the configured time-out is not usable.
constexpr double standardTimeout = 60.0;
/// Seconds that the total time-out exceeds the idle time-out by.
constexpr double answerAllowance = 2.0;
/// A refined text is about as long as the original; short ones are given room for extra words of the model.
constexpr qsizetype longestAnswerFactor = 4;
constexpr qsizetype longestAnswerAllowance = 2000;
/// The service never nests deeper.
constexpr int deepestNesting = 512;

/// Extracts the member "response" of the outermost object from the parser's events. Nothing else is kept, so
/// that a hostile answer uses no memory.
class AnswerHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, AnswerHandler> {
public:
    /// The last one if there are several; absent if it is not a string.
    const std::optional<QString> &response() const { return m_response; }

    bool Default() {
        takeValue();
        return true;
    }
    bool String(const char *characters, rapidjson::SizeType length, bool) {
        if (takeValue())
            m_response = QString::fromUtf8(characters, length);
        return true;
    }
    bool Key(const char *characters, rapidjson::SizeType length, bool) {
        m_isResponseNext = m_depth == 1 && QByteArrayView(characters, length) == "response";
        return true;
    }
    bool StartObject() { return enter(); }
    bool StartArray() { return enter(); }
    bool EndObject(rapidjson::SizeType) { return leave(); }
    bool EndArray(rapidjson::SizeType) { return leave(); }

private:
    /// Whether the value that starts here is the response; if so, forgets an earlier one.
    bool takeValue() {
        const bool isResponse = std::exchange(m_isResponseNext, false);
        if (isResponse)
            m_response.reset();
        return isResponse;
    }
    bool enter() {
        takeValue();
        return ++m_depth <= deepestNesting;
    }
    bool leave() {
        --m_depth;
        return true;
    }

    int m_depth = 0;
    bool m_isResponseNext = false;
    std::optional<QString> m_response;
};

/// The model's answer; absent if `body` is not the expected JSON.
std::optional<QString> parsedAnswer(const QByteArray &body) {
    rapidjson::MemoryStream bytes(body.constData(), body.size());
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    AnswerHandler handler;
    rapidjson::Reader reader;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    const bool isValid = !reader.Parse<flags>(stream, handler).IsError();
    // The parser treats a zero byte as the end of its input.
    const bool isWhole = stream.Tell() == static_cast<size_t>(body.size());
    return isValid && isWhole ? handler.response() : std::nullopt;
}

[[noreturn]] void throwUnavailable(const QString &detail) {
    throw TextRefinerError(TextRefinerError::ServiceUnavailable { detail });
}

[[noreturn]] void throwTransportError(const std::exception &error) {
    const auto *httpError = dynamic_cast<const HttpError *>(&error);
    if (httpError && httpError->code() == HttpError::Code::TimedOut)
        throw TextRefinerError(TextRefinerError::Timeout {});
    throwUnavailable(localizedDescription(error));
}

/// Throws if the response contains no answer.
QString answer(const HttpResponse &response) {
    if (response.statusCode != 200) {
        const int status = response.statusCode.value_or(-1);
        throwUnavailable(QStringLiteral("Ollama returned status ") + QString::number(status));
    }
    const std::optional<QString> parsed = response.body ? parsedAnswer(*response.body) : std::nullopt;
    if (!parsed) {
        const QString detail = QStringLiteral("Could not parse Ollama response");
        throw TextRefinerError(TextRefinerError::RefinementFailed { detail });
    }
    return *parsed;
}
} // namespace

OllamaRefiner::OllamaRefiner(HttpClient &client, OllamaConfiguration config)
    : m_client(client)
    , m_config(std::move(config)) { }

Task<QString> OllamaRefiner::refine(QString text) {
    HttpResponse response;
    try {
        response = co_await m_client.send(request(text));
    } catch (const std::exception &error) {
        throwTransportError(error);
    }
    const QString refined = Text::trimmed(answer(response));
    if (refined.size() > longestAnswerFactor * text.size() + longestAnswerAllowance)
        throw TextRefinerError(
            TextRefinerError::RefinementFailed { QStringLiteral("Ollama's answer is too long") });
    co_return refined.isEmpty() ? text : refined;
}

HttpRequest OllamaRefiner::request(const QString &text) const {
    const QJsonObject body {
        { QStringLiteral("model"), m_config.model },
        { QStringLiteral("system"), m_config.systemPrompt },
        { QStringLiteral("prompt"), text },
        { QStringLiteral("stream"), false },
    };
    HttpRequest request;
    request.method = "POST";
    request.url = appendingPathComponent(m_config.endpoint, QStringLiteral("api/generate"));
    request.headers = { { "Content-Type", "application/json" } };
    request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    request.idleTimeout = m_config.timeout > 0 ? m_config.timeout : standardTimeout;
    request.totalTimeout = request.idleTimeout + answerAllowance;
    return request;
}
