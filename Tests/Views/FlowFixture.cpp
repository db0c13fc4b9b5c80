#include "Views/FlowFixture.h"

#include <QMetaEnum>

QString FlowFixture::copiedText() const {
    for (const PasteboardItem &item : pasteboard.content) {
        for (const auto &[type, bytes] : item.representations) {
            if (type == pasteboardTextType)
                return QString::fromUtf8(bytes);
        }
    }
    return {};
}

void FlowFixture::reach(const QString &kind) {
    const int value = QMetaEnum::fromType<DictationState::Kind>().keyToValue(kind.toLatin1().constData());
    StudioFixture::reach(DictationState::Kind(value));
}

void FlowFixture::dictateText(const QString &text) {
    dictate(text);
    clock.advance(2);
}

void FlowFixture::setLevel(double level) {
    fakes.live->level = level;
}
