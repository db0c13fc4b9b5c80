#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QString>

#include <optional>
#include <vector>

/// The real program, started for a test or a demonstration, and what it says about itself while it runs.
class RunningProgram {
public:
    /// One line of the program's stage log.
    struct Stage {
        /// First word: "state", "transcribed" or "ready".
        QString kind;
        QString detail;
        /// When the line came, counted on clock().
        double seconds = 0;
    };

    RunningProgram();
    /// Ends the program as a session manager does, and kills it if it does not follow.
    ~RunningProgram();

    /// Starts `path` and waits until its hotkey listens; false with an explanation in output() when it does
    /// not. A window opens by itself where the desktop has no tray, or the home is that of a new user.
    bool start(const QString &path);

    /// Seconds on the clock that stages are stamped with.
    double clock() const { return double(m_clock.nsecsElapsed()) / 1e9; }

    /// Stages since the last forgetStages().
    const std::vector<Stage> &stages() const { return m_stages; }
    void forgetStages() { m_stages.clear(); }

    /// The last state that the program reported, in lower case.
    QString state() const { return m_state; }

    /// The first stage of a kind, and with this detail when one is given.
    std::optional<Stage> firstStage(const QString &kind, const QString &detail = {}) const;

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    qint64 processId() const { return m_process.processId(); }

    /// Every other line that the program wrote.
    QString output() const { return m_output; }

    /// Ends the program without a word, as a crash does.
    void kill();

    /// Asks the program to end and waits; false when it had to be killed.
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
