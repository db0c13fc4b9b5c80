#include "Views/ViewsFixture.h"

#include "TolmiApp/Shell/Views.h"

namespace {

QStringList &warnings() {
    static QStringList list;
    return list;
}

QtMessageHandler previousHandler = nullptr;

void collect(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    // The offscreen platform warns whenever a window is raised or faded.
    const bool isOfPlatform = message.startsWith(QStringLiteral("This plugin does not support"));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform)
        warnings().append(message);
    previousHandler(type, context, message);
}

} // namespace

ViewsFixture::ViewsFixture() {
    warnings().clear();
    previousHandler = qInstallMessageHandler(collect);
    Views::prepareEngine(engine);
}

ViewsFixture::~ViewsFixture() {
    qInstallMessageHandler(previousHandler);
    for (const QString &warning : takeWarnings())
        ADD_FAILURE() << warning.toStdString();
}

QStringList ViewsFixture::takeWarnings() {
    return std::exchange(warnings(), {});
}
