#include "library/forms/EditorDesk.h"

#include <algorithm>
#include <utility>

namespace {

ObjectName NameOf(StoredFormat const& format) {
    auto const name = ObjectName::Parse(format.FullName(), 'E', "", "ZPL");
    if (!name) throw std::runtime_error("No format can be stored under the name " + format.name + ".");
    return *name;
}

/// Whether commands change the characters of those behind them, which they do not where a format is recalled.
bool ChangesCharacters(StreamCommands const& commands) {
    auto const& all = commands.All();
    return std::any_of(all.begin(), all.end(), [](StreamCommand const& command) {
        return command.letters == "CC" || command.letters == "CT" || command.letters == "CD";
    });
}

}  // namespace

void EditorDesk::Open(DeskSettings const& settings, StoredFormat const& format) {
    StoredFormats formats(settings.machine.formatsFolder);
    auto bytes = formats.Read(format);
    auto drawer = std::make_unique<FormatDrawer>(settings);
    auto stream = std::make_unique<EditedStream>(*drawer, bytes, NameOf(format));
    formats_.emplace(std::move(formats));
    label_ = LabelDots::Of(settings);
    stream_ = std::move(stream);
    drawer_ = std::move(drawer);
    format_ = format;
    stored_ = std::move(bytes);
}

void EditorDesk::Close() {
    stream_.reset();
    drawer_.reset();
    stored_.clear();
    format_ = {};
}

/// What stands in the way of storing it under that name.
void EditorDesk::AskAbout(StoredFormat const& format) const {
    bool const isOwn = format.FullName() == format_.FullName();
    std::optional<std::string> there;
    try {
        there = formats_->Read(format);
    } catch (std::runtime_error const&) {
        // It is gone, or was never there.
    }
    if (isOwn && !there)
        throw EditorQuestion(format.FullName() + " has been removed from the printer meanwhile. Store it again?");
    if (isOwn && *there != stored_)
        throw EditorQuestion(format.FullName() + " has been stored anew meanwhile. Replace what is there now?");
    if (!isOwn && there) throw EditorQuestion(format.FullName() + " is there already. Replace it?");
}

void EditorDesk::Save(StoredFormat const& format, bool isSure) {
    if (!stream_) throw std::runtime_error("No label is open.");
    auto const name = NameOf(format);
    if (!isSure) AskAbout(format);
    formats_->Save(format, stream_->Bytes());
    stored_ = stream_->Bytes();
    format_ = format;
    stream_->SetSaved(name);
}

std::string EditorDesk::PrintStream() const {
    if (!stream_) throw std::runtime_error("No label is open.");
    if (!stream_->IsChanged()) return "^XA" + label_.Commands() + "^XF" + format_.FullName() + "^FS^PQ1^XZ";
    if (ChangesCharacters(stream_->Current()->commands)) throw std::runtime_error("Save this label first, then print.");
    return "^XA" + label_.Commands() + stream_->Bytes() + "^FS^PQ1^XZ";
}
