#pragma once

#include "Foundation/ObservableObject.h"

#include <QImage>
#include <QString>

class SettingsStore;

/// The user as a chip shows them: picture and name. It follows the settings.
class ProfileChipModel final : public ObservableObject {
    Q_OBJECT
    /// The user's own picture; null when there is none, and then the symbol stands in its place.
    TOLMI_PUBLISHED_READONLY(QImage, picture, setPicture)
    Q_PROPERTY(QString displayName READ displayName NOTIFY displayNameChanged)
    /// The symbol of the preset avatar.
    Q_PROPERTY(QString symbol READ symbol NOTIFY symbolChanged)

public:
    /// `settings` outlives the model.
    explicit ProfileChipModel(SettingsStore &settings, QObject *parent = nullptr);

    const QString &displayName() const;
    QString symbol() const;

    /// Reads the picture again, which may have changed or gone without the settings having been told.
    void refreshPicture();

Q_SIGNALS:
    void displayNameChanged();
    void symbolChanged();

private:
    SettingsStore &m_settings;
};
