#include "plugin/surfaces/DrawnPicture.h"

#include <cstring>

QImage PictureOf(DrawnFormat const& drawn, int height) {
    int const width = static_cast<int>(drawn.size.width);
    int const rows = static_cast<int>(drawn.size.height);
    std::size_t const rowBytes = (static_cast<std::size_t>(width) + 7) / 8;
    if (width <= 0 || rows <= 0 || drawn.rows.size() < rowBytes * static_cast<std::size_t>(rows)) return {};
    QImage picture(width, rows, QImage::Format_Mono);
    picture.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int row = 0; row < rows; ++row)
        std::memcpy(picture.scanLine(row), drawn.rows.data() + rowBytes * static_cast<std::size_t>(row), rowBytes);
    if (height <= 0 || rows <= height) return picture;
    return picture.convertToFormat(QImage::Format_Grayscale8).scaledToHeight(height, Qt::SmoothTransformation);
}
