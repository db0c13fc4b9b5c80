#include "dictate/Home.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

namespace {
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

bool prepareHome(const HomeOptions &options) {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Tolmi";
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Tolmi";
    QJsonObject settings { { "tolmi.language", options.language }, { "tolmi.uiLanguage", "en" } };
    if (!options.model.isEmpty())
        settings.insert("tolmi.modelPath", options.model);
    QDir().mkpath(config);
    QFile file(config + "/settings.json");
    return link(options.whisperCLI, data + "/tools/whisper-cli") && file.open(QIODevice::WriteOnly)
        && file.write(QJsonDocument(settings).toJson()) > 0;
}
