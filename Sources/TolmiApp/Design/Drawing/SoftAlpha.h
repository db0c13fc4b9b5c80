#pragma once

#include <QColor>
#include <QImage>

#include <vector>

/// A plane of opacities in floating point, for shadows and glows that shall not show steps.
class SoftAlpha {
public:
    /// All of it transparent. Sizes are in pixels.
    explicit SoftAlpha(QSize size);

    /// The opacities of a premultiplied 32-bit image.
    explicit SoftAlpha(const QImage &image);

    QSize size() const { return m_size; }
    float &at(int x, int y) { return m_values[size_t(y) * size_t(m_size.width()) + size_t(x)]; }
    float at(int x, int y) const { return m_values[size_t(y) * size_t(m_size.width()) + size_t(x)]; }

    /// Blurs by a Gaussian whose standard deviation is `sigma` pixels. What leaves the plane is lost.
    void blur(double sigma);

    /// An image of `color` at these opacities, with a fine noise below one level that hides the steps between
    /// levels.
    QImage image(const QColor &color) const;

private:
    QSize m_size;
    std::vector<float> m_values;
};
