#include "plugin/surfaces/TemplateList.h"

#include <QtQml/QQmlEngine>
#include <algorithm>
#include <exception>
#include <utility>

#include "plugin/surfaces/BatchPrinter.h"
#include "plugin/surfaces/TemplateForm.h"
#include "plugin/surfaces/TemplateOrganizer.h"

namespace {

/// A picture in the list, in pixels.
constexpr int PictureHeight = 220;
/// A store that changes much is read this often, in milliseconds.
constexpr int RefreshPause = 200;

}  // namespace

TemplateList::TemplateList(DeskSettings const& settings, TemplateStore::Print print)
    : drawing_(settings),
      store_{StoredFormats(settings.machine.formatsFolder), FieldSettings(settings.machine.formatsFolder), drawing_,
             LabelDots::Of(settings), std::move(print)} {
    refresh_.setSingleShot(true);
    refresh_.setInterval(RefreshPause);
    connect(&refresh_, &QTimer::timeout, this, &TemplateList::Refresh);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { refresh_.start(); });
    Refresh();
}

TemplateList::~TemplateList() = default;

QObject* TemplateList::batch() {
    if (!batch_) {
        batch_ = new BatchPrinter(store_);
        Keep(batch_);
    }
    return batch_;
}

QObject* TemplateList::Keep(QObject* opened) {
    opened->setParent(this);
    QQmlEngine::setObjectOwnership(opened, QQmlEngine::CppOwnership);
    return opened;
}

QObject* TemplateList::open(QString const& fullName) {
    auto* const form = new TemplateForm(store_, StoredFormat::Named(fullName.toStdString()));
    connect(this, &TemplateList::changed, form, &TemplateForm::Look);
    return Keep(form);
}

QObject* TemplateList::organize(QString const& fullName) {
    auto* const organizer = new TemplateOrganizer(store_, StoredFormat::Named(fullName.toStdString()));
    connect(organizer, &TemplateOrganizer::saved, this, [this, fullName] { ShowSettled(fullName.toStdString()); });
    return Keep(organizer);
}

/// Forms that are open, and a picture that has been asked for, show what is settled of a format now.
void TemplateList::ShowSettled(std::string const& fullName) {
    for (std::size_t row = 0; row < entries_.size(); ++row) {
        if (entries_[row].format.FullName() != fullName || !std::exchange(entries_[row].isAsked, false)) continue;
        wantPicture(static_cast<int>(row));
    }
    Q_EMIT changed();
}

void TemplateList::close(QObject* opened) {
    if (opened && opened->parent() == this && opened != batch_) opened->deleteLater();
}

int TemplateList::rowCount(QModelIndex const& parent) const { return parent.isValid() ? 0 : count(); }

QHash<int, QByteArray> TemplateList::roleNames() const {
    return {
        {Name, "name"}, {FullName, "fullName"}, {IsInMemory, "isInMemory"}, {Picture, "picture"}, {Problem, "problem"}};
}

QVariant TemplateList::data(QModelIndex const& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    auto const& entry = entries_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Name: return QString::fromStdString(entry.format.name.substr(0, entry.format.name.rfind('.')));
        case FullName: return QString::fromStdString(entry.format.FullName());
        case IsInMemory: return entry.format.device == "R";
        case Picture: return entry.picture;
        case Problem: return entry.problem;
        default: return {};
    }
}

std::filesystem::file_time_type TemplateList::TimeOf(StoredFormats const& formats, StoredFormat const& format) {
    std::error_code error;
    return std::filesystem::last_write_time(formats.Folder() / format.device / format.name, error);
}

/// The folders of the devices come with the first object.
void TemplateList::Watch() {
    auto const& folder = store_.formats.Folder();
    for (auto const& path : {folder.parent_path(), folder, folder / "E", folder / "R"}) {
        auto const name = QString::fromStdString(path.string());
        std::error_code error;
        if (std::filesystem::is_directory(path, error) && !watcher_.directories().contains(name))
            watcher_.addPath(name);
    }
}

void TemplateList::Refresh() {
    Watch();
    std::vector<Entry> now;
    for (auto& format : store_.formats.List()) {
        Entry entry{std::move(format), {}, {}, {}};
        entry.time = TimeOf(store_.formats, entry.format);
        now.push_back(std::move(entry));
    }
    auto const isSame = [](Entry const& a, Entry const& b) {
        return a.format.FullName() == b.format.FullName() && a.format.bytes == b.format.bytes && a.time == b.time;
    };
    if (std::equal(now.begin(), now.end(), entries_.begin(), entries_.end(), isSame)) return;
    // Pictures of what stays are kept.
    for (auto& entry : now) {
        auto const before =
            std::find_if(entries_.begin(), entries_.end(), [&](auto const& other) { return isSame(entry, other); });
        if (before != entries_.end()) entry = std::move(*before);
    }
    beginResetModel();
    entries_ = std::move(now);
    endResetModel();
    Q_EMIT countChanged();
    Q_EMIT changed();
}

void TemplateList::wantPicture(int row) {
    if (row < 0 || row >= count()) return;
    auto& entry = entries_[static_cast<std::size_t>(row)];
    if (entry.isAsked) return;
    entry.isAsked = true;
    Entry const asked{entry.format, entry.time, {}, {}, true};
    drawing_.Order(this, entry.format.FullName(), [this, asked, store = store_](FormatDrawer& drawer) {
        QImage picture;
        QString problem;
        try {
            auto const bytes = store.formats.Read(asked.format);
            auto const drawn = DrawTemplate(drawer, asked.format, bytes);
            ValuesByNumber values;
            for (auto const& field : store.settings.Of(asked.format, VariableFields(drawn)).fields)
                values[field.number] = SampleOf(field);
            picture = PictureOf(DrawFilled(drawer, asked.format, bytes, values), PictureHeight);
        } catch (std::exception const& error) {
            problem = Sentence(error.what());
        }
        return [this, asked, picture, problem] { TakePicture(asked, picture, problem); };
    });
}

void TemplateList::TakePicture(Entry const& drawn, QImage picture, QString const& problem) {
    auto const found = std::find_if(entries_.begin(), entries_.end(), [&](auto const& entry) {
        return entry.format.FullName() == drawn.format.FullName() && entry.time == drawn.time;
    });
    if (found == entries_.end()) return;
    found->picture = std::move(picture);
    found->problem = problem;
    auto const row = index(static_cast<int>(found - entries_.begin()));
    Q_EMIT dataChanged(row, row, {Picture, Problem});
}
