#include "TolmiApp/Design/Drawing/SymbolPaths.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Shell/Views.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

namespace {

/// A model for each state of the overlay.
QVariantList overlayModels(QObject *owner) {
    using Kind = DictationState::Kind;
    const QList<DictationState> states { Kind::Idle, Kind::Recording, Kind::Transcribing,
        Kind::OptimizingQuality, Kind::Refining, Kind::Pasting, Kind::Done,
        DictationState::error(QStringLiteral("No microphone.")) };
    QVariantList models;
    for (const DictationState &state : states) {
        auto *model = new OverlayViewModel(owner);
        model->setState(state);
        model->setLanguage(AppLanguage::English);
        model->setAudioLevel(0.55);
        models.append(QVariant::fromValue(model));
    }
    return models;
}

/// Saves every page in every scheme and language to a folder, then quits.
class Photographer : public QObject {
public:
    Photographer(QQuickWindow &window, QDir folder)
        : m_window(window)
        , m_folder(std::move(folder)) {
        for (const QString &page : m_window.property("pages").toStringList()) {
            for (const QString &look : { QStringLiteral("dark-en"), QStringLiteral("light-ro") })
                m_shots.append({ page, look });
        }
        connect(&m_settle, &QTimer::timeout, this, &Photographer::takeNext);
        m_settle.setInterval(900);
        m_settle.start();
        pose();
    }

private:
    void pose() {
        m_window.setProperty("page", m_shots.front().first);
        m_window.setProperty("isDark", m_shots.front().second.startsWith(QStringLiteral("dark")));
        m_window.setProperty("isRomanian", m_shots.front().second.endsWith(QStringLiteral("ro")));
    }

    void takeNext() {
        const auto [page, look] = m_shots.takeFirst();
        const QString path = m_folder.filePath(page + QLatin1Char('-') + look + QStringLiteral(".png"));
        const bool isSaved = m_window.grabWindow().convertToFormat(QImage::Format_RGB888).save(path);
        if (!isSaved)
            qCritical("cannot write %s", qUtf8Printable(path));
        if (!isSaved || m_shots.isEmpty())
            return QCoreApplication::exit(isSaved ? 0 : 1);
        pose();
    }

    QQuickWindow &m_window;
    QDir m_folder;
    QList<std::pair<QString, QString>> m_shots;
    QTimer m_settle;
};

} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows what the interface of Tolmi is made of."));
    parser.addHelpOption();
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
        QStringLiteral("Saves every page, dark and light, into <folder> and ends."),
        QStringLiteral("folder"));
    parser.addOption(screenshot);
    parser.process(application);

    Views::prepareApplication();
    QQmlApplicationEngine engine;
    Views::prepareEngine(engine);
    engine.setInitialProperties({ { QStringLiteral("symbolNames"), SymbolPaths::names() },
        { QStringLiteral("overlayModels"), overlayModels(&application) } });
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/TolmiGallery/Gallery.qml")));
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window == nullptr)
        return 1;
    std::unique_ptr<Photographer> photographer;
    if (parser.isSet(screenshot)) {
        QDir folder(parser.value(screenshot));
        folder.mkpath(QStringLiteral("."));
        photographer = std::make_unique<Photographer>(*window, folder);
    }
    return QGuiApplication::exec();
}
