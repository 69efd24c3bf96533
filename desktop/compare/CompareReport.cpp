#include "desktop/compare/CompareReport.h"

#include <cstdio>
#include <string>

namespace {

std::string SizeOf(PackedPage const& page) {
    return std::to_string(page.width) + " x " + std::to_string(page.height) + " dots";
}

std::string Pages(std::size_t count) { return std::to_string(count) + (count == 1 ? " page" : " pages"); }

/// "143 dots differ (100 missing, 43 too many), all within 30 x 12 dots at 120, 300".
std::string Describe(PageDifference const& difference) {
    std::uint64_t const count = difference.Count();
    if (count == 0) return "no dot differs";
    return std::to_string(count) + (count == 1 ? " dot differs (" : " dots differ (") +
           std::to_string(difference.missing) + " missing, " + std::to_string(difference.extra) +
           " too many), all within " + std::to_string(difference.right - difference.left) + " x " +
           std::to_string(difference.bottom - difference.top) + " dots at " + std::to_string(difference.left) + ", " +
           std::to_string(difference.top);
}

}  // namespace

CompareReport::CompareReport(bool json) : json_(json) {
    if (json_) writer_.StartObject().Key("pages").StartArray();
}

void CompareReport::Pair(ComparedPair const& pair) {
    if (json_) return Write(pair);
    auto const& difference = pair.difference;
    if (difference.hasSameSize && difference.Count() == 0) return;
    std::string line = "page " + std::to_string(pair.page) + ": ";
    if (!difference.hasSameSize) line += "is " + SizeOf(pair.actual) + " and not " + SizeOf(pair.expected) + "; ";
    line += Describe(difference);
    if (pair.isAlike) line += ", which is tolerated";
    if (pair.picture) line += "; see " + pair.picture->string();
    std::printf("%s\n", line.c_str());
}

void CompareReport::Write(ComparedPair const& pair) {
    auto const& difference = pair.difference;
    writer_.StartObject().Key("page").Int(pair.page).Key("alike").Bool(pair.isAlike);
    for (auto const& [name, page] : {std::pair{"expected", &pair.expected}, {"actual", &pair.actual}})
        writer_.Key(name).StartObject().Key("width").Int(page->width).Key("height").Int(page->height).EndObject();
    writer_.Key("missing").Int(static_cast<std::int64_t>(difference.missing));
    writer_.Key("extra").Int(static_cast<std::int64_t>(difference.extra));
    if (difference.Count() != 0) {
        writer_.Key("box").StartObject().Key("left").Int(difference.left).Key("top").Int(difference.top);
        writer_.Key("right").Int(difference.right).Key("bottom").Int(difference.bottom).EndObject();
    }
    if (pair.picture) writer_.Key("difference").String(pair.picture->string());
    writer_.EndObject();
}

bool CompareReport::Finish(std::size_t expectedPages, std::size_t actualPages, bool isAlike) {
    if (json_) {
        writer_.EndArray().Key("expectedPages").Int(static_cast<std::int64_t>(expectedPages));
        writer_.Key("actualPages").Int(static_cast<std::int64_t>(actualPages)).Key("alike").Bool(isAlike).EndObject();
        std::printf("%s\n", writer_.Text().c_str());
    } else if (expectedPages != actualPages) {
        std::printf("%s, and not %s as expected\n", Pages(actualPages).c_str(), Pages(expectedPages).c_str());
    } else if (isAlike) {
        std::printf("%s alike\n", Pages(expectedPages).c_str());
    }
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}
