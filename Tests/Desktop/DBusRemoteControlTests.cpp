#include "Platform/Linux/Desktop/DBusRemoteControl.h"

#include "Support/Print.h"
#include "Support/RemoteControlContract.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace {
const QString service = QStringLiteral("org.tolmi.Tolmi");
const QString path = QStringLiteral("/org/tolmi/Tolmi1");
const QString interface = QStringLiteral("org.tolmi.Tolmi1");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString bus = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

const std::map<RemoteCommand, const char *> methods { { RemoteCommand::Press, "Press" },
    { RemoteCommand::Release, "Release" }, { RemoteCommand::KeyDown, "KeyDown" },
    { RemoteCommand::KeyUp, "KeyUp" }, { RemoteCommand::Start, "Start" }, { RemoteCommand::Stop, "Stop" },
    { RemoteCommand::Toggle, "Toggle" }, { RemoteCommand::ShowStudio, "ShowStudio" },
    { RemoteCommand::ShowSettings, "ShowSettings" }, { RemoteCommand::Quit, "Quit" } };

const std::map<QString, RemoteRefusal> refusals { { QStringLiteral("Locked"), RemoteRefusal::Locked },
    { QStringLiteral("Busy"), RemoteRefusal::Busy },
    { QStringLiteral("Held"), RemoteRefusal::HeldElsewhere } };

QDBusMessage call(const QString &on, const QString &member) {
    return QDBusMessage::createMethodCall(service, path, on, member);
}

std::vector<OperationMethod> rowsOf(const QDBusArgument &array) {
    std::vector<OperationMethod> rows;
    array.beginArray();
    while (!array.atEnd()) {
        OperationMethod row;
        array.beginStructure();
        array >> row.operation >> row.method >> row.isAvailable >> row.reason;
        array.endStructure();
        rows.push_back(row);
    }
    array.endArray();
    return rows;
}
} // namespace

/// Another program on the bus.
class OtherProgram : public QObject {
    Q_OBJECT

public:
    explicit OtherProgram(const QString &name = QStringLiteral("other"))
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)) {
        m_bus.connect({}, path, properties, QStringLiteral("PropertiesChanged"), this,
            SLOT(changed(QString, QVariantMap)));
    }
    ~OtherProgram() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    /// The answer, for which the event loop runs, since the one who answers is in this process.
    QDBusMessage ask(const QDBusMessage &message) const {
        const QDBusPendingCall pending = m_bus.asyncCall(message);
        EXPECT_TRUE(untilTrue([&] { return pending.isFinished(); }));
        return pending.reply();
    }
    QDBusMessage ask(const QString &member) const { return ask(call(interface, member)); }
    bool send(const QDBusMessage &message) const { return m_bus.send(message); }

    bool isServed() const {
        auto message = QDBusMessage::createMethodCall(bus, busPath, bus, QStringLiteral("NameHasOwner"));
        return ask(message << service).arguments().value(0).toBool();
    }

    QString address() const { return m_bus.baseService(); }
    QDBusConnection &connection() { return m_bus; }

    /// What was told of the properties, in order.
    std::vector<QVariantMap> changes;

private Q_SLOTS:
    void changed(const QString &of, const QVariantMap &values) {
        EXPECT_EQ(of, interface);
        changes.push_back(values);
    }

private:
    QDBusConnection m_bus;
};

namespace {
class OnTheBus {
public:
    // An answer means that the bus also knows by now what the other program listens to.
    OnTheBus() { m_other.isServed(); }
    ~OnTheBus() { QDBusConnection::disconnectFromBus(QStringLiteral("tolmi")); }

    RemoteControl &control() { return *m_control; }
    std::optional<RemoteRefusal> ask(RemoteCommand command) {
        EXPECT_TRUE(untilTrue([this] { return m_other.isServed(); }));
        auto message = call(interface, QString::fromLatin1(methods.at(command)));
        if (command == RemoteCommand::KeyDown || command == RemoteCommand::KeyUp)
            message << quint64(1);
        const QDBusMessage answer = m_other.ask(message);
        if (answer.type() == QDBusMessage::ReplyMessage)
            return {};
        EXPECT_NE(answer.errorMessage(), QString());
        return refusals.at(answer.errorName().section(u'.', -1));
    }
    QStringList states() const {
        QStringList states;
        for (const QVariantMap &change : m_other.changes)
            states.append(change.value(QStringLiteral("State")).toString());
        return states;
    }

private:
    std::unique_ptr<DBusRemoteControl> m_control = std::make_unique<DBusRemoteControl>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("tolmi")));
    OtherProgram m_other;
};

class DBusRemoteControlTests : public testing::Test {
protected:
    void TearDown() override {
        control.reset();
        QDBusConnection::disconnectFromBus(QStringLiteral("tolmi"));
    }

    void serve() {
        ASSERT_TRUE(control->serve(program).isAvailable());
        ASSERT_TRUE(untilTrue([this] { return other.isServed(); }));
    }
    /// A program of its own that calls a method and ends.
    static void sendAndEnd(const QString &member) {
        QProcess process;
        process.start(QStringLiteral("dbus-send"),
            { QStringLiteral("--session"), QStringLiteral("--type=method_call"),
                QStringLiteral("--dest=") + service, path, interface + u'.' + member });
        EXPECT_TRUE(untilTrue([&] { return process.state() == QProcess::NotRunning; }));
        EXPECT_EQ(process.exitCode(), 0);
    }

    ControlledProgram program;
    std::unique_ptr<DBusRemoteControl> control = std::make_unique<DBusRemoteControl>(
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("tolmi")));
    OtherProgram other;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(DBus, RemoteControlContract, OnTheBus);

TEST_F(DBusRemoteControlTests, DescribesItselfAsInTheInstalledFile) {
    serve();
    const QString description
        = other.ask(call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect")))
              .arguments()
              .value(0)
              .toString();
    for (const auto &[command, method] : methods)
        EXPECT_TRUE(description.contains(QStringLiteral("<method name=\"%1\"").arg(QLatin1String(method))));
    for (const char *documented : { "Presses the dictation key", "name=\"State\"", "name=\"Level\"",
             "name=\"LastError\"", "name=\"Version\"", "a(ssbs)" })
        EXPECT_TRUE(description.contains(QLatin1String(documented))) << documented;
}

TEST_F(DBusRemoteControlTests, ItsPropertiesCanBeRead) {
    serve();
    const QVariantMap all = qdbus_cast<QVariantMap>(
        other.ask(call(properties, QStringLiteral("GetAll")) << interface).arguments().value(0));
    EXPECT_EQ(all,
        (QVariantMap { { QStringLiteral("State"), QStringLiteral("idle") }, { QStringLiteral("Level"), 0.25 },
            { QStringLiteral("LastError"), QString() },
            { QStringLiteral("Version"), QStringLiteral("1.2") } }));
    const QDBusMessage level
        = other.ask(call(properties, QStringLiteral("Get")) << interface << QStringLiteral("Level"));
    EXPECT_EQ(level.arguments().value(0).value<QDBusVariant>().variant(), QVariant(0.25));
}

TEST_F(DBusRemoteControlTests, WhatIsNotThereIsAnError) {
    serve();
    const auto error = [this](const QDBusMessage &message) { return other.ask(message).errorName(); };
    const QString errors = bus + QStringLiteral(".Error.");
    EXPECT_EQ(error(call(interface, QStringLiteral("Nothing"))), errors + QStringLiteral("UnknownMethod"));
    EXPECT_EQ(error(call(QStringLiteral("org.tolmi.Other"), QStringLiteral("Press"))),
        errors + QStringLiteral("UnknownInterface"));
    EXPECT_EQ(error(call(interface, QStringLiteral("KeyDown"))), errors + QStringLiteral("InvalidArgs"));
    EXPECT_EQ(error(call(interface, QStringLiteral("Press")) << 1), errors + QStringLiteral("InvalidArgs"));
    EXPECT_EQ(error(call(properties, QStringLiteral("Get")) << interface << QStringLiteral("Transcript")),
        errors + QStringLiteral("UnknownProperty"));
    EXPECT_EQ(error(call(properties, QStringLiteral("Set"))
                  << interface << QStringLiteral("State")
                  << QVariant::fromValue(QDBusVariant(QStringLiteral("idle")))),
        errors + QStringLiteral("PropertyReadOnly"));
    EXPECT_TRUE(program.requests.empty());
}

TEST_F(DBusRemoteControlTests, TellsOnlyWhatHasChangedAndNeverTheLevel) {
    serve();
    program.now.level = 0.5;
    control->announce();
    program.now.lastError = QStringLiteral("no");
    control->announce();
    control->announce();
    program.now.state = QStringLiteral("error");
    control->announce();
    ASSERT_TRUE(untilTrue([this] { return other.changes.size() >= 2; }));
    EXPECT_THAT(other.changes,
        testing::ElementsAre(QVariantMap { { QStringLiteral("LastError"), QStringLiteral("no") } },
            QVariantMap { { QStringLiteral("State"), QStringLiteral("error") } }));
}

TEST_F(DBusRemoteControlTests, TellsHowEverythingIsDone) {
    program.rows = { { QStringLiteral("key"), QStringLiteral("raw keys"), true, {} },
        { QStringLiteral("paste"), QStringLiteral("posted keys"), false, QStringLiteral("not here") } };
    serve();
    const QDBusMessage answer = other.ask(QStringLiteral("Doctor"));
    EXPECT_EQ(answer.signature(), QStringLiteral("a(ssbs)"));
    EXPECT_EQ(rowsOf(answer.arguments().value(0).value<QDBusArgument>()), program.rows);
}

TEST_F(DBusRemoteControlTests, NobodyCanHaveBeenAskedInTheFuture) {
    serve();
    constexpr quint64 never = std::numeric_limits<quint64>::max();
    other.ask(call(interface, QStringLiteral("KeyUp")) << never);
    other.ask(call(interface, QStringLiteral("KeyDown")) << quint64(5));
    ASSERT_EQ(program.requests.size(), 2U);
    EXPECT_LT(program.requests[0].time, never);
    EXPECT_GT(program.requests[0].time, 5U);
    EXPECT_EQ(program.requests[1].time, 5U);
}

// Some have left before anybody could have begun to watch them.
TEST_F(DBusRemoteControlTests, AProgramThatPressedAndEndedHasLeft) {
    serve();
    for (int round = 1; round <= 20; ++round) {
        sendAndEnd(QStringLiteral("Press"));
        ASSERT_TRUE(untilTrue([&] { return program.callersThatLeft.size() == round; }));
        EXPECT_EQ(program.callersThatLeft.last(), program.requests.back().caller);
    }
}

TEST_F(DBusRemoteControlTests, WhoDidNotPressLeavesUnnoticed) {
    serve();
    for (const char *method : { "Release", "Start", "Toggle", "Stop" })
        sendAndEnd(QString::fromLatin1(method));
    program.refusal = RemoteRefusal::Busy;
    sendAndEnd(QStringLiteral("Press"));
    ASSERT_TRUE(untilTrue([this] { return program.requests.size() == 5; }));
    program.refusal = {};
    sendAndEnd(QStringLiteral("Press"));
    ASSERT_TRUE(untilTrue([this] { return !program.callersThatLeft.isEmpty(); }));
    EXPECT_EQ(program.callersThatLeft, QStringList(program.requests.back().caller));
}

TEST_F(DBusRemoteControlTests, OnlyTheBusIsBelievedThatSomebodyLeft) {
    serve();
    other.ask(QStringLiteral("Press"));
    const OtherProgram liar(QStringLiteral("liar"));
    auto lie = QDBusMessage::createSignal(busPath, bus, QStringLiteral("NameOwnerChanged"));
    ASSERT_TRUE(liar.send(lie << other.address() << other.address() << QString()));
    liar.ask(QStringLiteral("Stop"));
    EXPECT_EQ(program.callersThatLeft, QStringList());
    EXPECT_EQ(program.requests.size(), 2U);
}

TEST_F(DBusRemoteControlTests, ANameThatIsTakenIsWaitedFor) {
    ASSERT_TRUE(other.connection().registerService(service));
    testing::internal::CaptureStderr();
    ASSERT_TRUE(control->serve(program).isAvailable());
    const OtherProgram third(QStringLiteral("third"));
    const auto owner = [&third] {
        auto message = QDBusMessage::createMethodCall(bus, busPath, bus, QStringLiteral("GetNameOwner"));
        return third.ask(message << service).arguments().value(0).toString();
    };
    QString log;
    EXPECT_TRUE(untilTrue([&log] {
        log += QString::fromStdString(testing::internal::GetCapturedStderr());
        testing::internal::CaptureStderr();
        return log.contains(QLatin1String("Tolmi: tolmictl will not work before"));
    })) << log.toStdString();
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(owner(), other.address());
    ASSERT_TRUE(other.connection().unregisterService(service));
    EXPECT_TRUE(
        untilTrue([&] { return third.ask(QStringLiteral("Stop")).type() == QDBusMessage::ReplyMessage; }));
    EXPECT_EQ(program.requests.size(), 1U);
}

TEST(DBusRemoteControl, NeedsABus) {
    DBusRemoteControl control { QDBusConnection(QStringLiteral("nowhere")) };
    ControlledProgram program;
    EXPECT_EQ(control.serve(program).reason, QStringLiteral("there is no session bus"));
    control.announce();
}

#include "DBusRemoteControlTests.moc"
