#include "desktop/serve/StreamWatch.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(StreamWatch, KnowsWhereAStreamMayBeCut) {
    struct Row {
        char const* name;
        std::string stream;
        char const* state;  // F in a format, L in letters, D in a download
        std::uint64_t lastEnd;
    };
    Row const rows[] = {
        {"nothing", "", "", 0},
        {"a label", "^XA^FDa^FS^XZ", "", 13},
        {"behind a label", "^XA^XZ\r\n", "", 6},
        {"in a format", "^XA^FDa", "F", 0},
        {"in the letters", "^XA^XZ~H", "L", 6},
        {"at the prefix", "^XA^XZ^", "L", 6},
        {"a query", "~HS\r\n", "", 0},
        {"a download", "~DGR:A.GRF,8,1,FF", "D", 0},
        {"behind a download", "~DGR:A.GRF,1,1,FF^XA^XZ", "", 23},
        {"another prefix", "^CC/^XA/XA/FDa^XZ", "F", 0},
        {"ends under another prefix", "^CC//XA/FDa/XZ", "", 14},
        {"no format in data", "^XA^FD~XZ", "F", 0},
    };
    for (auto const& row : rows) {
        for (std::size_t const piece : {std::size_t{1}, std::size_t{2}, std::size_t{1000}}) {
            StreamWatch watch('^', '~', ',');
            for (std::size_t at = 0; at < row.stream.size(); at += piece)
                watch.Append(std::string_view(row.stream).substr(at, piece));
            std::string state;
            if (watch.InFormat()) state += 'F';
            if (watch.InLetters()) state += 'L';
            if (watch.InDownload()) state += 'D';
            EXPECT_EQ(state, row.state) << row.name << " in pieces of " << piece;
            EXPECT_EQ(watch.LastFormatEnd(), row.lastEnd) << row.name;
        }
    }
}

}  // namespace
