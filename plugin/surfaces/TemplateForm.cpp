#include "plugin/surfaces/TemplateForm.h"

#include <QtCore/QPointer>
#include <QtCore/QVariantMap>
#include <algorithm>
#include <exception>

#include "plugin/surfaces/DrawingThread.h"

TemplateForm::TemplateForm(TemplateStore store, StoredFormat format)
    : store_(std::move(store)), format_(std::move(format)) {
    Look();
}

QString TemplateForm::name() const { return QString::fromStdString(format_.name.substr(0, format_.name.rfind('.'))); }

void TemplateForm::Tell(QString const& notice, bool isTrouble) {
    notice_ = notice;
    isTrouble_ = isTrouble;
    Q_EMIT noticeChanged();
}

void TemplateForm::Look() {
    try {
        bytes_ = store_.formats.Read(format_);
    } catch (std::exception const& error) {
        isGone_ = true;
        return Tell(Sentence(error.what()), true);
    }
    if (isGone_) {
        isGone_ = false;
        Tell({}, false);
    }
    ReadFields();
}

void TemplateForm::ReadFields() {
    store_.drawing.Order(this, format_.FullName() + " fields",
                         [this, format = format_, bytes = bytes_, settings = store_.settings](FormatDrawer& drawer) {
                             Found found;
                             try {
                                 auto settled =
                                     settings.Of(format, VariableFields(DrawTemplate(drawer, format, bytes)));
                                 found = {std::move(settled.fields), std::move(settled.remarks), {}};
                             } catch (std::exception const& error) {
                                 found.error = error.what();
                             }
                             return [this, found] { TakeFields(found); };
                         });
}

void TemplateForm::TakeFields(Found found) {
    if (!found.error.empty()) return Tell(Sentence(found.error), true);
    if (fields_ != found.fields || !isReady_) {
        isReady_ = true;
        // Where nobody has typed, a new first value takes the place of the old one.
        for (auto const& field : fields_) {
            if (values_.at(field.number) == field.value) values_.erase(field.number);
        }
        fields_ = std::move(found.fields);
        for (auto const& field : fields_) values_.try_emplace(field.number, field.value);
        Q_EMIT fieldsChanged();
        Q_EMIT valuesChanged();
        Q_EMIT faultsChanged();
    }
    if (!found.remarks.empty()) Tell(Sentence(found.remarks.front()), true);
    Draw();
}

QVariantList TemplateForm::fields() const {
    QVariantList list;
    for (auto const& field : fields_) {
        list.append(QVariantMap{{QStringLiteral("number"), field.number},
                                {QStringLiteral("name"), QString::fromStdString(field.name)},
                                {QStringLiteral("digitsOnly"), field.checks.digitsOnly},
                                {QStringLiteral("isRequired"), field.checks.isRequired},
                                {QStringLiteral("most"), static_cast<int>(field.checks.most)}});
    }
    return list;
}

QStringList TemplateForm::values() const {
    QStringList list;
    for (auto const& field : fields_) list.append(QString::fromStdString(values_.at(field.number)));
    return list;
}

QStringList TemplateForm::faults() const {
    QStringList list;
    for (auto const& field : fields_) {
        auto const& value = values_.at(field.number);
        // Who has not come to a field yet is not told that it is empty.
        bool const isTold = showsFaults_ || !value.empty();
        list.append(isTold ? Sentence(FaultOf(field, value)) : QString());
    }
    return list;
}

void TemplateForm::setValue(int field, QString const& value) {
    if (field < 0 || static_cast<std::size_t>(field) >= fields_.size()) return;
    auto& typed = values_[fields_[static_cast<std::size_t>(field)].number];
    if (typed == value.toStdString()) return;
    typed = value.toStdString();
    Q_EMIT valuesChanged();
    Q_EMIT faultsChanged();
    if (!notice_.isEmpty() && !isGone_) Tell({}, false);
    Draw();
}

void TemplateForm::clear() {
    for (auto const& field : fields_) values_[field.number] = field.value;
    showsFaults_ = false;
    setQuantity(1);
    Q_EMIT valuesChanged();
    Q_EMIT faultsChanged();
    Draw();
}

void TemplateForm::setQuantity(int quantity) {
    auto const labels = static_cast<unsigned>(std::clamp(quantity, 1, static_cast<int>(MostLabels)));
    if (labels == quantity_) return;
    quantity_ = labels;
    Q_EMIT quantityChanged();
}

/// Of the fields that the format has now.
ValuesByNumber TemplateForm::Values() const {
    ValuesByNumber values;
    for (auto const& field : fields_) values[field.number] = values_.at(field.number);
    return values;
}

/// Without a picture if the format went away meanwhile, which the list tells.
TemplateForm::Page TemplateForm::DrawPage(FormatDrawer& drawer, StoredFormat const& format, std::string const& bytes,
                                          ValuesByNumber const& values) {
    try {
        auto const drawn = DrawFilled(drawer, format, bytes, values);
        Page page{PictureOf(drawn), {}};
        // Who has filled in nothing yet is not told that nothing prints.
        bool const isEmpty = std::ranges::all_of(values, [](auto const& value) { return value.second.empty(); });
        if (drawn.isBlank && isEmpty) return page;
        for (auto const& [text, field] : drawn.findings)
            page.findings.push_back({text, field ? drawn.fields[*field].details.number : std::nullopt});
        return page;
    } catch (std::exception const&) {
        return {};
    }
}

void TemplateForm::Draw() {
    if (isGone_) return;
    if (isDrawn_) {
        isDrawn_ = false;
        Q_EMIT isDrawnChanged();
    }
    store_.drawing.Order(this, format_.FullName(),
                         [this, format = format_, bytes = bytes_, values = Values()](FormatDrawer& drawer) {
                             return [this, page = DrawPage(drawer, format, bytes, values), values] {
                                 if (page.picture.isNull()) return;
                                 page_ = page;
                                 isDrawn_ = values == Values();
                                 Q_EMIT pictureChanged();
                                 Q_EMIT isDrawnChanged();
                             };
                         });
}

QVariantList TemplateForm::findings() const {
    QVariantList list;
    for (auto const& [text, number] : page_.findings) {
        auto const field =
            std::ranges::find(fields_, number, [](auto const& own) { return std::optional(own.number); });
        auto const index = field == fields_.end() ? -1 : static_cast<int>(field - fields_.begin());
        list.append(QVariantMap{{QStringLiteral("text"), Sentence(text)}, {QStringLiteral("field"), index}});
    }
    return list;
}

bool TemplateForm::check() {
    showsFaults_ = true;
    Q_EMIT faultsChanged();
    auto const list = faults();
    return std::all_of(list.begin(), list.end(), [](auto const& fault) { return fault.isEmpty(); });
}

void TemplateForm::print() {
    if (isGone_ || isPrinting_) return;
    if (!check()) return Tell(tr("Some fields are not filled in as they should be."), true);
    FilledStream stream(store_.label);
    stream.Add(format_, bytes_, Values(), quantity_);
    isPrinting_ = true;
    Tell({}, false);
    auto const& bytes = stream.Bytes();
    store_.print(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())),
                 [self = QPointer(this), labels = quantity_](QString const& error) {
                     if (!self) return;
                     self->isPrinting_ = false;
                     self->Tell(!error.isEmpty() ? error
                                : labels == 1    ? tr("1 label is on its way.")
                                                 : tr("%1 labels are on their way.").arg(labels),
                                !error.isEmpty());
                 });
}

void TemplateForm::storeAgain() {
    try {
        store_.formats.Save(format_, bytes_);
    } catch (std::exception const& error) {
        return Tell(Sentence(error.what()), true);
    }
    Look();
}
