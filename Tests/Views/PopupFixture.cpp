#include "Views/PopupFixture.h"

PopupFixture::PopupFixture()
    : m_model(m_flow.flow, m_pasteboard,
        { way(QStringLiteral("command center")), way(QStringLiteral("profile")),
            way(QStringLiteral("settings")), way(QStringLiteral("updates")), way(QStringLiteral("quit")) }) {
    m_flow.store.setUiLanguage(AppLanguage::English);
    m_flow.store.setRefinementEnabled(false);
}

std::function<void()> PopupFixture::way(const QString &name) {
    return [this, name] {
        m_ways.append(name);
        Q_EMIT waysChanged();
    };
}

void PopupFixture::start(bool isTrusted) {
    m_flow.fakes.hotkey->isTrusted = isTrusted;
    m_flow.setUp();
}

int PopupFixture::promptCount() const {
    return m_flow.fakes.journal.count(QStringLiteral("hotkey.prompt"));
}

QString PopupFixture::copiedText() const {
    return m_pasteboard.content.empty()
        ? QString()
        : QString::fromUtf8(m_pasteboard.content.front().representations.front().second);
}
