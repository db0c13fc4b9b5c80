#include "Platform/Linux/Clipboard/ToolkitClipboard.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace {
const QString toolkitImageType = QStringLiteral("application/x-qt-image");

QByteArray png(const QMimeData &data) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    qvariant_cast<QImage>(data.imageData()).save(&buffer, "PNG");
    return bytes;
}
} // namespace

std::vector<PasteboardItem> ToolkitClipboard::items() {
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data)
        return {};
    PasteboardItem item;
    if (data->hasText())
        item.representations.emplace_back(pasteboardTextType, data->text().toUtf8());
    for (const QString &type : data->formats()) {
        if (type == toolkitImageType)
            item.representations.emplace_back(QStringLiteral("image/png"), png(*data));
        else if (type != pasteboardTextType && type != QLatin1String("text/plain"))
            item.representations.emplace_back(type, data->data(type));
    }
    return item.representations.empty() ? std::vector<PasteboardItem>() : std::vector { item };
}
