#include "plugin/surfaces/TemplateStore.h"

QString Sentence(std::string_view text) {
    QString sentence = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    if (sentence.isEmpty()) return sentence;
    sentence[0] = sentence[0].toUpper();
    return sentence.endsWith(u'.') ? sentence : sentence + u'.';
}

DrawnFormat DrawTemplate(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes) {
    return DrawFilled(drawer, format, bytes, {});
}

DrawnFormat DrawFilled(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes,
                       ValuesByNumber const& values) {
    FilledStream stream({});
    stream.Add(format, bytes, values, 1);
    return drawer.Draw(stream.Bytes());
}
