#include "TolmiApp/Shell/Views.h"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>

// Written by the build for every module that has no plugin to load it.
void qml_register_types_Tolmi();

namespace Views {

void prepareApplication() {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(13);
    // Coloured fringes do not belong into an interface of greys, and hinting would move every letter to whole
    // pixels.
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    QGuiApplication::setFont(font);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    // Some machines draw all windows with the graphics context of the first one, and one without an alpha
    // channel leaves the translucent windows empty.
    QQuickWindow::setDefaultAlphaBuffer(true);
}

void prepareEngine(QQmlEngine &engine) {
    // The engine calls it when the module is imported; mentioning it keeps the linker from leaving it out.
    [[maybe_unused]] static void (*const volatile registration)() = &qml_register_types_Tolmi;
    engine.addImportPath(QStringLiteral(":/qt/qml"));
}

} // namespace Views
