#pragma once

#include <QColor>
#include <QImage>

#include <vector>

/// A floating-point alpha channel for shadows and glows without banding.
class SoftAlpha {
public:
    /// Fully transparent. The size is in pixels.
    explicit SoftAlpha(QSize size);

    /// The opacities of a premultiplied 32-bit image.
    explicit SoftAlpha(const QImage &image);

    QSize size() const { return m_size; }
    float &at(int x, int y) { return m_values[size_t(y) * size_t(m_size.width()) + size_t(x)]; }
    float at(int x, int y) const { return m_values[size_t(y) * size_t(m_size.width()) + size_t(x)]; }

    /// Applies a Gaussian blur with a standard deviation of `sigma` pixels, clipped to the image.
    void blur(double sigma);

    /// An image of `color` with this alpha channel, dithered to hide banding.
    QImage image(const QColor &color) const;

private:
    QSize m_size;
    std::vector<float> m_values;
};
