#include "plugin/surfaces/TemplateOrganizer.h"

#include <algorithm>
#include <exception>

#include "plugin/surfaces/DrawingThread.h"

namespace {

/// What is wrong with what is settled about a field, or with the value that it begins with.
std::string FaultOfSettings(TemplateField const& field) {
    auto const& checks = field.checks;
    if (field.name.empty()) return "the field needs a name";
    if (checks.most > 0 && checks.most < checks.least) return "the most is less than the least";
    return field.value.empty() ? "" : FaultOf(field, field.value);
}

}  // namespace

TemplateOrganizer::TemplateOrganizer(TemplateStore store, StoredFormat format)
    : store_(std::move(store)), format_(std::move(format)) {
    store_.drawing.Order(
        this, format_.FullName(),
        [this, format_ = format_, formats = store_.formats, settings = store_.settings](FormatDrawer& drawer) {
            FieldSettings::Settled settled;
            std::string problem;
            try {
                auto const drawn = DrawTemplate(drawer, format_, formats.Read(format_));
                settled = settings.Of(format_, VariableFields(drawn));
            } catch (std::exception const& error) {
                problem = error.what();
            }
            return [this, settled, problem] { TakeFields(settled, problem); };
        });
}

QString TemplateOrganizer::name() const {
    return QString::fromStdString(format_.name.substr(0, format_.name.rfind('.')));
}

void TemplateOrganizer::Tell(QString const& notice, bool isTrouble) {
    notice_ = notice;
    isTrouble_ = isTrouble;
    Q_EMIT noticeChanged();
}

void TemplateOrganizer::TakeFields(FieldSettings::Settled const& settled, std::string const& error) {
    beginResetModel();
    fields_ = saved_ = settled.fields;
    isReady_ = error.empty();
    endResetModel();
    if (!error.empty()) return Tell(Sentence(error), true);
    Tell(settled.remarks.empty() ? QString() : Sentence(settled.remarks.front()), !settled.remarks.empty());
}

int TemplateOrganizer::rowCount(QModelIndex const& parent) const { return parent.isValid() ? 0 : count(); }

QHash<int, QByteArray> TemplateOrganizer::roleNames() const {
    return {{Number, "number"},         {Name, "name"},   {Value, "value"}, {IsRequired, "isRequired"},
            {DigitsOnly, "digitsOnly"}, {Least, "least"}, {Most, "most"},   {Fault, "fault"}};
}

QVariant TemplateOrganizer::data(QModelIndex const& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    auto const& field = fields_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Number: return field.number;
        case Name: return QString::fromStdString(field.name);
        case Value: return QString::fromStdString(field.value);
        case IsRequired: return field.checks.isRequired;
        case DigitsOnly: return field.checks.digitsOnly;
        case Least: return static_cast<int>(field.checks.least);
        case Most: return static_cast<int>(field.checks.most);
        case Fault: return Sentence(FaultOfSettings(field));
        default: return {};
    }
}

void TemplateOrganizer::change(int row, QString const& what, QVariant const& value) {
    if (row < 0 || row >= count()) return;
    auto& field = fields_[static_cast<std::size_t>(row)];
    auto const length = static_cast<std::size_t>(std::clamp(value.toInt(), 0, static_cast<int>(LongestValue)));
    switch (roleNames().key(what.toLatin1(), 0)) {
        case Name: field.name = value.toString().trimmed().toStdString(); break;
        case Value: field.value = value.toString().toStdString(); break;
        case IsRequired: field.checks.isRequired = value.toBool(); break;
        case DigitsOnly: field.checks.digitsOnly = value.toBool(); break;
        case Least: field.checks.least = length; break;
        case Most: field.checks.most = length; break;
        default: return;
    }
    Q_EMIT dataChanged(index(row), index(row));
    Tell({}, false);
}

void TemplateOrganizer::move(int row, int to) {
    if (row < 0 || to < 0 || row >= count() || to >= count() || row == to) return;
    beginMoveRows({}, row, row, {}, to > row ? to + 1 : to);
    auto const first = fields_.begin();
    if (row < to) {
        std::rotate(first + row, first + row + 1, first + to + 1);
    } else {
        std::rotate(first + to, first + row, first + row + 1);
    }
    endMoveRows();
    Tell({}, false);
}

bool TemplateOrganizer::save() {
    for (auto const& field : fields_) {
        auto const fault = FaultOfSettings(field);
        if (fault.empty()) continue;
        Tell(Sentence("field " + std::to_string(field.number) + ": " + fault), true);
        return false;
    }
    try {
        store_.settings.Save(format_, fields_);
    } catch (std::exception const& error) {
        Tell(Sentence(error.what()), true);
        return false;
    }
    saved_ = fields_;
    Tell(tr("Saved."), false);
    Q_EMIT saved();
    return true;
}

void TemplateOrganizer::undoAll() {
    beginResetModel();
    fields_ = saved_;
    endResetModel();
    Tell({}, false);
}
