// A window with a text field, for tests to type and paste into, that also serves as the other program at the
// clipboard. It says on standard output what happens to it, and takes commands on standard input, all as one
// JSON object a line:
//   says {"ready":true} when the text field has the focus, {"text":...} when the text changes
//   {"copy":{TYPE:BASE64,...}}  puts that on the clipboard and says {"copied":true}
//                               ("color" holds the name of a color; "slow" adds a type that takes a second to
//                               give; "held" one that is given only once the next command is there, of which
//                               it says {"asked":true})
//   {"read":[TYPE,...]}         says {"clipboard":{TYPE:BASE64,...}}
//   {"grab":true}               takes the keyboard for itself and says {"grabbed":true}
// With --menu-bar it has a menu bar, which the Alt key opens.

#include <QApplication>
#include <QClipboard>
#include <QColor>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMainWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSocketNotifier>
#include <QThread>

#include <poll.h>
#include <unistd.h>

#include <iostream>

namespace {
void say(const QJsonObject &object) {
    std::cout << QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString() << std::endl;
}

QByteArray fromBase64(const QJsonValue &value) {
    return QByteArray::fromBase64(value.toString().toLatin1());
}

class SlowData final : public QMimeData {
protected:
    QVariant retrieveData(const QString &type, QMetaType preferredType) const override {
        if (type == QLatin1String("application/x-slow"))
            QThread::sleep(1);
        if (type == QLatin1String("application/x-held"))
            holdBack();
        return QMimeData::retrieveData(type, preferredType);
    }

private:
    static void holdBack() {
        say({ { QStringLiteral("asked"), true } });
        pollfd input { STDIN_FILENO, POLLIN, 0 };
        ::poll(&input, 1, -1);
    }
};

void copy(const QJsonObject &content) {
    auto *data = new SlowData;
    for (auto entry = content.begin(); entry != content.end(); ++entry) {
        if (entry.key() == QLatin1String("slow"))
            data->setData(QStringLiteral("application/x-slow"), "slow");
        else if (entry.key() == QLatin1String("held"))
            data->setData(QStringLiteral("application/x-held"), "held");
        else if (entry.key() == QLatin1String("color"))
            data->setColorData(QColor(entry.value().toString()));
        else if (entry.key() == QLatin1String("image/png"))
            data->setImageData(QImage::fromData(fromBase64(entry.value())));
        else
            data->setData(entry.key(), fromBase64(entry.value()));
    }
    QGuiApplication::clipboard()->setMimeData(data);
    say({ { QStringLiteral("copied"), true } });
}

void read(const QJsonArray &types) {
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    QJsonObject content;
    for (const auto &type : types) {
        if (data->hasFormat(type.toString()))
            content.insert(type.toString(), QLatin1String(data->data(type.toString()).toBase64()));
    }
    if (data->hasColor())
        content.insert(QStringLiteral("color"), data->colorData().value<QColor>().name());
    say({ { QStringLiteral("clipboard"), content } });
}

void obey(const QByteArray &line) {
    const QJsonObject command = QJsonDocument::fromJson(line).object();
    if (command.contains(QLatin1String("copy")))
        copy(command.value(QLatin1String("copy")).toObject());
    if (command.contains(QLatin1String("read")))
        read(command.value(QLatin1String("read")).toArray());
    if (command.contains(QLatin1String("grab"))) {
        QApplication::focusWidget()->grabKeyboard();
        say({ { QStringLiteral("grabbed"), true } });
    }
}
} // namespace

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Test editor"));
    auto *editor = new QPlainTextEdit;
    window.setCentralWidget(editor);
    if (application.arguments().contains(QStringLiteral("--menu-bar")))
        window.menuBar()->addMenu(QStringLiteral("&File"))->addAction(QStringLiteral("&Quit"));
    QObject::connect(editor, &QPlainTextEdit::textChanged, editor, [editor] {
        say({ { QStringLiteral("text"), editor->toPlainText() } });
    });
    QObject::connect(&application, &QApplication::focusChanged, editor, [editor](QWidget *, QWidget *now) {
        if (now == editor)
            say({ { QStringLiteral("ready"), true } });
    });

    QByteArray input;
    QSocketNotifier notifier(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, editor, [&input] {
        char buffer[65536];
        const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            QCoreApplication::quit();
            return;
        }
        input.append(buffer, qsizetype(count));
        for (qsizetype end = input.indexOf('\n'); end >= 0; end = input.indexOf('\n')) {
            obey(input.left(end));
            input.remove(0, end + 1);
        }
    });
    window.resize(600, 400);
    window.show();
    return application.exec();
}
