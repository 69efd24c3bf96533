#include "plugin/surfaces/FieldValues.h"

#include <QtCore/QStringList>
#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fields/map/FieldMap.h"

namespace {

using TextLine = FieldTraits::TextLine;

/// In the order of TextLine.
constexpr std::array<char const*, 3> LineNames{"none", "below", "above"};

template <typename T>
void Put(QVariantMap& values, char const* name, std::optional<T> const& value) {
    QString const key = QString::fromLatin1(name);
    if (value && !values.contains(key)) values.insert(key, *value);
}

void PutTraits(QVariantMap& values, FieldTraits const& traits) {
    if (traits.text) Put(values, "text", std::optional(QString::fromStdString(*traits.text)));
    if (auto const& font = traits.font) {
        Put(values, "letter", std::optional(QString::fromStdString(font->name)));
        Put(values, "fontHeight", std::optional(font->height));
        Put(values, "fontWidth", std::optional(font->width));
    }
    if (auto const& barcode = traits.barcode) {
        Put(values, "height", barcode->height);
        Put(values, "countsModules", std::optional(barcode->countsModules));
        Put(values, "module", barcode->module);
        Put(values, "ratio", barcode->ratio);
        if (barcode->line)
            Put(values, "line",
                std::optional(QString::fromLatin1(LineNames[static_cast<std::size_t>(*barcode->line)])));
    }
    if (auto const& shape = traits.shape) {
        Put(values, "width", shape->width);
        Put(values, "tall", shape->height);
        Put(values, "thickness", shape->thickness);
    }
}

QString KindOf(ZplCore::FieldDetails const& details) {
    auto const& symbology = details.notes.symbology;
    auto const kind = symbology.empty() ? ZplCore::NameOf(details.notes.kind) : symbology;
    QString text = QString::fromUtf8(kind.data(), static_cast<qsizetype>(kind.size()));
    return text.left(1).toUpper() + text.mid(1);
}

FieldTraits TraitsOf(EditedPage const& page, std::size_t field) {
    StreamEdit none;
    return FieldEdits(page, none).TraitsOf(field);
}

std::optional<FontChange> FontChangeOf(QString const& what, QVariant const& value) {
    unsigned const dots = value.toUInt();
    if (what == QLatin1String("letter") && value.toString().size() == 1)
        return FontChange{.letter = value.toString().at(0).toLatin1()};
    if (what == QLatin1String("fontHeight") && dots > 0) return FontChange{.height = dots};
    if (what == QLatin1String("fontWidth") && dots > 0) return FontChange{.width = dots};
    return std::nullopt;
}

std::optional<BarcodeChange> BarcodeChangeOf(QString const& what, QVariant const& value) {
    if (what == QLatin1String("height") && value.toUInt() > 0) return BarcodeChange{.height = value.toUInt()};
    if (what == QLatin1String("module") && value.toUInt() > 0) return BarcodeChange{.module = value.toUInt()};
    if (what == QLatin1String("ratio")) return BarcodeChange{.ratio = std::clamp(value.toDouble(), 2.0, 3.0)};
    auto const line = std::find(LineNames.begin(), LineNames.end(), value.toString().toStdString());
    if (what == QLatin1String("line") && line != LineNames.end())
        return BarcodeChange{.line = static_cast<TextLine>(line - LineNames.begin())};
    return std::nullopt;
}

std::optional<ShapeChange> ShapeChangeOf(QString const& what, QVariant const& value) {
    unsigned const dots = value.toUInt();
    if (what == QLatin1String("width")) return ShapeChange{.width = dots};
    if (what == QLatin1String("tall")) return ShapeChange{.height = dots};
    if (what == QLatin1String("thickness") && dots > 0) return ShapeChange{.thickness = dots};
    return std::nullopt;
}

}  // namespace

QVariantMap FieldValues::Of(EditedPage const& page, QList<int> const& fields) {
    QVariantMap values;
    for (int const field : fields) {
        auto const index = static_cast<std::size_t>(field);
        if (index >= page.drawn.fields.size()) continue;
        auto const& drawn = page.drawn.fields[index];
        auto const& details = drawn.details;
        if (values.isEmpty()) {
            values.insert(QStringLiteral("kind"), KindOf(details));
            values.insert(QStringLiteral("description"), QString::fromStdString(ZplCore::Describe(details)));
            if (details.number) values.insert(QStringLiteral("number"), *details.number);
            values.insert(QStringLiteral("prompt"), QString::fromStdString(details.prompt));
            values.insert(QStringLiteral("isBlock"), details.notes.kind == ZplCore::FieldKind::TextBlock);
            values.insert(QStringLiteral("canMove"), drawn.look.has_value());
        }
        PutTraits(values, TraitsOf(page, index));
    }
    return values;
}

std::function<void(FieldEdits&)> FieldValues::Change(EditedPage const& page, QList<int> const& fields,
                                                     QString const& what, QVariant const& value) {
    auto const font = FontChangeOf(what, value);
    auto const barcode = BarcodeChangeOf(what, value);
    auto const shape = ShapeChangeOf(what, value);
    std::vector<std::function<void(FieldEdits&)>> changes;
    for (int const field : fields) {
        auto const index = static_cast<std::size_t>(field);
        if (index >= page.drawn.fields.size()) continue;
        auto const traits = TraitsOf(page, index);
        if (what == QLatin1String("text") && traits.text)
            changes.emplace_back(
                [index, text = value.toString().toStdString()](FieldEdits& edits) { edits.SetText(index, text); });
        if (font && traits.font) changes.emplace_back([=](FieldEdits& edits) { edits.SetFont(index, *font); });
        if (barcode && traits.barcode)
            changes.emplace_back([=](FieldEdits& edits) { edits.SetBarcode(index, *barcode); });
        if (shape && traits.shape) changes.emplace_back([=](FieldEdits& edits) { edits.SetShape(index, *shape); });
    }
    if (changes.empty()) return {};
    return [changes = std::move(changes)](FieldEdits& edits) {
        for (auto const& change : changes) change(edits);
    };
}
