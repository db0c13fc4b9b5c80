#pragma once

#include <QByteArray>

#include <optional>

/// Makes small pictures of pictures that may come from anywhere.
namespace PictureThumbnail {

/// Most pixels that a picture may declare. One of 4 bytes each then needs 244 MiB while it is decoded, which
/// is room for any camera.
constexpr qint64 maximumPixelCount = 64'000'000;

/// The picture as JPEG of quality 85, upright, its longest side at most `longestSide` pixels. Smaller
/// pictures keep their size; what is transparent becomes white. Absent for what is no picture, or one that
/// declares more than maximumPixelCount, which is not decoded at all.
std::optional<QByteArray> jpeg(const QByteArray &picture, int longestSide);

} // namespace PictureThumbnail
