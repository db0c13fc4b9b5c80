// Kills a process at random moments while it writes the history and checks what the next start finds: a
// complete file with every save that was waited for, and no leftover files.

#include "Platform/Linux/Files/FileDescriptor.h"
#include "ScratchHistory.h"
#include "TolmiApp/History/HistoryCodec.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <optional>
#include <random>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace {
using Random = std::mt19937_64;

/// One change of the history, as sent through the pipe.
struct Step {
    enum class Kind : quint32 { Add, TogglePin, Delete, Clear };

    Kind kind;
    /// The number of the dictation to add, otherwise the index of an entry.
    quint32 number;
    /// Whether the save was waited for and so must be on disk.
    quint32 isDone;
};

/// The expected state of an entry.
struct Record {
    quint32 number;
    bool isPinned;

    friend bool operator==(const Record &, const Record &) = default;
};
using Records = std::vector<Record>;

/// The text of a dictation, up to some pages long.
QString textOf(quint32 number) {
    const auto letters = qsizetype(Random(number)() % 4000);
    return QString::number(number) + u' ' + QString(letters, QChar(u'ă'));
}

/// The entries by number; absent if a text differs from the dictated one.
std::optional<Records> recordsOf(const QList<HistoryEntry> &entries) {
    Records records;
    for (const HistoryEntry &entry : entries) {
        const quint32 number = entry.rawText.section(u' ', 0, 0).toUInt();
        if (entry.rawText != textOf(number))
            return std::nullopt;
        records.push_back({ number, entry.isPinned });
    }
    return records;
}

void apply(const Step &step, Records &records) {
    switch (step.kind) {
    case Step::Kind::Add:
        records.insert(records.begin(), { step.number, false });
        return;
    case Step::Kind::TogglePin:
        records[step.number].isPinned = !records[step.number].isPinned;
        return;
    case Step::Kind::Delete:
        records.erase(records.begin() + step.number);
        return;
    case Step::Kind::Clear:
        records.clear();
        return;
    }
}

void apply(const Step &step, ScratchHistory &history) {
    switch (step.kind) {
    case Step::Kind::Add:
        history->add({ .rawText = textOf(step.number), .language = QStringLiteral("ro") });
        return;
    case Step::Kind::TogglePin:
        history->togglePin(history->entries()[step.number].id);
        return;
    case Step::Kind::Delete:
        history->deleteEntry(history->entries()[step.number].id);
        return;
    case Step::Kind::Clear:
        history->clear();
        return;
    }
}

Step nextStep(Random &random, quint32 entryCount) {
    constexpr quint32 mostEntries = 150;
    const auto chance = random() % 100;
    if (chance == 0)
        return { Step::Kind::Clear, 0, false };
    if (entryCount > 0 && chance < 15)
        return { Step::Kind::TogglePin, quint32(random() % entryCount), false };
    if (entryCount > 0 && (chance < 40 || entryCount > mostEntries))
        return { Step::Kind::Delete, quint32(random() % entryCount), false };
    return { Step::Kind::Add, quint32(random()), false };
}

void send(int pipe, const Step &step) {
    if (::write(pipe, &step, sizeof step) != ssize_t(sizeof step))
        ::_exit(1);
}

/// Changes the history until killed; reports before and after each change.
[[noreturn]] void writeForever(ScratchHistory history, Random random, int pipe) {
    for (;;) {
        Step step = nextStep(random, quint32(history->entries().size()));
        send(pipe, step);
        apply(step, history);
        history->waitUntilWritten();
        step.isDone = true;
        send(pipe, step);
    }
}

struct Figures {
    int kills = 0;
    int killsDuringASave = 0;
    int savesThatWereThere = 0;
    qint64 acknowledgedSaves = 0;
    int tornFiles = 0;
    int lostSaves = 0;
    int leftoversBefore = 0;
    int leftoversAfter = 0;

    bool areFine() const {
        return tornFiles == 0 && lostSaves == 0 && leftoversAfter == 0 && acknowledgedSaves > 0
            && killsDuringASave > 0;
    }

    void print() const {
        std::printf(
            "  killed                        %6d times, %d of them during a save\n", kills, killsDuringASave);
        std::printf("  saves in time nevertheless    %6d\n", savesThatWereThere);
        std::printf("  acknowledged saves            %6lld\n", static_cast<long long>(acknowledgedSaves));
        std::printf("  torn files                    %6d\n", tornFiles);
        std::printf("  lost acknowledged saves       %6d\n", lostSaves);
        std::printf("  leftovers of the killed       %6d\n", leftoversBefore);
        std::printf("  leftovers after the next start%6d\n", leftoversAfter);
    }
};

class Stress {
public:
    explicit Stress(quint64 seed)
        : m_random(seed) { }

    void killOnce() {
        const std::vector<Step> steps = runWriterAndKillIt();
        ++m_figures.kills;
        std::optional<Step> unfinished;
        for (const Step &step : steps) {
            unfinished = step;
            if (!step.isDone)
                continue;
            apply(step, m_expected);
            unfinished.reset();
            ++m_figures.acknowledgedSaves;
        }
        m_figures.killsDuringASave += unfinished.has_value();
        m_figures.leftoversBefore += leftoverCount();
        checkFile(unfinished);
        m_figures.leftoversAfter += leftoverCount();
    }

    const Figures &figures() const { return m_figures; }
    QString folder() const { return m_folder.path(); }

private:
    std::vector<Step> runWriterAndKillIt() {
        int ends[2];
        if (::pipe(ends) != 0)
            qFatal("no pipe");
        FileDescriptor reading(ends[0]);
        FileDescriptor writing(ends[1]);
        // Named temporary files are left behind more often.
        const auto temporaryFiles = m_random() % 2 ? ScratchHistory::TemporaryFiles::Named
                                                   : ScratchHistory::TemporaryFiles::UnnamedWherePossible;
        const Random randomOfWriter(m_random());
        const double delay = double(m_random() % 50'000) * 1e-6;
        const pid_t child = ::fork();
        if (child < 0)
            qFatal("no process");
        if (child == 0) {
            // Otherwise the writer would outlive a killed parent.
            reading.reset();
            writeForever(ScratchHistory(m_folder.path(), temporaryFiles), randomOfWriter, writing.get());
        }
        m_clock.block(delay);
        ::kill(child, SIGKILL);
        int status = 0;
        if (::waitpid(child, &status, 0) != child || !WIFSIGNALED(status) || WTERMSIG(status) != SIGKILL)
            qFatal("the writer ended by itself");
        writing.reset();
        return stepsFrom(reading.get());
    }

    static std::vector<Step> stepsFrom(int pipe) {
        std::vector<Step> steps;
        Step step;
        while (::read(pipe, &step, sizeof step) == ssize_t(sizeof step))
            steps.push_back(step);
        return steps;
    }

    void checkFile(const std::optional<Step> &unfinished) {
        if (!isFileWhole())
            ++m_figures.tornFiles;
        const std::optional<Records> found = recordsOf(ScratchHistory(m_folder.path())->entries());
        Records withUnfinished = m_expected;
        if (unfinished)
            apply(*unfinished, withUnfinished);
        if (found == withUnfinished && unfinished)
            ++m_figures.savesThatWereThere;
        else if (found != m_expected)
            ++m_figures.lostSaves;
        m_expected = found.value_or(Records());
    }

    bool isFileWhole() const {
        QFile file(ScratchHistory::filePath(m_folder.path()));
        if (!file.exists())
            return m_expected.empty();
        return file.open(QIODevice::ReadOnly) && HistoryCodec::decode(file.readAll()).has_value();
    }

    int leftoverCount() const {
        const QDir folder(m_folder.path() + QStringLiteral("/Tolmi"));
        QStringList names
            = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        names.removeOne(QStringLiteral("history.json"));
        return int(names.size());
    }

    QTemporaryDir m_folder;
    MainLoopClock m_clock;
    Random m_random;
    Records m_expected;
    Figures m_figures;
};

/// The numeric value of an option; exits if there is none.
quint64 numberOf(const QCommandLineParser &parser, const QString &option) {
    bool isNumber = false;
    const quint64 number = parser.value(option).toULongLong(&isNumber);
    if (!isNumber)
        qFatal("--%s takes a number", qPrintable(option));
    return number;
}
} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const QString kills = QStringLiteral("kills");
    const QString seed = QStringLiteral("seed");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Kills a writer of the history at random moments and checks what is left."));
    parser.addOptions({ { kills, QStringLiteral("How often."), QStringLiteral("N"), QStringLiteral("2000") },
        { seed, QStringLiteral("What the moments and changes follow from."), QStringLiteral("S"),
            QStringLiteral("1") } });
    parser.addHelpOption();
    parser.process(application);

    Stress stress(numberOf(parser, seed));
    std::printf(
        "history-stress: seed %s, in %s\n", qPrintable(parser.value(seed)), qPrintable(stress.folder()));
    for (quint64 count = numberOf(parser, kills); count > 0; --count)
        stress.killOnce();
    stress.figures().print();
    return stress.figures().areFine() ? 0 : 1;
}
