#pragma once

#include <QRasterWindow>

#include <optional>

/// What lies behind all windows of the desktop in the pictures: a slope of colours over the whole screen, and
/// in films the key that the user holds.
class Wallpaper : public QRasterWindow {
    Q_OBJECT

public:
    /// Covers the screen.
    Wallpaper();

    void setScheme(const QString &scheme);
    /// Shows the key for dictation, whose middle is there.
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
