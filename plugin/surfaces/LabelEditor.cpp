#include "plugin/surfaces/LabelEditor.h"

#include <QtCore/QMetaObject>
#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

#include "library/forms/FieldData.h"
#include "plugin/TQTWSProcessorInterface.h"
#include "plugin/surfaces/DrawnPicture.h"
#include "plugin/surfaces/FieldValues.h"
#include "plugin/surfaces/PrintDoor.h"

namespace {

QString FullName(StoredFormat const& format) { return QString::fromStdString(format.FullName()); }

}  // namespace

LabelEditor::LabelEditor(TQTWSProcessorInterface const& printer) : printer_(printer) {
    thread_.setObjectName(QStringLiteral("editor"));
    worker_.moveToThread(&thread_);
}

LabelEditor::~LabelEditor() {
    thread_.quit();
    thread_.wait();
}

int LabelEditor::fieldCount() const { return Drawn() ? static_cast<int>(Drawn()->fields.size()) : 0; }

QStringList LabelEditor::findings() const {
    QStringList list;
    if (!Drawn()) return list;
    for (auto const& finding : Drawn()->findings) list.append(QString::fromStdString(finding.text));
    return list;
}

// What runs on the other thread

/// Does some work on the open format there, behind all that was asked for before.
void LabelEditor::Ask(Work work, QString const& key) {
    // Only the last place that something was dragged to is of interest.
    if (!key.isEmpty() && !tasks_.empty() && tasks_.back().key == key) tasks_.pop_back();
    tasks_.push_back({std::move(work), key});
    if (!isBusy_) AskNext();
}

void LabelEditor::AskNext() {
    if (!thread_.isRunning()) thread_.start();
    auto work = std::move(tasks_.front().work);
    tasks_.pop_front();
    if (!std::exchange(isBusy_, true)) Q_EMIT busyChanged();
    QMetaObject::invokeMethod(&worker_, [this, work = std::move(work)] {
        Outcome outcome;
        try {
            work(desk_, outcome);
        } catch (EditorQuestion const& question) {
            outcome.asked = QString::fromUtf8(question.what());
        } catch (EditRefusal const& refusal) {
            outcome.problem = QString::fromUtf8(refusal.what());
        } catch (std::exception const& error) {
            outcome.told = QString::fromUtf8(error.what());
        }
        if (auto* const stream = desk_.Stream())
            outcome.shown = {stream->Current(), FullName(desk_.Format()), stream->IsChanged(), stream->CanUndo(),
                             stream->CanRedo()};
        QMetaObject::invokeMethod(this, [this, outcome = std::move(outcome)] { Take(outcome); });
    });
}

void LabelEditor::Take(Outcome outcome) {
    int const before = fieldCount();
    bool const isOther = outcome.shown.page != shown_.page;
    shown_ = std::move(outcome.shown);
    if (isOther) picture_ = Drawn() ? PictureOf(*Drawn()) : QImage();
    if (fieldCount() != before) {
        selection_.clear();
        outcome.isMoved = true;
    }
    isReshaping_ = false;
    if (outcome.then) outcome.then();
    if (problem_ != outcome.problem) {
        problem_ = outcome.problem;
        Q_EMIT problemChanged();
    }
    Q_EMIT pageChanged();
    Q_EMIT selectionChanged();
    if (outcome.isMoved) Q_EMIT selectionMoved();
    if (!outcome.told.isEmpty()) Q_EMIT told(outcome.told);
    if (!outcome.asked.isEmpty()) Q_EMIT asked(outcome.asked);
    if (!tasks_.empty()) return AskNext();
    isBusy_ = false;
    Q_EMIT busyChanged();
}

// The format

void LabelEditor::refresh() {
    formats_.clear();
    for (auto const& format : StoredFormats(printer_.PrinterDesk().machine.formatsFolder).List())
        formats_.append(FullName(format));
    Q_EMIT formatsChanged();
}

void LabelEditor::open(QString const& name) {
    SetSelection({});
    Ask([settings = printer_.PrinterDesk(), format = StoredFormat::Named(name.toStdString())](
            EditorDesk& desk, Outcome&) { desk.Open(settings, format); });
}

void LabelEditor::close() {
    SetSelection({});
    Ask([](EditorDesk& desk, Outcome&) { desk.Close(); });
}

void LabelEditor::Store(StoredFormat const& format, bool isSure) {
    Ask([this, format, isSure](EditorDesk& desk, Outcome& outcome) {
        desk.Save(format, isSure);
        outcome.then = [this] {
            refresh();
            Q_EMIT saved();
        };
    });
}

void LabelEditor::save(bool isSure) { Store(StoredFormat::Named(name().toStdString()), isSure); }

void LabelEditor::saveAs(QString const& device, QString const& name, bool isSure) {
    QString own = name.trimmed().toUpper();
    if (!own.endsWith(QStringLiteral(".ZPL"))) own += QStringLiteral(".ZPL");
    Store({device.toStdString(), own.toStdString(), 0}, isSure);
}

/// Whether there are numbers that the format leaves to be filled.
bool LabelEditor::HasWaitingFields() const {
    auto const& fields = Drawn()->fields;
    return std::any_of(fields.begin(), fields.end(),
                       [](DrawnField const& field) { return field.details.number && !field.data; });
}

void LabelEditor::print() {
    Ask([this](EditorDesk& desk, Outcome& outcome) {
        auto const stream = QByteArray::fromStdString(desk.PrintStream());
        outcome.then = [this, stream] {
            auto* const door = printer_.Door();
            if (!Drawn() || !door || !door->IsOpen()) return Q_EMIT told(tr("The printer takes no labels at present."));
            auto const words = tr("The label is on its way to the printer.") +
                               (HasWaitingFields() ? tr(" What is filled in when it prints stays empty.") : QString());
            door->Print(stream, [this, words](QString const& error) { Q_EMIT told(error.isEmpty() ? words : error); });
        };
    });
}

void LabelEditor::undo() {
    ++step_;
    isReshaping_ = true;
    Ask([](EditorDesk& desk, Outcome& outcome) {
        if (auto* const stream = desk.Stream()) outcome.isMoved = stream->Undo();
    });
}

void LabelEditor::redo() {
    ++step_;
    isReshaping_ = true;
    Ask([](EditorDesk& desk, Outcome& outcome) {
        if (auto* const stream = desk.Stream()) outcome.isMoved = stream->Redo();
    });
}

// What is selected

/// A field without ink has a mark where it would stand.
QRectF LabelEditor::BoxOf(int field) const {
    constexpr double Mark = 24;
    auto const& drawn = Drawn()->fields[static_cast<std::size_t>(field)];
    auto const& box = drawn.box;
    if (!box.IsEmpty()) return QRectF(box.left, box.top, box.Width(), box.Height());
    auto const& origin = drawn.details.origin;
    double const dot = Drawn()->pixelsPerDot;
    return origin ? QRectF(origin->x * dot, origin->y * dot, Mark, Mark) : QRectF(0, 0, Mark, Mark);
}

QVariantList LabelEditor::boxes() const {
    QVariantList boxes;
    for (int const field : selection_) boxes.append(BoxOf(field));
    return boxes;
}

QVariantMap LabelEditor::field() const {
    return shown_.page ? FieldValues::Of(*shown_.page, selection_) : QVariantMap();
}

int LabelEditor::fieldAt(QPointF dot, double reach, bool beneath) const {
    if (!Drawn() || isReshaping_) return -1;
    std::vector<std::pair<double, int>> found;
    for (int field = 0; field < fieldCount(); ++field) {
        auto const box = BoxOf(field);
        bool const isInside = box.contains(dot);
        // What lies under the finger goes before what lies beside it.
        if (box.adjusted(-reach, -reach, reach, reach).contains(dot))
            found.emplace_back(box.width() * box.height() + (isInside ? 0 : 1e9), field);
    }
    if (found.empty()) return -1;
    std::sort(found.begin(), found.end());
    auto const own = std::find_if(found.begin(), found.end(),
                                  [this](auto const& entry) { return selection_ == QList<int>{entry.second}; });
    if (!beneath || own == found.end()) return found.front().second;
    return (own + 1 == found.end() ? found.front() : own[1]).second;
}

int LabelEditor::selectedAt(QPointF dot, double reach) const {
    auto const isThere = [&](int field) { return BoxOf(field).adjusted(-reach, -reach, reach, reach).contains(dot); };
    auto const found = std::find_if(selection_.begin(), selection_.end(), isThere);
    return found == selection_.end() ? -1 : *found;
}

void LabelEditor::SetSelection(QList<int> selection) {
    ++step_;
    selection_ = std::move(selection);
    if (!problem_.isEmpty()) {
        problem_.clear();
        Q_EMIT problemChanged();
    }
    Q_EMIT selectionChanged();
    Q_EMIT selectionMoved();
}

void LabelEditor::select(int field) {
    if (field >= 0 && field < fieldCount() && !isReshaping_) SetSelection({field});
}

void LabelEditor::toggle(int field) {
    if (field < 0 || field >= fieldCount() || isReshaping_) return;
    auto selection = selection_;
    if (!selection.removeOne(field)) selection.append(field);
    SetSelection(selection);
}

void LabelEditor::selectAll() {
    if (isReshaping_) return;
    QList<int> all;
    for (int field = 0; field < fieldCount(); ++field) all.append(field);
    SetSelection(all);
}

void LabelEditor::selectNone() { SetSelection({}); }

void LabelEditor::selectBeside(int step) {
    int const count = fieldCount();
    if (count == 0) return;
    int const from = selection_.isEmpty() ? (step < 0 ? 0 : -1) : selection_.last();
    select((from + step + count) % count);
}

// What is changed

void LabelEditor::Edit(Change change, QString const& key) {
    nudgeKey_.clear();
    Ask(
        [change = std::move(change), key = key.toStdString()](EditorDesk& desk, Outcome&) {
            if (auto* const stream = desk.Stream()) stream->Edit(change, key);
        },
        key);
}

void LabelEditor::Move(std::vector<FieldShift> const& shifts, QString const& key) {
    Edit(
        [shifts](FieldEdits& edits) {
            for (auto const& [field, right, down] : shifts) edits.Move(field, right, down);
        },
        key);
}

/// Those of the selection that can move.
std::vector<std::size_t> LabelEditor::Movable() const {
    std::vector<std::size_t> fields;
    for (int const field : selection_) {
        auto const index = static_cast<std::size_t>(field);
        if (Drawn() && Drawn()->fields[index].look) fields.push_back(index);
    }
    return fields;
}

void LabelEditor::startDrag() { ++step_; }

void LabelEditor::drag(double right, double down) {
    std::vector<FieldShift> shifts;
    for (auto const field : Movable()) shifts.push_back(ShiftOf(*Drawn(), field, right, down));
    if (!shifts.empty()) Move(shifts, QStringLiteral("drag %1").arg(step_));
}

void LabelEditor::nudge(int right, int down) {
    auto const fields = Movable();
    if (fields.empty()) return;
    QString const key = QStringLiteral("nudge %1").arg(step_);
    if (nudgeKey_ != key) nudged_ = {};
    nudged_ += QPoint(right, down);
    double const dot = Drawn()->pixelsPerDot;
    std::vector<FieldShift> shifts;
    for (auto const field : fields) shifts.push_back(ShiftOf(*Drawn(), field, nudged_.x() * dot, nudged_.y() * dot));
    Move(shifts, key);
    nudgeKey_ = key;
}

void LabelEditor::change(QString const& what, QVariant const& value) {
    if (!shown_.page) return;
    auto const change = FieldValues::Change(*shown_.page, selection_, what, value);
    if (change) Edit(change, QStringLiteral("%1 %2").arg(what).arg(step_));
}

void LabelEditor::align(QString const& side) {
    static QStringList const sides{QStringLiteral("left"),   QStringLiteral("right"),  QStringLiteral("top"),
                                   QStringLiteral("bottom"), QStringLiteral("across"), QStringLiteral("down")};
    auto const index = sides.indexOf(side);
    if (!Drawn() || index < 0) return;
    ++step_;
    Move(Align(*Drawn(), Movable(), static_cast<Alignment>(index)), {});
}

void LabelEditor::distribute(bool across) {
    if (!Drawn()) return;
    ++step_;
    Move(Distribute(*Drawn(), Movable(), across), {});
}

void LabelEditor::remove() {
    auto const fields = Movable();
    if (fields.empty()) return;
    SetSelection({});
    isReshaping_ = true;
    Edit([fields](FieldEdits& edits) {
        for (auto const field : fields) edits.Remove(field);
    });
}

void LabelEditor::duplicate() {
    constexpr int Beside = 16;  // dots
    auto const fields = Movable();
    if (fields.empty()) return;
    SetSelection({});
    isReshaping_ = true;
    Ask([this, fields](EditorDesk& desk, Outcome& outcome) {
        auto* const stream = desk.Stream();
        if (!stream) return;
        stream->Edit([&](FieldEdits& edits) {
            for (auto const field : fields) edits.Duplicate(field, Beside, Beside);
        });
        // The copy of a field is drawn right behind it.
        if (fields.size() == 1) outcome.then = [this, copy = static_cast<int>(fields[0]) + 1] { select(copy); };
    });
}
