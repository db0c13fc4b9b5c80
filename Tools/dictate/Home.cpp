#include "dictate/Home.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace {
// A privileged port where nothing listens: dictations must not reach the machine's real Ollama.
const QString closedEndpoint = QStringLiteral("http://127.0.0.1:9");

bool link(const QString &target, const QString &name) {
    QDir().mkpath(QFileInfo(name).path());
    return QFileInfo::exists(name) || QFile::link(QFileInfo(target).absoluteFilePath(), name);
}
} // namespace

void addHomeOptions(QCommandLineParser &parser) {
    parser.addOption({ "language", "en, ro or auto", "code", "auto" });
    parser.addOption({ "whisper-cli", "the whisper-cli to use", "path" });
    parser.addOption({ "model", "the speech model to use", "path" });
}

HomeOptions homeOptions(const QCommandLineParser &parser) {
    return { parser.value("language"), parser.value("whisper-cli"), parser.value("model") };
}

bool installWhisperCLI(const QString &path) {
    return link(path, dataFolder() + "/tools/whisper-cli");
}

bool prepareHome(const HomeOptions &options) {
    QJsonObject settings = options.settings;
    settings.insert("tolmi.language", options.language);
    if (!settings.contains("tolmi.uiLanguage"))
        settings.insert("tolmi.uiLanguage", "en");
    if (!settings.contains("tolmi.onboarding.completed"))
        settings.insert("tolmi.onboarding.completed", true);
    if (!settings.contains("tolmi.ollamaEndpoint"))
        settings.insert("tolmi.ollamaEndpoint", closedEndpoint);
    if (!options.model.isEmpty())
        settings.insert("tolmi.modelPath", options.model);
    QDir().mkpath(QFileInfo(settingsPath()).path());
    QFile file(settingsPath());
    const bool isInstalled = options.whisperCLI.isEmpty() || installWhisperCLI(options.whisperCLI);
    return isInstalled && file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(settings).toJson()) > 0;
}

QString dataFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Tolmi";
}

QString settingsPath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Tolmi/settings.json";
}

QStringList keptRecordings() {
    const QDir folder(dataFolder() + "/audio-cache");
    QStringList paths;
    for (const QFileInfo &file : folder.entryInfoList(QDir::Files, QDir::Time))
        paths.append(file.filePath());
    return paths;
}

QJsonArray historyEntries() {
    QFile file(dataFolder() + "/history.json");
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}
