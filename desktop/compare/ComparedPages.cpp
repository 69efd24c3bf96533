#include "desktop/compare/ComparedPages.h"

#include <algorithm>
#include <cstring>

#include "Scripting/FinishedPage.h"
#include "desktop/Commands.h"
#include "desktop/PageFile.h"
#include "desktop/compare/PictureFile.h"
#include "library/StreamInterpreter.h"

namespace {

std::string PageName(std::string const& input, std::size_t page) { return input + " page " + std::to_string(page); }

class StreamPages {
public:
    StreamPages(RenderOptions const& options, Desk& desk, std::string const& input, std::string_view stream)
        : options_(options), input_(input), findings_(stream), interpreter_(desk, stream, findings_) {}

    std::vector<ComparedPage> Draw() {
        interpreter_.Run([this](FinishedLabel& finished) {
            unsigned const quantity = finished.label.Quantity();
            for (unsigned copy = 0; copy < std::min(quantity, options_.mostCopies); ++copy)
                DrawCopy(finished, copy, copy + 1 == quantity);
            return true;
        });
        return std::move(pages_);
    }

private:
    void DrawCopy(FinishedLabel& finished, unsigned copy, bool isLast) {
        auto* const keeper = Scripting::PageKeeper::Of(&interpreter_.Target());
        if (!keeper)
            throw UsageError("this print engine hands out no pages; draw them by zpl render, and compare files");
        keeper->KeepPages();
        if (options_.tag && finished.label.IsWaitingOnRfidReadResponse(copy)) {
            finished.label.SetRfidReadResponse(copy,
                                               VirtualTag(*options_.tag).Perform(finished.label.GetRfidOperations()));
        }
        finished.label.RenderLabel({}, copy, copy, isLast);
        pages_.push_back({PageName(input_, pages_.size() + 1), std::string(keeper->PngFile())});
    }

    RenderOptions const& options_;
    std::string const& input_;
    Findings findings_;
    StreamInterpreter interpreter_;
    std::vector<ComparedPage> pages_;
};

std::vector<ComparedPage> PicturesOf(std::filesystem::path const& folder) {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        auto const extension = entry.path().extension();
        if (extension == ".png" || extension == ".pbm") names.push_back(entry.path().string());
    }
    std::sort(names.begin(), names.end(),
              [](std::string const& a, std::string const& b) { return ::strverscmp(a.c_str(), b.c_str()) < 0; });
    std::vector<ComparedPage> pages;
    for (auto const& name : names) pages.push_back({name, ReadInput(name)});
    if (pages.empty()) throw UsageError("no .png or .pbm files are in the folder " + folder.string());
    return pages;
}

}  // namespace

PackedPage ComparedPage::Read() const {
    try {
        return PictureFile::Read(file);
    } catch (std::runtime_error const& error) {
        throw UsageError("cannot read the picture " + name + ": " + error.what());
    }
}

std::vector<ComparedPage> ReadPages(RenderOptions const& options, Desk& desk, std::string const& input) {
    if (input != "-" && std::filesystem::is_directory(input)) return PicturesOf(input);
    std::string const content = ReadInput(input);
    if (PictureFile::IsPicture(content)) return {{input, content}};
    if (content.starts_with("%PDF"))
        throw UsageError("cannot compare the document " + input + "; give the stream, or pictures of its pages");
    desk.StartStream();
    auto pages = StreamPages(options, desk, input, content).Draw();
    if (pages.empty()) throw UsageError("no page to compare: " + input + " holds no printable label");
    return pages;
}
