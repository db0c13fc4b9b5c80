// Cost of the history relative to a lower bound on this machine: a plain write of the same bytes for adding
// an entry, and the JSON library's bare parse of the same file for loading.

#include "Foundation/Error.h"
#include "Platform/Linux/Files/FileDescriptor.h"
#include "ScratchHistory.h"
#include "TolmiApp/History/HistoryCodec.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <rapidjson/document.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
using Work = std::function<void()>;

double milliseconds(const Work &work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + qsizetype(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void require(bool isFine, const char *what) {
    if (isFine)
        return;
    std::perror(what);
    std::exit(1);
}

/// The result of `measure` in a fresh process, like at program start.
double inFreshProcess(const std::function<double()> &measure) {
    int ends[2];
    require(::pipe(ends) == 0, "pipe");
    const FileDescriptor reading(ends[0]);
    const FileDescriptor writing(ends[1]);
    const pid_t child = ::fork();
    require(child >= 0, "fork");
    double result = 0;
    if (child == 0) {
        result = measure();
        const bool isSent = ::write(writing.get(), &result, sizeof result) == ssize_t(sizeof result);
        ::_exit(isSent ? 0 : 1);
    }
    int status = 0;
    require(::waitpid(child, &status, 0) == child && status == 0, "the measuring process");
    require(::read(reading.get(), &result, sizeof result) == ssize_t(sizeof result), "read");
    return result;
}

FinishedDictation dictation(int number) {
    return { .rawText
        = QStringLiteral("asta este dictarea cu numarul %1, cam cat se spune pana la primul ragaz, "
                         "adica vreo suta patruzeci de litere in limba romana")
              .arg(number),
        .refinedText
        = QStringLiteral("Asta este dictarea cu numărul %1, cam cât se spune până la primul răgaz, "
                         "adică vreo sută patruzeci de litere în limba română.")
              .arg(number),
        .language = QStringLiteral("ro"),
        .durationSeconds = 1.0 + number * 0.0137,
        .pasteTargetAppName = QStringLiteral("Text Editor"),
        .pasteTargetBundleID = QStringLiteral("org.gnome.TextEditor"),
        .pasteTimestamp = Date { 769156800.75 + number * 61.37 },
        .audioFileRelativePath = QStringLiteral("recording-0D5B6F0E-8E44-4C3B-9B1D-3A6E1C2F7A10.wav") };
}

HistoryEntry entry(int number) {
    return { dictation(number), QUuid::createUuid(), { 769156800.25 + number * 61.37 } };
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "open");
    return file.readAll();
}

/// The simplest durable replacement of a file.
void writePlainly(const QString &path, const QByteArray &content) {
    const QByteArray target = QFile::encodeName(path);
    const QByteArray temporary = target + ".new";
    FileDescriptor file(::open(temporary.constData(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600));
    require(file.isValid(), "open");
    for (qsizetype done = 0; done < content.size();) {
        const ssize_t written
            = ::write(file.get(), content.constData() + done, size_t(content.size() - done));
        require(written > 0, "write");
        done += written;
    }
    require(::fdatasync(file.get()) == 0, "fdatasync");
    require(::rename(temporary.constData(), target.constData()) == 0, "rename");
}

void makeHistory(const QString &folder, int entryCount) {
    QList<HistoryEntry> entries;
    for (int number = 0; number < entryCount; ++number)
        entries.append(entry(number));
    require(QDir().mkpath(folder + QStringLiteral("/Tolmi")), "mkdir");
    writePlainly(ScratchHistory::filePath(folder), HistoryCodec::encode(entries).value());
}

double parsingTime(const QString &path) {
    const QByteArray json = contentOf(path);
    rapidjson::Document document;
    const double time = milliseconds([&] { document.Parse(json.constData()); });
    require(!document.HasParseError(), "the parse");
    return time;
}

void printRow(const char *what, double ours, double reference, const char *bound) {
    std::printf(
        "  %-34s %9.2f ms %9.2f ms   ratio %5.2f   %s\n", what, ours, reference, ours / reference, bound);
}

void measureLoading(const QString &folder, int roundCount) {
    std::vector<double> loading;
    std::vector<double> parsing;
    for (int round = 0; round < roundCount; ++round) {
        parsing.push_back(inFreshProcess([&] { return parsingTime(ScratchHistory::filePath(folder)); }));
        loading.push_back(
            inFreshProcess([&] { return milliseconds([&folder] { new ScratchHistory(folder); }); }));
    }
    printRow("load / library's parse", median(loading), median(parsing), "at most 2.0");
}

void measureAdding(const QString &folder, int roundCount, const char *bound) {
    ScratchHistory history(folder);
    const QString other = folder + QStringLiteral("/plain.json");
    const auto addAndWrite = [&history](int number) {
        history->add(dictation(number));
        history->waitUntilWritten();
    };
    // A user's first dictation takes at least as long.
    history->waitUntilWritten();
    const double firstOnMainThread = milliseconds([&] { history->add(dictation(0)); });
    history->waitUntilWritten();
    const double pinOnMainThread = milliseconds([&] { history->togglePin(history->entries().front().id); });
    history->waitUntilWritten();
    std::vector<double> adding;
    std::vector<double> writing;
    for (int round = 0; round < roundCount; ++round) {
        const QByteArray json = contentOf(ScratchHistory::filePath(folder));
        writing.push_back(milliseconds([&] { writePlainly(other, json); }));
        adding.push_back(milliseconds([&] { addAndWrite(round); }));
    }
    printRow("add / plain write", median(adding), median(writing), bound);
    printRow("main thread, first add / plain", firstOnMainThread, median(writing), "once a start");
    printRow("main thread, pin / plain", pinOnMainThread, median(writing), "");
}

void measure(int entryCount, int roundCount, const char *boundOfAdding) {
    const QTemporaryDir folder(QDir::currentPath() + QStringLiteral("/history-benchmark-XXXXXX"));
    require(folder.isValid(), "the folder");
    inFreshProcess([&] {
        makeHistory(folder.path(), entryCount);
        return 0.0;
    });
    const qint64 size = QFile(ScratchHistory::filePath(folder.path())).size();
    std::printf("%d entries, %.1f MB, medians of %d rounds\n", entryCount, double(size) / 1e6, roundCount);
    measureLoading(folder.path(), roundCount);
    measureAdding(folder.path(), roundCount, boundOfAdding);
}
} // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::printf("The history in %s\n", qPrintable(QDir::currentPath()));
    measure(10'000, 21, "at most 3.0");
    measure(100'000, 11, "at most 2.0");
}
