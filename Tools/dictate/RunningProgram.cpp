#include "dictate/RunningProgram.h"

#include "dictate/Waiting.h"

RunningProgram::RunningProgram() {
    m_clock.start();
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tolmi.stages.info=true"));
    environment.insert(QStringLiteral("QT_FORCE_STDERR_LOGGING"), QStringLiteral("1"));
    // A program that looks before somebody has asked for it stays out of the accessibility bus.
    environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    // The program must show windows even if the test that starts it runs offscreen.
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    m_process.setProcessEnvironment(environment);
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, &m_process, [this] { readLines(); });
}

RunningProgram::~RunningProgram() {
    quit();
}

void RunningProgram::setVariable(const QString &name, const QString &value) {
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

bool RunningProgram::start(const QString &path) {
    // What an earlier run said must not be taken for this one's.
    m_stages.clear();
    m_state.clear();
    m_process.start(path, {});
    if (!m_process.waitForStarted(5000)) {
        m_output += m_process.errorString() + u'\n';
        return false;
    }
    return waitUntil([this] { return firstStage(QStringLiteral("ready")).has_value() || !isRunning(); }, 30)
        && isRunning();
}

void RunningProgram::kill() {
    m_process.kill();
    m_process.waitForFinished(5000);
}

bool RunningProgram::quit() {
    if (!isRunning())
        return true;
    m_process.terminate();
    // Runs the event loop, because the program may still query this process while it exits.
    if (waitUntil([this] { return !isRunning(); }, 5))
        return true;
    m_process.kill();
    m_process.waitForFinished(5000);
    return false;
}

std::optional<RunningProgram::Stage> RunningProgram::firstStage(
    const QString &kind, const QString &detail) const {
    for (const Stage &stage : m_stages) {
        if (stage.kind == kind && (detail.isEmpty() || stage.detail == detail))
            return stage;
    }
    return std::nullopt;
}

void RunningProgram::readLines() {
    while (m_process.canReadLine()) {
        QString line = QString::fromUtf8(m_process.readLine());
        line.chop(1);
        readLine(line);
    }
}

void RunningProgram::readLine(const QString &line) {
    const QString prefix = QStringLiteral("tolmi.stages: ");
    if (!line.startsWith(prefix)) {
        m_output += line + u'\n';
        return;
    }
    const QString content = line.mid(prefix.size());
    const Stage stage { content.section(u' ', 0, 0), content.section(u' ', 1, 1).toLower(), clock() };
    if (stage.kind == u"state")
        m_state = stage.detail;
    m_stages.push_back(stage);
}
