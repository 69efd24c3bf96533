#include "library/forms/DrawnFormat.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>
#include <utility>

#include "Scripting/FinishedPage.h"
#include "library/StreamReader.h"

namespace {

using Scripting::PageKeeper;
using ZplCore::ByteRange;
using ZplCore::FieldMap;
using ZplCore::FieldPlace;

DeskSettings WithFolder(DeskSettings settings, std::filesystem::path const& folder) {
    settings.machine.formatsFolder = folder;
    return settings;
}

/// Finds where commands stand in what was drawn.
class Places {
public:
    /// `format`: the path of the stored format that was drawn; empty if it was a stream.
    Places(FieldMap const& map, std::string const& format) : map_(map), format_(format) {}

    std::optional<ByteRange> Of(FieldPlace const& place) const {
        if (!format_.empty()) return place.format == format_ ? place.inFormat : std::nullopt;
        // A stream may have stored the format itself before.
        if (place.inFormat) return map_.Sources().Find(place.format, *place.inFormat);
        return place.inStream;
    }

private:
    FieldMap const& map_;
    std::string const& format_;
};

DrawnField FieldOf(ZplCore::MappedField const& field, FieldMap const& map, Places const& places) {
    DrawnField drawn;
    drawn.details = *field.details;
    drawn.isReversed = field.isReversed;
    drawn.verdict = field.verdict;
    drawn.isWhite = field.IsEmpty() && !field.ink.white.IsEmpty();
    drawn.isWaiting = drawn.details.number && !field.place;
    if (!field.IsEmpty() || drawn.isWhite)
        drawn.box = map.Gauge().OnPage(drawn.isWhite ? field.ink.white : field.ink.All());
    auto const& [place, definition] = std::tie(drawn.details.place, drawn.details.definition);
    // A numbered field may bring its data itself.
    drawn.data = places.Of(place.IsEmpty() ? definition : place);
    drawn.look = places.Of(definition.IsEmpty() ? place : definition);
    return drawn;
}

/// The field whose data stand there in the stream.
std::optional<std::size_t> FieldAt(DrawnFormat const& drawn, std::optional<std::uint64_t> offset) {
    auto const holds = [offset](DrawnField const& field) {
        auto const& place = field.details.place.inStream;
        return place && place->offset <= *offset && *offset < place->End();
    };
    if (!offset) return std::nullopt;
    auto const field = std::ranges::find_if(drawn.fields, holds);
    if (field == drawn.fields.end()) return std::nullopt;
    return static_cast<std::size_t>(field - drawn.fields.begin());
}

/// Reads a stream up to its first label and takes what is on the drawing target then.
class Drawing {
public:
    Drawing(Desk& desk, std::string format)
        : format_(std::move(format)),
          reader_(
              desk, [this](Telling const& telling) { telling(findings_); }, FieldMap::Detail::Everything),
          hearing_(reader_) {}

    DrawnFormat Draw(std::string_view stream) {
        std::string_view rest = stream;
        auto label = reader_.Read(rest, true);
        if (!label) reader_.End();
        auto* const keeper = PageKeeper::Of(&reader_.Target());
        if (!keeper) throw std::runtime_error("this printer draws no labels in memory");
        keeper->KeepPages();
        Render(label);
        DrawnFormat drawn;
        drawn.isBlank = !label;
        drawn.size = keeper->PageSize();
        drawn.dpi = keeper->PageDpi();
        drawn.rows = keeper->PackedRows();
        if (auto const* const map = reader_.Fields()) AddFields(*map, drawn);
        for (auto& finding : findings_.List())
            drawn.findings.push_back({std::move(finding.text), FieldAt(drawn, finding.offset)});
        return drawn;
    }

private:
    void Render(std::optional<FinishedLabel>& label) {
        if (!label) return reader_.Target().RenderPage({}, 0, true);
        reader_.SetDrawnFormat(label->format);
        try {
            label->label.RenderLabel({}, 0, 0, true);
        } catch (std::exception const& error) {
            findings_.AddNotice(Zpl::Host::Explain(error), label->format);
            label->label.RenderBlank({}, 0, true);
        }
    }

    void AddFields(FieldMap const& map, DrawnFormat& drawn) const {
        drawn.pixelsPerDot = map.Gauge().PixelsPerDot();
        drawn.turned = !map.Page().upright;
        drawn.mirrored = map.Page().mirror;
        for (auto const& field : map.Fields()) {
            if (field.details) drawn.fields.push_back(FieldOf(field, map, Places(map, format_)));
        }
    }

    std::string format_;
    Findings findings_;
    StreamReader reader_;
    StreamReader::Hearing hearing_;
};

}  // namespace

FormatDrawer::FormatDrawer(DeskSettings const& settings)
    : store_(settings.machine.formatsFolder),
      desk_(WithFolder(settings, store_.Folder())),
      designDpi_(settings.designDpi) {}

DrawnFormat FormatDrawer::Draw(std::string_view stream) {
    store_.Refresh();
    desk_.StartStream();
    return Drawing(desk_, {}).Draw(stream);
}

DrawnFormat FormatDrawer::DrawStored(ObjectName const& name, std::string_view bytes, std::string_view fills) {
    store_.Refresh();
    store_.Put(name.Path(), bytes);
    desk_.StartStream();
    return Drawing(desk_, name.Path().string()).Draw("^XA^XF" + name.Text() + "^FS" + std::string(fills) + "^XZ");
}
