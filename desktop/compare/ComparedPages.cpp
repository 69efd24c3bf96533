#include "desktop/compare/ComparedPages.h"

#include <algorithm>
#include <cstring>

#include "Scripting/FinishedPage.h"
#include "desktop/Commands.h"
#include "desktop/PageFile.h"
#include "desktop/compare/PictureFile.h"
#include "library/DrawCopies.h"
#include "library/StreamInterpreter.h"

namespace {

std::string PageName(std::string const& input, std::size_t page) { return input + " page " + std::to_string(page); }

std::vector<ComparedPage> StreamPages(RenderOptions const& options, Desk& desk, std::string const& input,
                                      std::string_view stream) {
    std::vector<ComparedPage> pages;
    Findings findings(stream);
    StreamInterpreter interpreter(desk, stream, findings, StreamInterpreter::Detail::Ink);
    interpreter.Run([&](FinishedLabel& finished) {
        auto* const keeper = Scripting::PageKeeper::Of(&interpreter.Target());
        if (!keeper)
            throw UsageError("this print engine hands out no pages; draw them by zpl render, and compare files");
        keeper->KeepPages();
        auto task =
            TaskOf(std::move(finished.label), finished.number, finished.format, desk.Printer(), options.mostCopies);
        for (unsigned copy = 0; copy < task.copies; ++copy) {
            DrawCopy(task, copy, {}, options.tag);
            pages.push_back({PageName(input, pages.size() + 1), std::string(keeper->PngFile())});
        }
        return true;
    });
    return pages;
}

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
    auto pages = StreamPages(options, desk, input, content);
    if (pages.empty()) throw UsageError("no page to compare: " + input + " holds no printable label");
    return pages;
}
