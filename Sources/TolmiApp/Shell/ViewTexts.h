#pragma once

#include "TolmiApp/Texts/PlatformTexts.h"

#include <QQmlPropertyMap>

class SettingsStore;

/// The interface's texts for views, each a property that bears its key's name and follows the language of the
/// interface; also `settingsShortcut` and `quitShortcut`, the captions of the two shortcuts.
class ViewTexts final : public QQmlPropertyMap {
    Q_OBJECT

public:
    /// `settings` outlives the texts.
    ViewTexts(const SettingsStore &settings, PlatformTexts texts, QObject *parent = nullptr);

    /// "<Name>: <value>".
    Q_INVOKABLE QString labelled(const QString &name, const QString &value) const;

private:
    void renew();

    const SettingsStore &m_settings;
    const PlatformTexts m_texts;
};
