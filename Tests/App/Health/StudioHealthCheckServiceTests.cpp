#include "TolmiApp/Health/StudioHealthCheckService.h"

#include "Support/AwaitTask.h"
#include "Support/FakeAccessibilityRight.h"
#include "Support/FakeFileManager.h"
#include "Support/FakeHttpClient.h"
#include "Support/FakeLocalListeners.h"
#include "Support/FakeMicrophonePermission.h"
#include "Support/Print.h"
#include "Support/SettingsStoreFixture.h"

#include <gtest/gtest.h>

using L10n::Key;
using Status = HealthCheckStatus;

namespace {
const QString microphone = QStringLiteral("microphone");
const QString accessibility = QStringLiteral("accessibility");
const QString binary = QStringLiteral("binary");
const QString model = QStringLiteral("model");
const QString ollama = QStringLiteral("ollama");
const auto languages = allCases<AppLanguage>();

struct ProbeCall {
    QUrl endpoint;
    double timeout;

    friend bool operator==(const ProbeCall &, const ProbeCall &) = default;
};

/// A service whose functions return the values of the members and record their order of calls.
class StudioHealthCheckServiceTest : public testing::Test {
protected:
    StudioHealthCheckService service(PlatformTexts texts = PlatformTexts::forMacOS()) {
        StudioHealthCheckService::Functions functions;
        functions.microphoneStatus = [this] {
            calls.append(microphone);
            return microphoneStatus;
        };
        functions.accessibilityGranted = [this] {
            calls.append(accessibility);
            return isAccessible;
        };
        functions.isExecutable = [this](const QString &path) {
            calls.append(QStringLiteral("isExecutable ") + path);
            return isExecutable;
        };
        functions.fileExists = [this](const QString &path) {
            calls.append(QStringLiteral("fileExists ") + path);
            return isThere;
        };
        functions.ollamaProbe = [this](QUrl endpoint, double timeout) {
            calls.append(ollama);
            probes.push_back({ endpoint, timeout });
            return answer(isReachable);
        };
        functions.isUntrustedAt = [this](const QUrl &) { return isListenerUntrusted; };
        return StudioHealthCheckService(std::move(functions), std::move(texts));
    }
    static Task<bool> answer(bool isReachable) { co_return isReachable; }

    QList<HealthCheckItem> run() { return run(service()); }
    QList<HealthCheckItem> run(const StudioHealthCheckService &checks) {
        return awaitTask(checks.runChecks(input), [] { FAIL() << "the checks wait for nobody"; });
    }

    HealthCheckItem item(
        const QString &id, Key title, Status status, Key message, const QString &hint) const {
        return { id, L10n::text(title, input.uiLanguage), status, L10n::text(message, input.uiLanguage),
            hint };
    }
    HealthCheckItem item(const QString &id, Key title, Status status, Key message, Key hint) const {
        return item(id, title, status, message, L10n::text(hint, input.uiLanguage));
    }

    StudioHealthInput input { .whisperBinaryPath = QStringLiteral("/opt/whisper-cli"),
        .modelPath = QStringLiteral("/models/large.bin"),
        .refinementEnabled = true,
        .ollamaEndpoint = QStringLiteral("http://localhost:11434"),
        .ollamaTimeout = 10,
        .uiLanguage = AppLanguage::English };
    AuthorizationStatus microphoneStatus = AuthorizationStatus::Authorized;
    bool isAccessible = true;
    bool isExecutable = true;
    bool isThere = true;
    bool isReachable = true;
    bool isListenerUntrusted = false;
    QStringList calls;
    std::vector<ProbeCall> probes;
};

class InBothLanguages : public StudioHealthCheckServiceTest, public testing::WithParamInterface<AppLanguage> {
protected:
    InBothLanguages() { input.uiLanguage = GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(StudioHealthCheckService, InBothLanguages, testing::ValuesIn(languages),
    [](const auto &info) { return rawValue(info.param).toStdString(); });

struct EndpointCase {
    const char *name;
    const char *endpoint;
    /// The probed URL; null for an invalid address.
    const char *asked;
};

class Endpoints : public StudioHealthCheckServiceTest, public testing::WithParamInterface<EndpointCase> { };

INSTANTIATE_TEST_SUITE_P(StudioHealthCheckService, Endpoints,
    testing::Values(EndpointCase { "Http", "http://localhost:11434", "http://localhost:11434" },
        EndpointCase { "Https", "https://ollama.example/base/", "https://ollama.example/base/" },
        EndpointCase { "CapitalScheme", "HTTP://localhost:11434", "http://localhost:11434" },
        EndpointCase { "MixedScheme", "hTtPs://host", "https://host" },
        EndpointCase { "IPv6", "http://[::1]:11434", "http://[::1]:11434" },
        EndpointCase { "Query", "http://host/a?key=b", "http://host/a?key=b" },
        EndpointCase { "BlankInThePath", "http://host/a b", "http://host/a%20b" },
        EndpointCase { "Empty", "", nullptr }, EndpointCase { "OtherScheme", "ftp://host", nullptr },
        EndpointCase { "File", "file:///tmp", nullptr }, EndpointCase { "NoScheme", "localhost", nullptr },
        EndpointCase { "HostAsScheme", "localhost:11434", nullptr },
        EndpointCase { "NoHost", "http://", nullptr },
        EndpointCase { "NoHostButAPath", "http:///api", nullptr },
        EndpointCase { "NoSlashes", "http:host", nullptr },
        EndpointCase { "BlankInFront", " http://host", nullptr },
        EndpointCase { "BlankBehind", "http://host:11434 ", nullptr },
        EndpointCase { "BlankInTheHost", "http://my host", nullptr },
        EndpointCase { "BadPort", "http://host:port", nullptr },
        EndpointCase { "BadIPv6", "http://[::1", nullptr }),
    [](const auto &info) { return info.param.name; });

struct TimeoutCase {
    double configured;
    double asked;
};

class Timeouts : public StudioHealthCheckServiceTest, public testing::WithParamInterface<TimeoutCase> { };

INSTANTIATE_TEST_SUITE_P(StudioHealthCheckService, Timeouts,
    testing::Values(TimeoutCase { 0.2, 1 }, TimeoutCase { 0, 1 }, TimeoutCase { -5, 1 }, TimeoutCase { 1, 1 },
        TimeoutCase { 1.5, 1.5 }, TimeoutCase { 30, 30 }));
} // namespace

TEST_P(InBothLanguages, AllIsWell) {
    EXPECT_EQ(run(),
        (QList<HealthCheckItem> { item(microphone, Key::healthMicrophone, Status::Ok, Key::healthGranted,
                                      Key::healthReadyRecording),
            item(accessibility, Key::healthAccessibility, Status::Ok, Key::healthGranted,
                Key::healthAccessibilityGrantedHint),
            item(binary, Key::healthBinary, Status::Ok, Key::healthBinaryFound, input.whisperBinaryPath),
            item(model, Key::healthModel, Status::Ok, Key::healthModelFound, input.modelPath),
            item(ollama, Key::healthOllama, Status::Ok, Key::healthReachable, input.ollamaEndpoint) }));
}

TEST_P(InBothLanguages, AllIsMissing) {
    microphoneStatus = AuthorizationStatus::Denied;
    isAccessible = isExecutable = isThere = isReachable = false;
    EXPECT_EQ(run(),
        (QList<HealthCheckItem> { item(microphone, Key::healthMicrophone, Status::Error,
                                      Key::healthAccessDenied, Key::healthEnableMicHint),
            item(accessibility, Key::healthAccessibility, Status::Error, Key::healthAccessibilityMissing,
                Key::healthGrantAccessibilityHint),
            item(binary, Key::healthBinary, Status::Error, Key::healthBinaryMissing,
                Key::healthBinaryMissingHint),
            item(
                model, Key::healthModel, Status::Error, Key::healthModelMissing, Key::healthModelMissingHint),
            item(ollama, Key::healthOllama, Status::Error, Key::healthUnreachable,
                Key::healthUnreachableHint) }));
}

TEST_P(InBothLanguages, TheListBeforeTheOutcomeHasTheSameRows) {
    const QList<HealthCheckItem> known = run();
    const QList<HealthCheckItem> checking = HealthCheckItem::checkingList(GetParam());
    ASSERT_EQ(checking.size(), 5);
    for (qsizetype index = 0; index < checking.size(); ++index) {
        const QString message = L10n::text(Key::healthChecking, GetParam());
        EXPECT_EQ(checking[index],
            (HealthCheckItem { known[index].id, known[index].title, Status::Checking, message, {} }));
    }
}

TEST_P(InBothLanguages, OnLinuxTheHintsNameTheLocalWay) {
    const PlatformTexts texts = PlatformTexts::forLinux();
    microphoneStatus = AuthorizationStatus::Denied;
    isAccessible = false;
    const QList<HealthCheckItem> refused = run(service(texts));
    EXPECT_EQ(refused[0].hint, texts.text(Key::healthEnableMicHint, GetParam()));
    EXPECT_EQ(refused[1].hint, texts.text(Key::healthGrantAccessibilityHint, GetParam()));
    microphoneStatus = AuthorizationStatus(99);
    EXPECT_EQ(run(service(texts))[0].hint, texts.text(Key::healthRecheckPermissions, GetParam()));
}

TEST_P(InBothLanguages, AnUndeterminedMicrophoneIsAWarning) {
    microphoneStatus = AuthorizationStatus::NotDetermined;
    EXPECT_EQ(run()[0],
        item(microphone, Key::healthMicrophone, Status::Warning, Key::healthPermissionNotRequested,
            Key::healthStartToPrompt));
}

TEST_P(InBothLanguages, AnUnknownStatusOfTheMicrophoneIsAWarning) {
    microphoneStatus = AuthorizationStatus(99);
    EXPECT_EQ(run()[0],
        item(microphone, Key::healthMicrophone, Status::Warning, Key::healthUnknownStatus,
            Key::healthRecheckPermissions));
}

TEST_P(InBothLanguages, WithoutRefinementNothingIsProbedEvenWithABadAddress) {
    input.refinementEnabled = false;
    input.ollamaEndpoint = QStringLiteral("nonsense");
    EXPECT_EQ(run()[4],
        item(ollama, Key::healthOllama, Status::Warning, Key::healthOllamaDisabled,
            Key::healthOllamaDisabledHint));
    EXPECT_TRUE(probes.empty());
}

TEST_F(StudioHealthCheckServiceTest, ARestrictedMicrophoneCountsAsDenied) {
    microphoneStatus = AuthorizationStatus::Denied;
    const HealthCheckItem denied = run()[0];
    microphoneStatus = AuthorizationStatus::Restricted;
    EXPECT_EQ(run()[0], denied);
}

TEST_F(StudioHealthCheckServiceTest, ChecksOneAfterTheOther) {
    run();
    EXPECT_EQ(calls,
        QStringList({ microphone, accessibility, "isExecutable /opt/whisper-cli",
            "fileExists /models/large.bin", ollama }));
}

TEST_F(StudioHealthCheckServiceTest, LocalItemsAreTheSameWithoutTheProbe) {
    const QList<HealthCheckItem> all = run();
    probes.clear();
    EXPECT_EQ(service().localItems(input), all.first(4));
    EXPECT_TRUE(probes.empty());
}

TEST_F(StudioHealthCheckServiceTest, AnEmptyPathIsMissing) {
    FakeFileManager files;
    FakeMicrophonePermission permission;
    FakeAccessibilityRight right;
    FakeHttpClient http;
    FakeLocalListeners listeners;
    const StudioHealthCheckService::Platform platform { permission, right, files, http, listeners };
    input.refinementEnabled = false;
    input.whisperBinaryPath.clear();
    input.modelPath.clear();
    const auto items = run(StudioHealthCheckService(platform, PlatformTexts::forLinux()));
    EXPECT_EQ(items[2].status, Status::Error);
    EXPECT_EQ(items[3].status, Status::Error);
}

TEST_P(Endpoints, AreProbedWhenValid) {
    input.ollamaEndpoint = QString::fromUtf8(GetParam().endpoint);
    const HealthCheckItem found = run()[4];
    if (GetParam().asked) {
        const QString asked = QString::fromUtf8(GetParam().asked);
        EXPECT_EQ(found, item(ollama, Key::healthOllama, Status::Ok, Key::healthReachable, asked));
        ASSERT_EQ(probes.size(), 1u);
        EXPECT_EQ(probes[0], (ProbeCall { QUrl(asked), 10 }));
    } else {
        EXPECT_EQ(found,
            item(ollama, Key::healthOllama, Status::Error, Key::healthInvalidEndpoint,
                Key::healthInvalidEndpointHint));
        EXPECT_TRUE(probes.empty());
    }
}

TEST_P(Timeouts, AreAtLeastASecond) {
    input.ollamaTimeout = GetParam().configured;
    run();
    ASSERT_EQ(probes.size(), 1u);
    EXPECT_EQ(probes[0].timeout, GetParam().asked);
}

TEST(StudioHealthInput, IsReadFromTheSettings) {
    SettingsStoreFixture settings;
    settings.store.setWhisperBinaryPath(QStringLiteral("/bin/w"));
    settings.store.setModelPath(QStringLiteral("/m"));
    settings.store.setRefinementEnabled(false);
    settings.store.setOllamaEndpoint(QStringLiteral(" http://x "));
    settings.store.setOllamaTimeout(0.25);
    settings.store.setUiLanguage(AppLanguage::English);
    EXPECT_EQ(StudioHealthInput::ofSettings(settings.store),
        (StudioHealthInput { QStringLiteral("/bin/w"), QStringLiteral("/m"), false,
            QStringLiteral(" http://x "), 0.25, AppLanguage::English }));
}

TEST_F(StudioHealthCheckServiceTest, TheDefaultFunctionsQueryThePlatform) {
    FakeFileManager files;
    FakeMicrophonePermission permission;
    FakeAccessibilityRight right;
    FakeHttpClient http;
    FakeLocalListeners listeners;
    listeners.replies = { Listener::Trusted, Listener::Nobody, Listener::Untrusted };
    const StudioHealthCheckService checks(
        StudioHealthCheckService::Platform { permission, right, files, http, listeners },
        PlatformTexts::forLinux());
    files.files[input.whisperBinaryPath] = "not executable";
    files.files[input.modelPath] = "model";
    permission.present = AuthorizationStatus::Denied;
    right.availability = Availability::unavailable(QStringLiteral("no"));
    http.replies = { HttpResponse { 200, QByteArray("{}") } };
    std::vector<Status> found;
    for (const HealthCheckItem &item : run(checks))
        found.push_back(item.status);
    EXPECT_EQ(found, (std::vector { Status::Error, Status::Error, Status::Error, Status::Ok, Status::Ok }));
    files.addExecutable(input.whisperBinaryPath);
    permission.present = AuthorizationStatus::Authorized;
    right.availability = Availability::available();
    http.replies = { HttpError(HttpError::Code::CannotConnect) };
    found.clear();
    for (const HealthCheckItem &item : run(checks))
        found.push_back(item.status);
    EXPECT_EQ(found, (std::vector { Status::Ok, Status::Ok, Status::Ok, Status::Ok, Status::Error }));
    EXPECT_EQ(run(checks)[4].hint,
        PlatformTexts::forLinux().text(L10n::Phrase::healthStrangerHint, input.uiLanguage));
    EXPECT_EQ(listeners.asked.size(), 3U);
}

TEST_P(InBothLanguages, AnotherUsersServerIsUnreachableAndTheHintSaysWhy) {
    isListenerUntrusted = true;
    EXPECT_EQ(run()[4],
        item(ollama, Key::healthOllama, Status::Error, Key::healthUnreachable,
            L10n::text(L10n::Phrase::healthStrangerHint, input.uiLanguage)));
    EXPECT_TRUE(probes.empty());
}

namespace {
struct AnswerCase {
    const char *name;
    std::variant<HttpResponse, HttpError> reply;
    bool isReachable;
};

class OllamaProbe : public testing::TestWithParam<AnswerCase> { };

INSTANTIATE_TEST_SUITE_P(StudioHealthCheckService, OllamaProbe,
    testing::Values(AnswerCase { "Status200", HttpResponse { 200, QByteArray("{}") }, true },
        AnswerCase { "Status204", HttpResponse { 204, QByteArray() }, true },
        AnswerCase { "Status299", HttpResponse { 299, QByteArray("?") }, true },
        AnswerCase { "Status199", HttpResponse { 199, QByteArray() }, false },
        AnswerCase { "Status300", HttpResponse { 300, QByteArray() }, false },
        AnswerCase { "Status404", HttpResponse { 404, QByteArray("{}") }, false },
        AnswerCase { "Status500", HttpResponse { 500, QByteArray("{}") }, false },
        AnswerCase { "BodyTooLong", HttpResponse { 200, std::nullopt }, true },
        AnswerCase { "NotHttp", HttpResponse { std::nullopt, QByteArray("x") }, false },
        AnswerCase { "TimedOut", HttpError::Code::TimedOut, false },
        AnswerCase { "Refused", HttpError::Code::CannotConnect, false },
        AnswerCase { "Unknown", HttpError::Code::Unknown, false }),
    [](const auto &info) { return info.param.name; });
} // namespace

TEST_P(OllamaProbe, DependsOnTheStatus) {
    FakeHttpClient http;
    http.replies = { GetParam().reply };
    const bool isReachable = awaitTask(
        StudioHealthCheckService::defaultOllamaProbe(http, QUrl(QStringLiteral("http://host:1/base?a=b")), 7),
        [] { FAIL() << "the probe waits for nobody"; });
    EXPECT_EQ(isReachable, GetParam().isReachable);
    HttpRequest expected;
    expected.url = QUrl(QStringLiteral("http://host:1/base/api/tags?a=b"));
    expected.idleTimeout = 7;
    expected.totalTimeout = 9;
    ASSERT_EQ(http.requests.size(), 1u);
    EXPECT_EQ(http.requests[0], expected);
    EXPECT_EQ(expected.method, "GET");
}
