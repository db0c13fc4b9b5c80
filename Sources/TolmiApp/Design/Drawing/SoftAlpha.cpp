#include "TolmiApp/Design/Drawing/SoftAlpha.h"

#include <algorithm>
#include <cmath>

namespace {

/// Half of a symmetric kernel, centre first; the whole kernel sums to 1.
std::vector<float> halfKernel(double sigma) {
    std::vector<float> half(size_t(std::ceil(3 * sigma)) + 1);
    double sum = 0;
    for (size_t distance = 0; distance < half.size(); ++distance) {
        half[distance] = float(std::exp(-double(distance * distance) / (2 * sigma * sigma)));
        sum += half[distance] * (distance == 0 ? 1 : 2);
    }
    for (float &weight : half)
        weight /= float(sum);
    return half;
}

void addScaled(float *target, const float *source, int count, float weight) {
    for (int index = 0; index < count; ++index)
        target[index] += source[index] * weight;
}

/// Interleaved gradient noise between 0 and 1.
float noise(int x, int y) {
    const double inner = 0.06711056 * x + 0.00583715 * y;
    const double outer = 52.9829189 * (inner - std::floor(inner));
    return float(outer - std::floor(outer));
}

} // namespace

SoftAlpha::SoftAlpha(QSize size)
    : m_size(size)
    , m_values(size_t(size.width()) * size_t(size.height())) { }

SoftAlpha::SoftAlpha(const QImage &image)
    : SoftAlpha(image.size()) {
    for (int y = 0; y < m_size.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < m_size.width(); ++x)
            at(x, y) = float(qAlpha(line[x])) / 255.0F;
    }
}

void SoftAlpha::blur(double sigma) {
    // Both directions add whole rows, which the compiler vectorises.
    const std::vector<float> kernel = halfKernel(sigma);
    const int width = m_size.width();
    const int height = m_size.height();
    const int reach = int(kernel.size()) - 1;
    SoftAlpha across(m_size);
    // Skips empty rows, of which a shadow's image has many.
    std::vector<bool> isEmpty(size_t(height), false);
    for (int y = 0; y < height; ++y) {
        isEmpty[size_t(y)]
            = std::all_of(&at(0, y), &at(0, y) + width, [](float value) { return value == 0; });
        if (isEmpty[size_t(y)])
            continue;
        float *target = &across.at(0, y);
        const float *source = &at(0, y);
        addScaled(target, source, width, kernel[0]);
        for (int distance = 1; distance <= std::min(reach, width - 1); ++distance) {
            addScaled(target + distance, source, width - distance, kernel[size_t(distance)]);
            addScaled(target, source + distance, width - distance, kernel[size_t(distance)]);
        }
    }
    std::fill(m_values.begin(), m_values.end(), 0.0F);
    for (int y = 0; y < height; ++y) {
        for (int other = std::max(0, y - reach); other <= std::min(height - 1, y + reach); ++other) {
            if (!isEmpty[size_t(other)])
                addScaled(&at(0, y), &across.at(0, other), width, kernel[size_t(std::abs(other - y))]);
        }
    }
}

QImage SoftAlpha::image(const QColor &color) const {
    QImage result(m_size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < m_size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < m_size.width(); ++x) {
            const float exact = at(x, y) * float(color.alphaF()) * 255.0F;
            // No noise on practically transparent pixels, where single grains would be visible.
            const float dither = exact > 0.4F ? noise(x, y) : 0.0F;
            const int alpha = std::clamp(int(exact + dither), 0, 255);
            line[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
        }
    }
    return result;
}
