#include "plugin/surfaces/TemplateStore.h"

#include <cstring>

StoredFormat TemplateStore::FormatNamed(QString const& fullName) {
    auto const text = fullName.toStdString();
    auto const colon = text.find(':');
    if (colon == text.npos) return {"E", text};
    return {text.substr(0, colon), text.substr(colon + 1)};
}

QString Sentence(std::string_view text) {
    QString sentence = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (sentence.isEmpty()) return sentence;
    sentence[0] = sentence[0].toUpper();
    return sentence.endsWith(u'.') ? sentence : sentence + u'.';
}

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

DrawnFormat DrawTemplate(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes) {
    return DrawFilled(drawer, format, bytes, {});
}

DrawnFormat DrawFilled(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes,
                       FieldValues const& values) {
    FilledStream stream({});
    stream.Add(format, bytes, values, 1);
    return drawer.Draw(stream.Bytes());
}
