#include "Platform/Linux/Files/LinuxLocalListeners.h"
#include "Platform/Linux/Files/SystemAccounts.h"
#include "Support/FakeLocalListeners.h"

#include <QProcess>
#include <QTcpServer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace {
/// An implementation under test, and how to start listeners.
class Machine {
public:
    virtual ~Machine() = default;
    virtual const LocalListeners &listeners() const = 0;
    /// Starts a server of this user and returns its address.
    virtual QUrl startOwnServer() = 0;
    virtual void stopServer() = 0;
};

class FakeMachine final : public Machine {
public:
    const LocalListeners &listeners() const override { return m_listeners; }
    QUrl startOwnServer() override {
        m_listeners.replies.push_back(Listener::Trusted);
        return QUrl(QStringLiteral("http://localhost:1"));
    }
    void stopServer() override { m_listeners.replies.push_back(Listener::Nobody); }

private:
    FakeLocalListeners m_listeners;
};

class RealMachine final : public Machine {
public:
    const LocalListeners &listeners() const override { return m_listeners; }
    QUrl startOwnServer() override {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort()));
    }
    void stopServer() override { m_server.close(); }

private:
    LinuxLocalListeners m_listeners;
    QTcpServer m_server;
};

using MakeMachine = std::unique_ptr<Machine> (*)();

template <typename Kind>
std::unique_ptr<Machine> make() {
    return std::make_unique<Kind>();
}

class LocalListenersContract : public testing::TestWithParam<MakeMachine> { };

INSTANTIATE_TEST_SUITE_P(Kinds, LocalListenersContract,
    testing::Values(&make<FakeMachine>, &make<RealMachine>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Linux"; });

TEST_P(LocalListenersContract, AServerOfTheUserIsTrustedAsLongAsItListens) {
    const std::unique_ptr<Machine> machine = GetParam()();
    const QUrl url = machine->startOwnServer();
    EXPECT_EQ(machine->listeners().listenerAt(url), Listener::Trusted);
    machine->stopServer();
    EXPECT_EQ(machine->listeners().listenerAt(url), Listener::Nobody);
}

constexpr uid_t stranger = 60000;

/// The kernel's table row for a socket of `owner`, by default listening.
QByteArray line(const QByteArray &address, uid_t owner, const QByteArray &state = "0A") {
    return "   0: " + address + " 00000000:0000 " + state + " 00000000:00000000 00:00000000 00000000 "
        + QByteArray::number(owner).rightJustified(5) + "        0 12345 1 0000000000000000 100 0 0 10 0\n";
}

const QByteArray tableHead = "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   "
                             "uid  timeout inode\n";

TEST(ListeningSockets, AreReadFromTheKernelsTables) {
    const auto sockets = listeningSockets(tableHead + line("0100007F:2CAA", 1000)
        + line("0100007F:2CAB", 1000, "01") + line("00000000000000000000000001000000:2CAA", stranger)
        + line("0000000000000000FFFF00000100007F:0050", 0) + "nonsense\n" + line("0100007F:", 1000)
        + line("01007F:2CAA", 1000));
    ASSERT_EQ(sockets.size(), 3U);
    EXPECT_EQ(sockets[0].address, QHostAddress(QStringLiteral("127.0.0.1")));
    EXPECT_EQ(sockets[0].port, 11434);
    EXPECT_EQ(sockets[0].owner, 1000U);
    EXPECT_EQ(sockets[1].address, QHostAddress(QStringLiteral("::1")));
    EXPECT_EQ(sockets[1].owner, stranger);
    EXPECT_EQ(sockets[2].address, QHostAddress(QStringLiteral("127.0.0.1")));
    EXPECT_EQ(sockets[2].port, 80);
}

struct ListenerCase {
    const char *name;
    const char *url;
    /// Addresses where other users listen, all at port 11434; this user does not listen.
    std::vector<const char *> untrusted;
    Listener expected;
};

class ListenerTable : public testing::TestWithParam<ListenerCase> { };

INSTANTIATE_TEST_SUITE_P(Untrusted, ListenerTable,
    testing::Values(
        ListenerCase { "Exact", "http://127.0.0.1:11434/api", { "127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "OtherAddress", "http://127.0.0.1:11434", { "127.0.0.2" }, Listener::Nobody },
        ListenerCase { "Wildcard", "http://127.0.0.1:11434", { "0.0.0.0" }, Listener::Untrusted },
        ListenerCase { "BothWildcards", "http://127.0.0.1:11434", { "::" }, Listener::Untrusted },
        ListenerCase { "Mapped", "http://127.0.0.1:11434", { "::ffff:127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "MappedUrl", "http://[::ffff:127.0.0.1]:11434", { "127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "IPv6", "http://[::1]:11434", { "::1" }, Listener::Untrusted },
        ListenerCase { "IPv6Wildcard", "http://[::1]:11434", { "::" }, Listener::Untrusted },
        ListenerCase { "IPv4IsNotIPv6", "http://[::1]:11434", { "127.0.0.1", "0.0.0.0" }, Listener::Nobody },
        ListenerCase { "NameByIPv4", "http://localhost:11434", { "127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "NameByIPv6", "http://localhost:11434", { "::1" }, Listener::Untrusted },
        ListenerCase { "NameInCapitals", "http://LOCALHOST.:11434", { "::1" }, Listener::Untrusted },
        ListenerCase { "NameBelow", "http://a.localhost:11434", { "127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "NoAddress", "http://0.0.0.0:11434", { "127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "NoIPv6Address", "http://[::]:11434", { "::1" }, Listener::Untrusted },
        ListenerCase { "ShortForm", "http://127.1:11434", { "127.0.0.1" }, Listener::Untrusted },
        ListenerCase { "OtherPort", "http://127.0.0.1:11435", { "127.0.0.1" }, Listener::Nobody },
        ListenerCase { "UsualPort", "http://127.0.0.1", { "127.0.0.1" }, Listener::Nobody },
        ListenerCase { "OfTheNetwork", "http://localhost:11434", { "192.168.1.2" }, Listener::Nobody },
        ListenerCase { "AnotherMachine", "http://192.168.1.2:11434", { "192.168.1.2" }, Listener::Elsewhere },
        ListenerCase { "AnotherName", "http://ollama.example:11434", { "0.0.0.0" }, Listener::Elsewhere },
        ListenerCase { "NoHost", "file:///etc/passwd", { "0.0.0.0" }, Listener::Elsewhere }),
    [](const auto &info) { return info.param.name; });

TEST_P(ListenerTable, IsReadForTheAddressOfTheUrl) {
    const LinuxLocalListeners listeners([] {
        std::vector<ListeningSocket> sockets;
        for (const char *address : GetParam().untrusted)
            sockets.push_back({ QHostAddress(QString::fromUtf8(address)), 11434, stranger });
        return std::optional(sockets);
    });
    EXPECT_EQ(listeners.listenerAt(QUrl(QString::fromUtf8(GetParam().url))), GetParam().expected);
}

TEST(LinuxLocalListeners, OneUntrustedListenerIsEnough) {
    const QHostAddress ipv4(QHostAddress::LocalHost);
    const QHostAddress ipv6(QHostAddress::LocalHostIPv6);
    std::vector<ListeningSocket> sockets { { ipv4, 1, ::geteuid() }, { ipv6, 1, 0 }, { ipv6, 1, 998 } };
    const LinuxLocalListeners listeners([&] { return std::optional(sockets); });
    const QUrl url(QStringLiteral("http://localhost:1"));
    EXPECT_EQ(listeners.listenerAt(url), Listener::Trusted);
    sockets.push_back({ ipv6, 1, stranger });
    EXPECT_EQ(listeners.listenerAt(url), Listener::Untrusted);
    EXPECT_EQ(listeners.listenerAt(QUrl(QStringLiteral("http://127.0.0.1:1"))), Listener::Trusted);
}

TEST(LinuxLocalListeners, TrustNobodyIfTheTablesAreUnreadable) {
    const LinuxLocalListeners listeners([] { return std::optional<std::vector<ListeningSocket>>(); });
    EXPECT_EQ(listeners.listenerAt(QUrl(QStringLiteral("http://localhost:1"))), Listener::Untrusted);
    EXPECT_EQ(listeners.listenerAt(QUrl(QStringLiteral("http://example.org"))), Listener::Elsewhere);
}

TEST(LinuxLocalListeners, SeeTheServersOfThisMachineAtEachOfItsAddresses) {
    const LinuxLocalListeners listeners;
    for (const auto address : { QHostAddress::LocalHost, QHostAddress::LocalHostIPv6 }) {
        QTcpServer server;
        if (!server.listen(address))
            continue; // a machine without IPv6
        const QUrl url(QStringLiteral("http://localhost:%1").arg(server.serverPort()));
        EXPECT_EQ(listeners.listenerAt(url), Listener::Trusted);
    }
}

TEST(LinuxLocalListeners, KnowAnotherUsersServer) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can start a server as another user";
    QProcess server;
    server.start(QStringLiteral("setpriv"),
        { QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups"),
            QStringLiteral("/usr/bin/python3"), QStringLiteral("-c"),
            QStringLiteral("import socket, sys\ns = socket.create_server(('127.0.0.1', 0))\n"
                           "print(s.getsockname()[1], flush=True)\nsys.stdin.read()") });
    ASSERT_TRUE(server.waitForReadyRead(30000)) << server.readAllStandardError().toStdString();
    const QString port = QString::fromUtf8(server.readLine()).trimmed();
    EXPECT_EQ(LinuxLocalListeners().listenerAt(QUrl(QStringLiteral("http://localhost:") + port)),
        Listener::Untrusted);
    server.closeWriteChannel();
    EXPECT_TRUE(server.waitForFinished());
}

TEST(SystemAccounts, EndWhereTheLoginDefinitionsSay) {
    EXPECT_EQ(highestSystemAccount(""), 999U);
    EXPECT_EQ(highestSystemAccount("# SYS_UID_MAX 5\nSYS_UID_MIN 100\n"), 999U);
    EXPECT_EQ(highestSystemAccount("UID_MIN 500\n SYS_UID_MAX\t\t 499 \n"), 499U);
    EXPECT_EQ(highestSystemAccount("SYS_UID_MAX many\n"), 999U);
}
} // namespace
