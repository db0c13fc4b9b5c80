#include "TolmiApp/Dictation/PastableText.h"

namespace {
constexpr QChar lineFeed(u'\n');

bool isHarmful(QChar character) {
    return character.category() == QChar::Other_Control && character != lineFeed && character != u'\t';
}
} // namespace

QString pastableText(QString text, bool isForTerminal) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', lineFeed);
    text.removeIf(isHarmful);
    return isForTerminal ? text.replace(lineFeed, u' ') : text;
}
