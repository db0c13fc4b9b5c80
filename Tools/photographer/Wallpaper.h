#pragma once

#include <QRasterWindow>

#include <optional>

/// The background of the pictures: a gradient over the whole screen, and in films the key that the user
/// holds.
class Wallpaper : public QRasterWindow {
    Q_OBJECT

public:
    /// Covers the screen.
    Wallpaper();

    void setScheme(const QString &scheme);
    /// Shows the dictation key, centred at `place`.
    void showKey(QPoint place);
    void setKeyDown(bool isDown);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintKey(QPainter &painter) const;

    QString m_scheme;
    std::optional<QPoint> m_keyPlace;
    bool m_isKeyDown = false;
};
