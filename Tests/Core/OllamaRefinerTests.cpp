#include "Support/AwaitTask.h"
#include "Support/FakeHttpClient.h"
#include "TolmiCore/OllamaRefiner.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {
using E = TextRefinerError;

const HttpResponse plainAnswer { 200, QByteArray(R"({"response":"Hello."})") };
const TextRefinerError unparsable(E::RefinementFailed { QStringLiteral("Could not parse Ollama response") });

/// The result of refining "the text" with this reply: a text or an error.
std::variant<QString, TextRefinerError> refine(
    const std::variant<HttpResponse, HttpError> &reply, const QString &text = QStringLiteral("the text")) {
    FakeHttpClient client;
    client.replies = { reply };
    OllamaRefiner refiner(client);
    try {
        return awaitTask(
            refiner.refine(text), [] { FAIL() << "the refiner waits for nothing but the reply"; });
    } catch (const TextRefinerError &error) {
        return error;
    }
}

/// The refiner's request with this configuration.
HttpRequest requestOf(
    const OllamaConfiguration &configuration, const QString &text = QStringLiteral("text")) {
    FakeHttpClient client;
    client.replies = { plainAnswer };
    OllamaRefiner refiner(client, configuration);
    awaitTask(refiner.refine(text), [] {});
    return client.requests.at(0);
}

QJsonObject bodyOf(const HttpRequest &request) {
    return QJsonDocument::fromJson(request.body).object();
}

TEST(OllamaRefinerRequest, IsAPostWithFourFields) {
    const HttpRequest request = requestOf({}, QStringLiteral("ce \"faci\"?\n\t\u0219i \U0001F600 \\ gata "));
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, QUrl(QStringLiteral("http://localhost:11434/api/generate")));
    const std::vector<std::pair<QByteArray, QByteArray>> headers { { "Content-Type", "application/json" } };
    EXPECT_EQ(request.headers, headers);
    const QJsonObject expected {
        { QStringLiteral("model"), QStringLiteral("llama3.2:3b") },
        { QStringLiteral("system"), OllamaConfiguration::defaultSystemPrompt },
        { QStringLiteral("prompt"), QStringLiteral("ce \"faci\"?\n\t\u0219i \U0001F600 \\ gata ") },
        { QStringLiteral("stream"), false },
    };
    EXPECT_EQ(bodyOf(request), expected);
}

TEST(OllamaRefinerRequest, IncludesAnEmptyPrompt) {
    OllamaConfiguration configuration;
    configuration.model.clear();
    configuration.systemPrompt.clear();
    const QJsonObject body = bodyOf(requestOf(configuration, QString()));
    EXPECT_EQ(body.size(), 4);
    for (const char *name : { "model", "system", "prompt" })
        EXPECT_EQ(body.value(QLatin1String(name)), QJsonValue(QStringLiteral(""))) << name;
}

struct EndpointCase {
    const char *endpoint;
    const char *expected;
};

class OllamaRefinerEndpoint : public testing::TestWithParam<EndpointCase> { };

INSTANTIATE_TEST_SUITE_P(Endpoints, OllamaRefinerEndpoint,
    testing::Values(EndpointCase { "http://localhost:11434", "http://localhost:11434/api/generate" },
        EndpointCase { "http://localhost:11434/", "http://localhost:11434/api/generate" },
        EndpointCase { "https://host/ollama", "https://host/ollama/api/generate" },
        EndpointCase { "https://host/ollama/", "https://host/ollama/api/generate" },
        EndpointCase { "http://host:1/a/b?key=c", "http://host:1/a/b/api/generate?key=c" }));

TEST_P(OllamaRefinerEndpoint, GetsThePathAppended) {
    OllamaConfiguration configuration;
    configuration.endpoint = QUrl(QString::fromUtf8(GetParam().endpoint));
    EXPECT_EQ(requestOf(configuration).url.toEncoded(), GetParam().expected);
}

struct TimeoutCase {
    double timeout;
    double expectedIdle;
};

class OllamaRefinerTimeout : public testing::TestWithParam<TimeoutCase> { };

INSTANTIATE_TEST_SUITE_P(Timeouts, OllamaRefinerTimeout,
    testing::Values(TimeoutCase { 10, 10 }, TimeoutCase { 0.25, 0.25 }, TimeoutCase { 600, 600 },
        TimeoutCase { 0, 60 }, TimeoutCase { -1, 60 }, TimeoutCase { std::nan(""), 60 },
        TimeoutCase { -std::numeric_limits<double>::infinity(), 60 }));

TEST_P(OllamaRefinerTimeout, IsTwoSecondsLongerInTotalThanWhenIdle) {
    OllamaConfiguration configuration;
    configuration.timeout = GetParam().timeout;
    const HttpRequest request = requestOf(configuration);
    EXPECT_EQ(request.idleTimeout, GetParam().expectedIdle);
    EXPECT_EQ(request.totalTimeout, GetParam().expectedIdle + 2);
}

struct AnswerCase {
    const char *name;
    QByteArray body;
    /// Absent if the answer cannot be parsed.
    std::optional<QString> expected;
};

class OllamaRefinerAnswer : public testing::TestWithParam<AnswerCase> { };

QByteArray nested(int depth) {
    return R"({"response":"Hello.","more":)" + QByteArray(depth, '[') + QByteArray(depth, ']') + '}';
}

INSTANTIATE_TEST_SUITE_P(Bodies, OllamaRefinerAnswer,
    testing::Values(AnswerCase { "Plain", R"({"response":"Hello."})", QStringLiteral("Hello.") },
        AnswerCase { "Trimmed", "{\"response\":\" \\n\xc2\xa0 Hello. \\t\"}", QStringLiteral("Hello.") },
        AnswerCase { "LikeTheService",
            R"({"model":"llama3.2:3b","created_at":"2026-01-01T00:00:00Z","response":"P\u0103i, da.",)"
            R"("done":true,"done_reason":"stop","context":[1,2,3],"total_duration":5043500667,"x":{"y":null}})",
            QStringLiteral("P\u0103i, da.") },
        AnswerCase {
            "Utf8", "{\"response\":\"\xc8\x99i \xf0\x9f\x98\x80\"}", QStringLiteral("\u0219i \U0001F600") },
        AnswerCase { "SurrogatePair", R"({"response":"\ud83d\ude00"})", QStringLiteral("\U0001F600") },
        AnswerCase { "Blank", R"({"response":" \n "})", QStringLiteral("the text") },
        AnswerCase { "Empty", R"({"response":""})", QStringLiteral("the text") },
        AnswerCase { "ByteOrderMark", "\xef\xbb\xbf{\"response\":\"Hello.\"}", QStringLiteral("Hello.") },
        AnswerCase { "WhiteSpaceAround", "\r\n\t {\"response\" : \"Hello.\"} \n", QStringLiteral("Hello.") },
        AnswerCase { "LastOfTwo", R"({"response":"a","response":"b"})", QStringLiteral("b") },
        AnswerCase { "EscapedKey", R"({"\u0072esponse":"Hello."})", QStringLiteral("Hello.") },
        AnswerCase { "ZeroCharacter", R"({"response":"a\u0000b"})", QStringLiteral(u"a\0b") },
        AnswerCase { "DeepEnough", nested(511), QStringLiteral("Hello.") },
        AnswerCase { "TooDeep", nested(512), std::nullopt },
        AnswerCase { "FarTooDeep", QByteArray(1'000'000, '['), std::nullopt },
        AnswerCase { "LastOfTwoIsANumber", R"({"response":"a","response":5})", std::nullopt },
        AnswerCase { "Number", R"({"response":5})", std::nullopt },
        AnswerCase { "Null", R"({"response":null})", std::nullopt },
        AnswerCase { "Boolean", R"({"response":true})", std::nullopt },
        AnswerCase { "ArrayInside", R"({"response":["Hello."]})", std::nullopt },
        AnswerCase { "ObjectInside", R"({"response":{"response":"Hello."}})", std::nullopt },
        AnswerCase { "NestedOnly", R"({"more":{"response":"Hello."}})", std::nullopt },
        AnswerCase { "ValueNotKey", R"({"a":"response","b":"Hello."})", std::nullopt },
        AnswerCase { "OtherCase", R"({"Response":"Hello."})", std::nullopt },
        AnswerCase { "NoResponse", "{}", std::nullopt },
        AnswerCase { "Array", R"([{"response":"Hello."}])", std::nullopt },
        AnswerCase { "String", R"("response")", std::nullopt }, AnswerCase { "Nothing", "", std::nullopt },
        AnswerCase { "Blanks", "  \n", std::nullopt },
        AnswerCase { "NotJson", "<html>502</html>", std::nullopt },
        AnswerCase { "Half", R"({"response":"Hel)", std::nullopt },
        AnswerCase { "Unclosed", R"({"response":"Hello.")", std::nullopt },
        AnswerCase { "MoreBehind", R"({"response":"Hello."}{})", std::nullopt },
        AnswerCase { "TrailingComma", R"({"response":"Hello.",})", std::nullopt },
        AnswerCase { "Comment", R"({"response":"Hello."/**/})", std::nullopt },
        AnswerCase { "SingleQuotes", R"({'response':'Hello.'})", std::nullopt },
        AnswerCase { "ZeroByteBehind", QByteArray("{\"response\":\"Hello.\"}\0junk", 26), std::nullopt },
        AnswerCase { "RawLineEnd", "{\"response\":\"a\nb\"}", std::nullopt },
        AnswerCase { "NotUtf8", "{\"response\":\"\xff\"}", std::nullopt },
        AnswerCase { "NotUtf8Elsewhere", "{\"response\":\"a\",\"b\":\"\xc3\"}", std::nullopt },
        AnswerCase { "LoneSurrogate", R"({"response":"\ud83d"})", std::nullopt },
        AnswerCase { "HugeNumber", R"({"response":"a","b":1e999})", std::nullopt },
        AnswerCase { "NotANumber", R"({"response":"a","b":NaN})", std::nullopt },
        AnswerCase { "SeveralLines", "{\"response\":\"a\"}\n{\"response\":\"b\"}\n", std::nullopt }),
    [](const auto &info) { return info.param.name; });

TEST_P(OllamaRefinerAnswer, IsTheResponseField) {
    const auto result = refine(HttpResponse { 200, GetParam().body });
    if (GetParam().expected)
        EXPECT_EQ(result, (std::variant<QString, TextRefinerError>(*GetParam().expected)));
    else
        EXPECT_EQ(result, (std::variant<QString, TextRefinerError>(unparsable)));
}

TEST(OllamaRefiner, ReturnsTheInputUnchangedForABlankAnswer) {
    const QString text = QStringLiteral("  um, \n");
    EXPECT_EQ(std::get<QString>(refine(HttpResponse { 200, R"({"response":" "})" }, text)), text);
}

TEST(OllamaRefiner, CannotParseADiscardedBody) {
    EXPECT_EQ(std::get<TextRefinerError>(refine(HttpResponse { 200, std::nullopt })), unparsable);
}

TEST(OllamaRefiner, RejectsAnAnswerFarLongerThanTheText) {
    const auto answerOf = [](qsizetype length) {
        return refine(HttpResponse { 200, "{\"response\":\" " + QByteArray(length, 'a') + " \"}" },
            QStringLiteral("five!"));
    };
    EXPECT_EQ(std::get<QString>(answerOf(2020)), QString(2020, u'a'));
    EXPECT_EQ(std::get<TextRefinerError>(answerOf(2021)),
        TextRefinerError(E::RefinementFailed { QStringLiteral("Ollama's answer is too long") }));
}

TEST(OllamaRefiner, AcceptsOnlyStatus200) {
    for (const int status : { 100, 199, 201, 204, 206, 301, 404, 500 }) {
        const auto error = std::get<TextRefinerError>(refine(HttpResponse { status, plainAnswer.body }));
        EXPECT_EQ(error.errorDescription(),
            QStringLiteral("Text refiner unavailable: Ollama returned status %1").arg(status));
    }
    const auto error = std::get<TextRefinerError>(refine(HttpResponse { std::nullopt, plainAnswer.body }));
    EXPECT_EQ(
        error.errorDescription(), QStringLiteral("Text refiner unavailable: Ollama returned status -1"));
}

TEST(OllamaRefiner, DistinguishesATimeOutFromOtherFailures) {
    const auto timeout = std::get<TextRefinerError>(refine(HttpError(HttpError::Code::TimedOut)));
    EXPECT_EQ(timeout, TextRefinerError(E::Timeout {}));
    EXPECT_EQ(timeout.errorDescription(), QStringLiteral("Text refinement timed out."));
    for (int code = 1; code <= static_cast<int>(HttpError::Code::Unknown); ++code) {
        const HttpError cause(static_cast<HttpError::Code>(code));
        EXPECT_EQ(std::get<TextRefinerError>(refine(cause)),
            TextRefinerError(E::ServiceUnavailable { cause.errorDescription() }));
    }
}

TEST(OllamaRefiner, KeepsNoStateAfterAFailure) {
    FakeHttpClient client;
    client.replies = { HttpError(HttpError::Code::CannotConnect), plainAnswer };
    OllamaRefiner refiner(client);
    EXPECT_THROW(awaitTask(refiner.refine(QStringLiteral("a")), [] {}), TextRefinerError);
    EXPECT_EQ(awaitTask(refiner.refine(QStringLiteral("b")), [] {}), QStringLiteral("Hello."));
    EXPECT_EQ(client.requests.size(), 2u);
}
} // namespace
