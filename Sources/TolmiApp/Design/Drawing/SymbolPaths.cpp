#include "TolmiApp/Design/Drawing/SymbolPaths.h"

#include <QHash>
#include <QPainter>
#include <QPainterPathStroker>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace SymbolPaths {

namespace {

constexpr double pi = std::numbers::pi;

/// Parses path notation. Only our own symbols are parsed, so an unknown letter is a bug.
class NotationReader {
public:
    explicit NotationReader(QLatin1String notation)
        : m_rest(notation) {
        m_path.setFillRule(Qt::WindingFill);
    }

    QPainterPath read() {
        skipBlanks();
        while (!m_rest.isEmpty()) {
            const char first = m_rest.front().toLatin1();
            if (std::isalpha(static_cast<unsigned char>(first)) != 0) {
                m_command = first;
                m_rest = m_rest.mid(1);
            }
            readSegment();
            skipBlanks();
        }
        return m_path;
    }

private:
    bool isRelative() const { return std::islower(static_cast<unsigned char>(m_command)) != 0; }

    void skipBlanks() {
        while (
            !m_rest.isEmpty() && (m_rest.front() == QLatin1Char(' ') || m_rest.front() == QLatin1Char(',')))
            m_rest = m_rest.mid(1);
    }

    double number() {
        skipBlanks();
        qsizetype length = 0;
        bool hasPoint = false;
        for (; length < m_rest.size(); ++length) {
            const char next = m_rest.at(length).toLatin1();
            const bool isSign = length == 0 && next == '-';
            const bool isPoint = next == '.' && !hasPoint;
            hasPoint = hasPoint || isPoint;
            if (!isSign && !isPoint && std::isdigit(static_cast<unsigned char>(next)) == 0)
                break;
        }
        const double value = QByteArray::fromRawData(m_rest.data(), length).toDouble();
        m_rest = m_rest.mid(length);
        return value;
    }

    /// The flags of an arc may follow each other without separators.
    bool flag() {
        skipBlanks();
        const bool value = m_rest.front() == QLatin1Char('1');
        m_rest = m_rest.mid(1);
        return value;
    }

    QPointF point() {
        const double x = number();
        const double y = number();
        return QPointF(x, y) + (isRelative() ? m_current : QPointF());
    }

    void readSegment() {
        switch (std::toupper(static_cast<unsigned char>(m_command))) {
        case 'M':
            m_current = point();
            m_path.moveTo(m_current);
            m_start = m_current;
            m_command = isRelative() ? 'l' : 'L';
            return;
        case 'L':
            return lineTo(point());
        case 'H':
            return lineTo({ number() + (isRelative() ? m_current.x() : 0), m_current.y() });
        case 'V':
            return lineTo({ m_current.x(), number() + (isRelative() ? m_current.y() : 0) });
        case 'C': {
            const QPointF first = point();
            return curveTo(first);
        }
        case 'S':
            return curveTo(2 * m_current - m_lastControl);
        case 'Q': {
            const QPointF control = point();
            m_current = point();
            m_path.quadTo(control, m_current);
            return;
        }
        case 'A':
            return arcTo();
        case 'Z':
            m_path.closeSubpath();
            m_current = m_start;
            return;
        default:
            qFatal("unknown letter in the notation of a symbol");
        }
    }

    void lineTo(QPointF end) {
        // A zero-length line is a dot, which QPainter would not draw.
        m_path.lineTo(end == m_current ? end + QPointF(0.01, 0) : end);
        m_current = end;
    }

    void curveTo(QPointF first) {
        m_lastControl = point();
        m_current = point();
        m_path.cubicTo(first, m_lastControl, m_current);
    }

    /// A circular arc, given by radius, two flags and end point.
    void arcTo() {
        double radius = number();
        number();
        number();
        const bool isLarge = flag();
        const bool isClockwise = flag();
        const QPointF start = m_current;
        m_current = point();

        const QPointF half = (m_current - start) / 2;
        const double halfLength = std::hypot(half.x(), half.y());
        radius = std::max(radius, halfLength);
        const double height = std::sqrt(radius * radius - halfLength * halfLength);
        const double side = isLarge == isClockwise ? -1 : 1;
        const QPointF normal(-half.y() / halfLength, half.x() / halfLength);
        const QPointF center = start + half + side * height * normal;

        const double from = std::atan2(start.y() - center.y(), start.x() - center.x());
        double sweep = std::atan2(m_current.y() - center.y(), m_current.x() - center.x()) - from;
        if (isClockwise && sweep < 0)
            sweep += 2 * pi;
        if (!isClockwise && sweep > 0)
            sweep -= 2 * pi;
        const QRectF square(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
        m_path.arcTo(square, -from * 180 / pi, -sweep * 180 / pi);
    }

    QLatin1String m_rest;
    char m_command = 'M';
    QPainterPath m_path;
    QPointF m_current;
    QPointF m_start;
    QPointF m_lastControl;
};

QPainterPath path(const char *notation) {
    return fromNotation(QLatin1String(notation));
}

QPainterPath circle(double x, double y, double radius) {
    QPainterPath result;
    result.addEllipse(QPointF(x, y), radius, radius);
    return result;
}

QPainterPath roundedRectangle(double x, double y, double width, double height, double radius) {
    QPainterPath result;
    result.addRoundedRect(x, y, width, height, radius, radius);
    return result;
}

/// A four-pointed star; the smaller `waist`, the thinner its points.
QPainterPath star(double x, double y, double radius, double waist) {
    const double w = radius * waist;
    QPainterPath result;
    result.moveTo(x, y - radius);
    result.quadTo(x + w, y - w, x + radius, y);
    result.quadTo(x + w, y + w, x, y + radius);
    result.quadTo(x - w, y + w, x - radius, y);
    result.quadTo(x - w, y - w, x, y - radius);
    return result;
}

QPointF onCircle(double radius, double angle) {
    return QPointF(12 + radius * std::cos(angle), 12 + radius * std::sin(angle));
}

void arcOnCircle(QPainterPath &target, double radius, double from, double to) {
    target.arcTo(
        QRectF(12 - radius, 12 - radius, 2 * radius, 2 * radius), -from * 180 / pi, -(to - from) * 180 / pi);
}

QPainterPath gearWheel() {
    constexpr int teeth = 8;
    constexpr double rootRadius = 6.7;
    constexpr double tipRadius = 9.2;
    constexpr double rootHalfAngle = 0.27;
    constexpr double tipHalfAngle = 0.155;
    QPainterPath result(onCircle(rootRadius, -pi / 2 - rootHalfAngle));
    for (int tooth = 0; tooth < teeth; ++tooth) {
        const double middle = 2 * pi * tooth / teeth - pi / 2;
        const double next = middle + 2 * pi / teeth;
        result.lineTo(onCircle(tipRadius, middle - tipHalfAngle));
        arcOnCircle(result, tipRadius, middle - tipHalfAngle, middle + tipHalfAngle);
        result.lineTo(onCircle(rootRadius, middle + rootHalfAngle));
        arcOnCircle(result, rootRadius, middle + rootHalfAngle, next - rootHalfAngle);
    }
    result.closeSubpath();
    return result;
}

/// The marks around a dial, clockwise from bottom left to bottom right.
QPainterPath dialMarks() {
    QPainterPath result;
    result.setFillRule(Qt::WindingFill);
    for (int degrees = 150; degrees <= 390; degrees += 40) {
        const double angle = degrees * pi / 180;
        result.addEllipse(QPointF(12 + 9.7 * std::cos(angle), 13 + 9.7 * std::sin(angle)), 0.95, 0.95);
    }
    return result;
}

Step line(const QPainterPath &path, double strokeFactor = 1) {
    return { Step::Kind::Line, path, strokeFactor };
}

Step fill(const QPainterPath &path) {
    return { Step::Kind::Fill, path };
}

Step solid(const QPainterPath &path) {
    return { Step::Kind::Solid, path };
}

Step cutLine(const QPainterPath &path, double strokeFactor = 1) {
    return { Step::Kind::CutLine, path, strokeFactor };
}

Step cutFill(const QPainterPath &path) {
    return { Step::Kind::CutFill, path };
}

using Drawings = QHash<QString, QList<Step>>;

void addPeople(Drawings &drawings) {
    const QPainterPath disc = circle(12, 12, 9);
    drawings[QStringLiteral("person.crop.circle")] = { line(disc), line(circle(12, 9.8, 2.9)),
        line(path("M6.3 18.7c.9-2.7 3.1-4.1 5.7-4.1s4.8 1.4 5.7 4.1")) };
    drawings[QStringLiteral("person.crop.circle.fill")] = { solid(disc), cutFill(circle(12, 9.6, 3)),
        cutFill(path("M6.2 17.2c1.2-2 3.3-3 5.8-3s4.6 1 5.8 3a7.8 7.8 0 0 1-11.6 0z")) };
    drawings[QStringLiteral("briefcase.circle.fill")]
        = { solid(disc), cutLine(roundedRectangle(6.6, 9.6, 10.8, 7, 1.2), 0.8),
              cutLine(path("M10 9.6V8.3a1 1 0 0 1 1-1h2a1 1 0 0 1 1 1v1.3M6.6 12.9h10.8"), 0.8) };
}

void addVoice(Drawings &drawings) {
    const QPainterPath disc = circle(12, 12, 9);
    const QPainterPath fiveBars = path("M7.5 11v2M9.75 9v6M12 6.8v10.4M14.25 9.4v5.2M16.5 11v2");
    const QPainterPath threeBars = path("M7.8 10.2v3.6M12 7.2v9.6M16.2 10.2v3.6");
    drawings[QStringLiteral("waveform.circle")] = { line(disc), line(fiveBars, 0.92) };
    drawings[QStringLiteral("waveform.circle.fill")] = { solid(disc), cutLine(fiveBars, 0.92) };
    drawings[QStringLiteral("waveform")]
        = { line(path("M3 10.8v2.4M6 7.8v8.4M9 4v16M12 8.6v6.8M15 5.6v12.8M18 8.6v6.8M21 10.8v2.4")) };
    drawings[QStringLiteral("waveform.circle@small")] = { line(disc), line(threeBars, 1.05) };
    drawings[QStringLiteral("waveform.circle.fill@small")] = { solid(disc), cutLine(threeBars, 1.1) };
    drawings[QStringLiteral("waveform@small")] = { line(path("M3 9v6M7 6v12M11 3v18M15 7v10M19 9v6"), 1.15) };
    drawings[QStringLiteral("mic.fill")] = { solid(roundedRectangle(9, 3, 6, 11.4, 3)),
        line(path("M5.9 11.2a6.1 6.1 0 0 0 12.2 0M12 17.3V21M8.7 21h6.6")) };
    drawings[QStringLiteral("speaker.wave.2.fill")] = { solid(path("M2.8 9.6v4.8h3.4l4.6 3.9V5.7L6.2 9.6z")),
        line(path("M14.6 9.2a4.4 4.4 0 0 1 0 5.6M17.6 6.6a8.4 8.4 0 0 1 0 10.8")) };
    drawings[QStringLiteral("play.fill")]
        = { solid(path("M7.6 5v14a.6.6 0 0 0 .9.5l11.3-7a.6.6 0 0 0 0-1L8.5 4.5a.6.6 0 0 0-.9.5z")) };
    drawings[QStringLiteral("pause.fill")] = { line(path("M8.2 5.4v13.2M15.8 5.4v13.2"), 2.2) };
}

void addMarks(Drawings &drawings) {
    const QPainterPath disc = circle(12, 12, 9);
    const QPainterPath triangle = path(
        "M10.1 4.3L2.9 17a2.2 2.2 0 0 0 1.9 3.3h14.4a2.2 2.2 0 0 0 1.9-3.3L13.9 4.3a2.2 2.2 0 0 0-3.8 0z");
    const QPainterPath shield
        = path("M12 2.9l6.9 2.5a1.2 1.2 0 0 1 .8 1.1v4.9c0 4.5-3 7.9-7.7 9.7-4.7-1.8-7.7-5.2"
               "-7.7-9.7V6.5a1.2 1.2 0 0 1 .8-1.1z");
    const QPainterPath seal
        = path("M15.14 4.42A3.5 3.5 0 0 1 19.58 8.86A3.5 3.5 0 0 1 19.58 15.14A3.5 3.5 0 0 1 "
               "15.14 19.58A3.5 3.5 0 0 1 8.86 19.58A3.5 3.5 0 0 1 4.42 15.14A3.5 3.5 0 0 1 "
               "4.42 8.86A3.5 3.5 0 0 1 8.86 4.42A3.5 3.5 0 0 1 15.14 4.42z");
    drawings[QStringLiteral("circle")] = { line(disc) };
    drawings[QStringLiteral("circle.inset.filled")] = { line(disc), fill(circle(12, 12, 5.2)) };
    drawings[QStringLiteral("checkmark")] = { line(path("M4.8 12.8l4.7 4.7L19.2 7"), 1.15) };
    drawings[QStringLiteral("checkmark.circle.fill")]
        = { solid(disc), cutLine(path("M7.9 12.4l2.8 2.8 5.4-6.1"), 1.08) };
    drawings[QStringLiteral("checkmark.seal.fill")]
        = { solid(seal), cutLine(path("M8.3 12.4l2.6 2.6 4.9-5.5"), 1.08) };
    drawings[QStringLiteral("exclamationmark.triangle.fill")]
        = { solid(triangle), cutLine(path("M12 9v4.5"), 1.12), cutFill(circle(12, 16.9, 1.25)) };
    drawings[QStringLiteral("exclamationmark.shield.fill")]
        = { solid(shield), cutLine(path("M12 7.7v4.8"), 1.12), cutFill(circle(12, 16, 1.25)) };
    drawings[QStringLiteral("xmark.octagon.fill")]
        = { solid(path("M8.3 3h7.4L21 8.3v7.4L15.7 21H8.3L3 15.7V8.3z")),
              cutLine(path("M9.1 9.1l5.8 5.8M14.9 9.1l-5.8 5.8"), 1.08) };
    drawings[QStringLiteral("arrow.right.circle.fill")]
        = { solid(disc), cutLine(path("M7.7 12h8.2M12.5 8.3l3.7 3.7-3.7 3.7"), 1.08) };
    drawings[QStringLiteral("chevron.up.chevron.down")]
        = { line(path("M8.2 9.4L12 5.6l3.8 3.8M8.2 14.6l3.8 3.8 3.8-3.8")) };
}

void addPlaces(Drawings &drawings) {
    const QPainterPath disc = circle(12, 12, 9);
    const QPainterPath loops
        = path("M10 10h4v4h-4zM10 10H8.3a1.7 1.7 0 1 1 1.7-1.7zM14 10V8.3a1.7 1.7 0 1 1 1.7 1.7z"
               "M14 14h1.7a1.7 1.7 0 1 1-1.7 1.7zM10 14v1.7a1.7 1.7 0 1 1-1.7-1.7z");
    const QPainterPath cross
        = path("M9.8 9.8h4.4v4.4H9.8zM9.8 9.8H8.6M9.8 9.8V8.6M14.2 9.8h1.2M14.2 9.8V8.6M14.2 14.2h1.2"
               "M14.2 14.2v1.2M9.8 14.2H8.6M9.8 14.2v1.2");
    drawings[QStringLiteral("command.circle")] = { line(disc), line(loops, 0.78) };
    drawings[QStringLiteral("command.circle@small")] = { line(disc), line(cross, 0.9) };
    drawings[QStringLiteral("clock.arrow.circlepath")] = { line(path("M4.1 7.6A9 9 0 1 1 3.1 13")),
        line(path("M3.5 3.6v4.3h4.3")), line(path("M12 7.2V12l3.3 2.1")) };
    drawings[QStringLiteral("stethoscope")] = {
        line(path("M5.6 3.4H4.8A1.6 1.6 0 0 0 3.2 5v3.1a4.9 4.9 0 0 0 9.8 0V5a1.6 1.6 0 0 0-1.6-1.6h-.8")),
        line(path("M8.1 13v2.7a5.2 5.2 0 0 0 10.4 0v-2.4")), line(circle(18.5, 11, 2.3))
    };
    const QList<Step> gear { line(gearWheel()), line(circle(12, 12, 2.9)) };
    drawings[QStringLiteral("gear")] = gear;
    drawings[QStringLiteral("gearshape")] = gear;
    drawings[QStringLiteral("globe")] = { line(disc), line(path("M3 12h18")),
        line(path("M12 3c2.7 2.6 3.9 5.6 3.9 9s-1.2 6.4-3.9 9c-2.7-2.6-3.9-5.6-3.9-9s1.2-6.4 3.9-9z")) };
    drawings[QStringLiteral("rectangle.on.rectangle")] = { line(roundedRectangle(7, 8.6, 14, 11.6, 2.6)),
        line(path(
            "M7 15.4H5.6A2.6 2.6 0 0 1 3 12.8V6.4a2.6 2.6 0 0 1 2.6-2.6h8.8A2.6 2.6 0 0 1 17 6.4v2.2")) };
}

void addTools(Drawings &drawings) {
    const QPainterPath wand
        = path("M3.7 18.1L13 8.8a1.2 1.2 0 0 1 1.7 0l.5.5a1.2 1.2 0 0 1 0 1.7L5.9 20.3a1.2 1.2 0 0 1"
               "-1.7 0l-.5-.5a1.2 1.2 0 0 1 0-1.7z");
    drawings[QStringLiteral("wand.and.stars")] = { line(wand), line(path("M11.2 10.6l2.2 2.2")),
        fill(star(18.4, 4.9, 2.9, 0.16)), fill(star(8, 4.8, 2, 0.16)), fill(star(19.4, 14.6, 2.1, 0.16)) };
    drawings[QStringLiteral("sparkles")] = { solid(star(10, 13.4, 6.6, 0.2)),
        fill(star(18.6, 5.4, 3.2, 0.16)), fill(star(18.9, 18.9, 2.4, 0.16)) };
    drawings[QStringLiteral("sparkles.rectangle.stack")] = { line(roundedRectangle(3, 10.2, 18, 10.8, 2.6)),
        line(path("M5.6 6.8h12.8M8.2 3.4h7.6")), fill(star(12, 15.6, 3.6, 0.16)) };
    drawings[QStringLiteral("dial.high.fill")]
        = { solid(circle(12, 13, 5.9)), cutLine(path("M12.6 12.4l3-3"), 1.05), fill(dialMarks()) };
    drawings[QStringLiteral("cpu")] = { line(roundedRectangle(5.8, 5.8, 12.4, 12.4, 2.6)),
        line(roundedRectangle(9.6, 9.6, 4.8, 4.8, 1)),
        line(path("M9.3 2.9v2.9M14.7 2.9v2.9M9.3 18.2v2.9M14.7 18.2v2.9M2.9 9.3h2.9M2.9 14.7h2.9M18.2 9.3h2.9"
                  "M18.2 14.7h2.9")) };
    const QPainterPath keyboardCase = roundedRectangle(2.6, 5.8, 18.8, 12.4, 2.6);
    drawings[QStringLiteral("keyboard")] = { line(keyboardCase),
        line(path("M6.4 9.9h0M10.1 9.9h0M13.9 9.9h0M17.6 9.9h0M6.4 14.2h0M17.6 14.2h0M9.6 14.2h4.8")) };
    drawings[QStringLiteral("keyboard@small")]
        = { line(keyboardCase), line(path("M6.8 10h0M12 10h0M17.2 10h0M8.5 14.2h7")) };
    drawings[QStringLiteral("power")] = { line(path("M12 2.9v8.3M7.3 5.9a8.2 8.2 0 1 0 9.4 0")) };
    drawings[QStringLiteral("magnifyingglass")]
        = { line(circle(10.6, 10.6, 6.8)), line(path("M15.6 15.6l5 5")) };
    drawings[QStringLiteral("arrow.triangle.2.circlepath")]
        = { line(path("M3.7 10.4A8.5 8.5 0 0 1 19.4 7.8M20.3 13.6A8.5 8.5 0 0 1 4.6 16.2")),
              line(path("M20 3.4v4.6h-4.6M4 20.6V16h4.6")) };
}

void addDocuments(Drawings &drawings) {
    const QPainterPath pinHead = path("M9.4 3h5.2l.1 6.1c2.4 1 3.6 2.6 3.6 5H5.7c0-2.4 1.2-4 3.6-5z");
    const QPainterPath pinNeedle = path("M12 14.1V21");
    drawings[QStringLiteral("pin")] = { line(pinHead), line(pinNeedle) };
    drawings[QStringLiteral("pin.fill")] = { solid(pinHead), line(pinNeedle) };
    drawings[QStringLiteral("trash")] = { line(
        path("M3.8 6.2h16.4M8.8 6.2V4.7A1.7 1.7 0 0 1 10.5 3h3a1.7 1.7 0 0 1 1.7 1.7v1.5M5.6 6.2l.8 12.4"
             "A2.6 2.6 0 0 0 9 21h6a2.6 2.6 0 0 0 2.6-2.4l.8-12.4M10 10.4v6.2M14 10.4v6.2")) };
    drawings[QStringLiteral("folder")] = { line(
        path("M3 17.4V6.4a2.6 2.6 0 0 1 2.6-2.6h3.3a2.6 2.6 0 0 1 1.8.8l1.4 1.6h6.3A2.6 2.6 0 0 1 21 8.8v8.6"
             "a2.6 2.6 0 0 1-2.6 2.6H5.6A2.6 2.6 0 0 1 3 17.4z")) };
    drawings[QStringLiteral("square.and.arrow.up")] = { line(path("M12 3v11.6M8 6.7L12 3l4 3.7")),
        line(path("M7.8 10.2H6.6A2.6 2.6 0 0 0 4 12.8v5.6A2.6 2.6 0 0 0 6.6 21h10.8a2.6 2.6 0 0 0 "
                  "2.6-2.6v-5.6a2.6 2.6 "
                  "0 0 0-2.6-2.6h-1.2")) };
    drawings[QStringLiteral("doc.on.doc")] = { line(roundedRectangle(8.2, 8.2, 12, 12.8, 2.6)),
        line(path(
            "M15.6 8.2V5.6A2.6 2.6 0 0 0 13 3H6.4a2.6 2.6 0 0 0-2.6 2.6v7.6a2.6 2.6 0 0 0 2.6 2.6h1.8")) };
    drawings[QStringLiteral("doc.on.clipboard.fill")] = { solid(roundedRectangle(4.6, 4.4, 14.8, 16.7, 2.8)),
        cutFill(roundedRectangle(7.7, 1.2, 8.6, 6.6, 2.4)), solid(roundedRectangle(9.6, 2.7, 4.8, 2.9, 1.2)),
        cutLine(path("M8.6 12h6.8M8.6 16h4.4")) };
    drawings[QStringLiteral("doc.text")] = {
        line(path(
            "M13.6 3H7.4a2.6 2.6 0 0 0-2.6 2.6v12.8A2.6 2.6 0 0 0 7.4 21h9.2a2.6 2.6 0 0 0 2.6-2.6V8.6z")),
        line(path("M13.6 3v4a1.6 1.6 0 0 0 1.6 1.6h4M8.8 13.2h6.4M8.8 16.9h4.2"))
    };
    drawings[QStringLiteral("character.cursor.ibeam")] = { line(path("M2.8 18.2L7.4 6l4.6 12.2M4.4 14.2h6")),
        line(path("M15 3.8c1.7 0 2.8.5 2.8 2 0-1.5 1.1-2 2.8-2M17.8 5.8v12.4M15 20.2c1.7 0 2.8-.5 2.8-2 0 "
                  "1.5 1.1 2 "
                  "2.8 2")) };
    drawings[QStringLiteral("hourglass")] = { line(path("M6.2 3h11.6M6.2 21h11.6")),
        line(path("M7.6 3v3.2c0 2.6 4.4 3.5 4.4 5.8s-4.4 3.2-4.4 5.8V21M16.4 3v3.2c0 2.6-4.4 3.5-4.4 5.8s4.4 "
                  "3.2 4.4 "
                  "5.8V21")),
        fill(path("M9.2 21c0-2.4 1-3.4 2.8-4.2 1.8.8 2.8 1.8 2.8 4.2z")) };
}

const Drawings &drawings() {
    static const Drawings all = [] {
        Drawings result;
        addPeople(result);
        addVoice(result);
        addMarks(result);
        addPlaces(result);
        addTools(result);
        addDocuments(result);
        return result;
    }();
    return all;
}

void drawStep(QPainter &painter, const Step &step, double stroke) {
    const bool cuts = step.kind == Step::Kind::CutLine || step.kind == Step::Kind::CutFill;
    painter.setCompositionMode(
        cuts ? QPainter::CompositionMode_DestinationOut : QPainter::CompositionMode_SourceOver);
    const QPen pen(Qt::white, stroke * step.strokeFactor, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    switch (step.kind) {
    case Step::Kind::Line:
    case Step::Kind::CutLine:
        painter.strokePath(step.path, pen);
        return;
    case Step::Kind::Fill:
    case Step::Kind::CutFill:
        painter.fillPath(step.path, Qt::white);
        return;
    case Step::Kind::Solid: {
        // One shape, because the seam between fill and outline would be visible.
        const QPainterPath edge = QPainterPathStroker(pen).createStroke(step.path);
        painter.fillPath(step.path.united(edge), Qt::white);
        return;
    }
    }
}

/// At and below this size the details of a symbol merge.
constexpr double smallSize = 15;

} // namespace

QPainterPath fromNotation(QLatin1String notation) {
    return NotationReader(notation).read();
}

QStringList names() {
    QStringList result;
    for (const QString &name : drawings().keys()) {
        if (!name.contains(QLatin1Char('@')))
            result.append(name);
    }
    result.sort();
    return result;
}

bool contains(const QString &name) {
    return drawings().contains(name);
}

QList<Step> steps(const QString &name, double size) {
    const auto small = drawings().constFind(name + QStringLiteral("@small"));
    if (size <= smallSize && small != drawings().constEnd())
        return *small;
    return drawings().value(name);
}

QImage image(const QString &name, double size, double devicePixelRatio, double stroke) {
    const int pixels = qCeil(size * devicePixelRatio);
    QImage result(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(pixels / gridSize, pixels / gridSize);
    for (const Step &step : steps(name, size))
        drawStep(painter, step, stroke);
    painter.end();
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}

} // namespace SymbolPaths
