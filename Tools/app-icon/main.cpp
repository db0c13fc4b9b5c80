#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

/// Renders a vector picture: tolmi-app-icon PICTURE.svg SIDE RESULT.png
int main(int argc, char **argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 4) {
        qCritical("usage: tolmi-app-icon PICTURE.svg SIDE RESULT.png");
        return 2;
    }
    QSvgRenderer picture(arguments[1]);
    const int side = arguments[2].toInt();
    if (!picture.isValid() || side <= 0) {
        qCritical("cannot draw %s at %s pixels", qUtf8Printable(arguments[1]), qUtf8Printable(arguments[2]));
        return 1;
    }
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    painter.end();
    if (!image.save(arguments[3])) {
        qCritical("cannot write %s", qUtf8Printable(arguments[3]));
        return 1;
    }
    return 0;
}
