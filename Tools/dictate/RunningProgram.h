#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QString>

#include <optional>
#include <vector>

/// The real program, started for a test or demonstration, and its log output.
class RunningProgram {
public:
    /// One line of the program's stage log.
    struct Stage {
        /// First word: "state", "transcribed" or "ready".
        QString kind;
        QString detail;
        /// When the line arrived, by clock().
        double seconds = 0;
    };

    RunningProgram();
    /// Terminates the program as a session manager does, and kills it if it does not exit.
    ~RunningProgram();

    /// What the program finds in its environment from the next start on.
    void setVariable(const QString &name, const QString &value);

    /// Starts `path` and waits until its hotkey listens; false with an explanation in output() when it does
    /// not. A window opens by itself where the desktop has no tray, or the home is that of a new user.
    bool start(const QString &path);

    /// Current time in seconds by the clock of the stages.
    double clock() const { return double(m_clock.nsecsElapsed()) / 1e9; }

    /// Stages since the last forgetStages().
    const std::vector<Stage> &stages() const { return m_stages; }
    void forgetStages() { m_stages.clear(); }

    /// The last state that the program reported, in lower case.
    QString state() const { return m_state; }

    /// The first stage of a kind, with this detail if given.
    std::optional<Stage> firstStage(const QString &kind, const QString &detail = {}) const;

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }

    /// All other lines of the program's output.
    QString output() const { return m_output; }

    /// Kills the program, to simulate a crash.
    void kill();

    /// Asks the program to quit and waits; false if it had to be killed.
    bool quit();

private:
    void readLines();
    void readLine(const QString &line);

    QProcess m_process;
    QElapsedTimer m_clock;
    std::vector<Stage> m_stages;
    QString m_state;
    QString m_output;
};
