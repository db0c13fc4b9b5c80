#pragma once

#include <QImage>
#include <QObject>
#include <QString>

class SettingsStore;

/// The user as a chip shows them: picture and name. It follows the settings.
class ProfileChipModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString displayName READ displayName NOTIFY displayNameChanged)
    /// The user's own picture; null when there is none, and then the symbol stands in its place.
    Q_PROPERTY(QImage picture READ picture NOTIFY pictureChanged)
    /// The symbol of the preset avatar.
    Q_PROPERTY(QString symbol READ symbol NOTIFY symbolChanged)

public:
    /// `settings` outlives the model.
    explicit ProfileChipModel(SettingsStore &settings, QObject *parent = nullptr);

    const QString &displayName() const;
    const QImage &picture() const { return m_picture; }
    QString symbol() const;

    /// Reads the picture again, which may have changed or gone without the settings having been told.
    void refreshPicture();

Q_SIGNALS:
    void displayNameChanged();
    void pictureChanged();
    void symbolChanged();

private:
    SettingsStore &m_settings;
    QImage m_picture;
};
