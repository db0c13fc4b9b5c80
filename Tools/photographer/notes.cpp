#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>

#include <memory>

namespace {
constexpr char window[] = R"(
import QtQuick

Window {
    title: "Notes"
    flags: Qt.Window | Qt.FramelessWindowHint
    width: 640
    height: 140
    color: "#fdfdfb"
    visible: true

    TextEdit {
        anchors.fill: parent
        anchors.margins: 18
        focus: true
        color: "#22242a"
        font.family: "Inter"
        font.pixelSize: 24
        wrapMode: TextEdit.Wrap
    }
}
)";
} // namespace

/// A minimal editor that shows only its text.
int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(window, {});
    const std::unique_ptr<QObject> notes(component.create());
    return notes ? QGuiApplication::exec() : 1;
}
