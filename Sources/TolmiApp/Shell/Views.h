#pragma once

class QQmlEngine;

/// The interface's side of the program: the QML module "Tolmi".
namespace Views {

/// To be called once, after the application object is made and before the first window: typeface and text
/// rendering.
void prepareApplication();

/// Makes the module known to an engine, so that "import Tolmi" works in it.
void prepareEngine(QQmlEngine &engine);

} // namespace Views
