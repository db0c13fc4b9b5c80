// The whole program among things that hang, die and dawdle: in every state its main loop goes on turning, it
// ends when it is asked to, and the next dictation works. Prints the longest pause of each case.
//
// A few of the cases run by default, all of them with TOLMI_ALL_FAULTS set.

#include "Desktop/MainLoopWatch/MainLoopReport.h"
#include "Desktop/SoundServer.h"
#include "Desktop/TestPrograms.h"
#include "Support/MisbehavingServer.h"
#include "Support/Print.h"
#include "dictate/Dictation.h"
#include "dictate/Home.h"
#include "dictate/Waiting.h"

#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <iostream>

#include <sys/mman.h>

namespace {
enum class Fault {
    SoundServerStopped,
    SoundServerKilled,
    SoundServerRestarted,
    SourceSuspended,
    DiskSlow,
    OllamaSilent,
    ClipboardOwnerHung,
};
constexpr std::array faults { Fault::SoundServerStopped, Fault::SoundServerKilled,
    Fault::SoundServerRestarted, Fault::SourceSuspended, Fault::DiskSlow, Fault::OllamaSilent,
    Fault::ClipboardOwnerHung };
constexpr std::array faultNames { "SoundServerStopped", "SoundServerKilled", "SoundServerRestarted",
    "SourceSuspended", "DiskSlow", "OllamaSilent", "ClipboardOwnerHung" };

/// A fault and the state in which it begins.
struct Case {
    Fault fault;
    const char *state;
};

std::string nameOf(const Case &tried) {
    return std::string(faultNames.at(size_t(tried.fault))) + "_" + tried.state;
}

std::vector<Case> cases() {
    if (!qEnvironmentVariableIsSet("TOLMI_ALL_FAULTS"))
        return { { Fault::SoundServerStopped, "recording" }, { Fault::SoundServerKilled, "recording" },
            { Fault::SoundServerRestarted, "transcribing" }, { Fault::SourceSuspended, "idle" },
            { Fault::DiskSlow, "pasting" }, { Fault::OllamaSilent, "refining" },
            { Fault::ClipboardOwnerHung, "refining" } };
    std::vector<Case> all;
    for (const Fault fault : faults) {
        for (const char *state : { "idle", "recording", "transcribing", "optimizingquality", "refining",
                 "pasting", "done", "error" })
            all.push_back({ fault, state });
    }
    return all;
}

/// The file that is shared with the program.
class SharedReport {
public:
    SharedReport() {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(sizeof(MainLoopReport)));
        m_report = static_cast<MainLoopReport *>(
            mmap(nullptr, sizeof(MainLoopReport), PROT_READ | PROT_WRITE, MAP_SHARED, file.handle(), 0));
    }
    ~SharedReport() { munmap(m_report, sizeof(MainLoopReport)); }

    MainLoopReport *operator->() const { return m_report; }
    QString path() const { return m_path; }

private:
    const QString m_path = qEnvironmentVariable("TOLMI_DESKTOP_DIR") + QStringLiteral("/main-loop-report");
    MainLoopReport *m_report;
};

QString sample() {
    return QStringLiteral(TOLMI_SAMPLES_DIR "/english-1.wav");
}

class MainLoopWatch : public testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        qputenv("TOLMI_DESKTOP_MICFEED", "micfeed");
        QFile::remove(m_folder + "/fail");
        m_ollama.script = { {} };
        ASSERT_TRUE(prepareHome({ .language = QStringLiteral("en"),
            .whisperCLI = slowWhisperCLI(),
            .model = QStringLiteral(TOLMI_STARTING_MODEL),
            .settings = { { "tolmi.ollamaEndpoint", m_ollama.url().toString() }, { "tolmi.ollamaTimeout", 2 },
                { "tolmi.refinementEnabled", true },
                { "tolmi.performanceMode", is("optimizingquality") ? "maxQuality" : "balanced" } } }));
        m_program.setVariable(MainLoopReport::pathVariable, m_report.path());
        m_program.setVariable("LD_PRELOAD", TOLMI_MAIN_LOOP_WATCH);
        ASSERT_TRUE(m_program.start(QStringLiteral(TOLMI_PROGRAM))) << m_program.output().toStdString();
        ASSERT_TRUE(m_editor.open());
    }

    void TearDown() override { EXPECT_TRUE(m_program.quit()); }

    static bool is(const char *state) { return QLatin1String(GetParam().state) == QLatin1String(state); }

    /// A whisper-cli that takes its time, and fails while there is a file "fail".
    QString slowWhisperCLI() const {
        const QString path = m_folder + QStringLiteral("/slow-whisper-cli");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("#!/bin/bash\nsleep 1\n[[ ! -e '%1/fail' ]] || exit 1\nexec '%2' \"$@\"\n")
                       .arg(m_folder, TOLMI_TEST_WHISPER_CLI)
                       .toUtf8());
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }

    bool comesTo(const char *state, double seconds = 10) {
        return waitUntil([this, state] { return m_program.state() == QLatin1String(state); }, seconds);
    }

    /// Quiet enough for a second pass where that is wanted.
    QString speech() const {
        if (!is("optimizingquality"))
            return sample();
        const QString quiet = m_folder + QStringLiteral("/quiet.wav");
        EXPECT_EQ(QProcess::execute("sox", { "-v", "0.02", sample(), quiet }), 0);
        return quiet;
    }

    /// Brings the program to the state of the case; in `recording` the key is still down.
    void driveToState() {
        m_program.forgetStages();
        if (is("idle"))
            return;
        m_user.press(VirtualUser::rightAlt);
        ASSERT_TRUE(comesTo("recording"));
        if (is("recording"))
            return;
        if (is("error")) {
            ASSERT_TRUE(QFile(m_folder + "/fail").open(QIODevice::WriteOnly));
        }
        ASSERT_TRUE(playIntoMicrophone(speech()));
        m_user.release(VirtualUser::rightAlt);
        ASSERT_TRUE(waitUntil(
            [this] { return m_program.firstStage("state", QLatin1String(GetParam().state)).has_value(); },
            15));
    }

    void begin() {
        switch (GetParam().fault) {
        case Fault::SoundServerStopped:
            return m_server.freeze();
        case Fault::SoundServerKilled:
            return m_server.kill();
        case Fault::SoundServerRestarted:
            m_server.kill();
            return m_server.start();
        case Fault::SourceSuspended:
            m_server.tell("suspend-source mic 1");
            return;
        case Fault::DiskSlow:
            m_report->syncDelay = 6000;
            return;
        case Fault::OllamaSilent:
            return;
        case Fault::ClipboardOwnerHung:
            m_owner = std::make_unique<CopyingProgram>("copied");
            return m_owner->hang();
        }
    }

    void end() {
        switch (GetParam().fault) {
        case Fault::SoundServerStopped:
            return m_server.thaw();
        case Fault::SoundServerKilled:
            return m_server.start();
        case Fault::SourceSuspended:
            m_server.tell("suspend-source mic 0");
            return;
        case Fault::DiskSlow:
            m_report->syncDelay = 0;
            return;
        case Fault::ClipboardOwnerHung:
            m_owner.reset();
            return;
        case Fault::SoundServerRestarted:
        case Fault::OllamaSilent:
            return;
        }
    }

    /// What the user does next, until the program is idle again.
    void goOn() {
        if (is("idle")) {
            m_user.press(VirtualUser::rightAlt);
            pause(1);
            m_user.release(VirtualUser::rightAlt);
            pause(2);
        } else if (is("recording")) {
            pause(1);
            m_user.release(VirtualUser::rightAlt);
        }
        EXPECT_TRUE(comesTo("idle", 30));
        pause(1.2);
        QFile::remove(m_folder + "/fail");
    }

    const QString m_folder = qEnvironmentVariable("TOLMI_DESKTOP_DIR");
    SoundServer m_server;
    SharedReport m_report;
    MisbehavingServer m_ollama;
    VirtualUser m_user;
    RunningProgram m_program;
    Editor m_editor { m_user };
    std::unique_ptr<CopyingProgram> m_owner;
};
} // namespace

TEST_P(MainLoopWatch, TurnsAndTheNextDictationWorks) {
    pause(0.5);
    m_report->longestPause = 0;
    driveToState();
    begin();
    goOn();
    end();
    const int64_t longestPause = m_report->longestPause;
    std::cout << nameOf(GetParam()) << ": longest pause " << longestPause << " ms\n";
    EXPECT_LT(longestPause, 500);
    EXPECT_GT(longestPause, 0) << "the program was not watched";
    const DictationReport report = dictate({ m_user, m_program, m_editor }, sample());
    EXPECT_EQ(report.failure, QString());
    EXPECT_EQ(report.pasted, QStringLiteral("Thank you for your help, John."));
}

TEST_P(MainLoopWatch, EndsWhenAsked) {
    driveToState();
    begin();
    QElapsedTimer clock;
    clock.start();
    EXPECT_TRUE(m_program.quit());
    std::cout << nameOf(GetParam()) << ": ended after " << clock.elapsed() << " ms\n";
    EXPECT_LT(clock.elapsed(), 2000);
    m_user.release(VirtualUser::rightAlt);
    end();
}

INSTANTIATE_TEST_SUITE_P(
    Fault, MainLoopWatch, testing::ValuesIn(cases()), [](const auto &info) { return nameOf(info.param); });
