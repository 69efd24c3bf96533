#include "desktop/compare/CompareCommand.h"

#include "desktop/compare/CompareReport.h"
#include "desktop/compare/ComparedPages.h"
#include "desktop/compare/PictureFile.h"
#include "library/OutputError.h"

namespace {

std::filesystem::path DifferencePath(std::filesystem::path const& folder, unsigned page) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw OutputError("cannot write " + folder.string() + ": " + error.message());
    return folder / ("difference-" + std::to_string(page) + ".png");
}

}  // namespace

CompareResult RunCompare(RenderOptions const& render, CompareOptions const& options) {
    if (render.inputs.size() != 2)
        throw UsageError("zpl compare takes two inputs: the expected one, and the actual one");
    if (render.inputs[0] == "-" && render.inputs[1] == "-") throw UsageError("only one input can be standard input");
    Desk desk(render);
    auto const expected = ReadPages(render, desk, render.inputs[0]);
    auto const actual = ReadPages(render, desk, render.inputs[1]);
    CompareReport report(render.json);
    bool isAlike = expected.size() == actual.size();
    for (std::size_t i = 0; i < std::min(expected.size(), actual.size()); ++i) {
        PackedPage const expectedPage = expected[i].Read();
        PackedPage const actualPage = actual[i].Read();
        ComparedPair pair{static_cast<unsigned>(i + 1),      expectedPage, actualPage,
                          Compare(expectedPage, actualPage), false,        {}};
        pair.isAlike = pair.difference.hasSameSize && pair.difference.Count() <= options.tolerance;
        if (!pair.isAlike && !options.differenceFolder.empty()) {
            pair.picture = DifferencePath(options.differenceFolder, pair.page);
            PictureFile::WriteDifference(*pair.picture, expectedPage, actualPage);
        }
        isAlike = isAlike && pair.isAlike;
        report.Pair(pair);
    }
    if (!report.Finish(expected.size(), actual.size(), isAlike)) throw OutputError("standard output cannot be written");
    return isAlike ? CompareResult::Alike : CompareResult::Different;
}
