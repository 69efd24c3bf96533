#include "desktop/serve/StreamWatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "desktop/serve/HostAnswers.h"
#include "jobhost/model/PrintStream.h"
#include "library/Desk.h"
#include "tests/support/Texts.h"

using namespace std::string_view_literals;

namespace {

/// Gives a stream to a watch in pieces; the questions are noted by their letters, those of a line by its text.
StreamWatch Watched(std::string_view stream, std::size_t piece, std::string* questions = nullptr) {
    StreamWatch watch{StreamState()};
    for (std::size_t at = 0; at < stream.size();) {
        auto const progress = watch.Read(stream.substr(at, piece));
        at += progress.read;
        if (!progress.question || !questions) continue;
        auto const& question = *progress.question;
        *questions += (question.row ? std::string(question.row->letters) : question.text) + '@' +
                      std::to_string(question.begin) + ' ';
    }
    return watch;
}

TEST(StreamWatch, KnowsWhereAStreamMayBeCut) {
    struct Row {
        char const* name;
        std::string stream;
        char const* state;  // F in a format, L in letters, D in a download
        std::uint64_t cut;
    };
    Row const rows[] = {
        {"nothing", "", "", 0},
        {"a label", "^XA^FDa^FS^XZ", "", 13},
        {"behind a label", "^XA^XZ\r\n", "", 8},
        {"the letters of a format", "^XZ^XA", "F", 3},
        {"in a format", "^XA^FDa", "F", 0},
        {"the next format", "^XA^XZ ^XA^FDa", "F", 7},
        {"a format in a format", "^XA^FDa^XA^FD", "F", 0},
        {"in the letters", "^XA^XZ~H", "L", 6},
        {"at the prefix", "^XA^XZ^", "L", 6},
        {"a query", "~HS\r\n", "", 5},
        {"a download", "~DGR:A.GRF,8,1,FF", "D", 0},
        {"behind a download", "~DGR:A.GRF,1,1,FF^XA^XZ", "", 23},
        {"raw bytes", "^GFB,9,9,1,^XA^X", "D", 0},
        {"another prefix", "^CC/^XA/XA/FDa^XZ", "F", 7},
        {"ends under another prefix", "^CC//XA/FDa/XZ", "", 14},
        {"a prefix that none can be", "^CC\x01^CC~^XA^XZ", "", 14},
        {"the usual prefixes again", "^CC/~JR/ ^XA^XZ", "", 15},
        {"the end with the other prefix", "^XA^FDa~XZ^FD", "F", 0},
        {"the start with the other prefix", "~XA^FDa", "", 3},
        {"half a byte order mark", "^XZ\xEF\xBB", "", 3},
        {"half a character", std::string("\xFF\xFE^\0X\0Z\0^", 9), "", 8},
        {"a question by name", "^XZ\n! U1 getvar \"a", "L", 4},
        {"perhaps one", "^XZ\r\n! U", "", 5},
    };
    for (auto const& row : rows) {
        for (std::size_t const piece : {std::size_t{1}, std::size_t{2}, std::size_t{1000}}) {
            auto const watch = Watched(row.stream, piece);
            std::string state;
            if (watch.InFormat()) state += 'F';
            if (watch.InLetters()) state += 'L';
            if (watch.InDownload()) state += 'D';
            EXPECT_EQ(state, row.state) << row.name << " in pieces of " << piece;
            EXPECT_EQ(watch.SafeCut(), row.cut) << row.name << " in pieces of " << piece;
        }
    }
}

TEST(StreamWatch, NoticesQuestionsWhenTheirLettersAreThere) {
    struct Row {
        char const* stream;
        char const* questions;
    };
    Row const rows[] = {
        {"~HS~HS", "HS@0 HS@3 "},
        {"^XA^FDa~hs", "HS@7 "},
        {"~HI", "HI@0 "},
        {"~HI~HM^XA^HH^XZ", "HI@0 HM@3 HH@9 "},
        {"~HQ", ""},
        {"~HQES\r\n", "HQ@0 "},
        {"~HQ,ES", "HQ@0 "},
        {"~HQ^XA", "HQ@0 "},
        {"^HS^XA~HH^XZ", ""},
        {"! U1 getvar \"device^.name\"\r\n", "! U1 getvar \"device^.name\"@0 "},
        {"^XA^XZ\r\n! U1 do\n~HI", "! U1 do@8 HI@16 "},
        {"! U1 getvar \"^XA\"^xa^FDa~HS", "! U1 getvar \"^XA\"@0 HS@24 "},
        {"^CC/! U1 do^XA/ /X/XA~HI^XZ", "! U1 do^XA/ /X@4 HI@21 "},
        {"~HI\r\n! U1 a\r\n", "HI@0 ! U1 a@5 "},
        {"~HQES! U1 b\n~HI", "HQ@0 ! U1 b@5 HI@12 "},
        {"^XA! U1 getvar \"a\"\n^XZ", ""},
        {"! 0 200 200 210 1\r\n", "! 0 200 200 210 1@0 "},
        {"wow! U1 getvar \"a\"\n", ""},
    };
    for (auto const& row : rows) {
        for (std::size_t const piece : {std::size_t{1}, std::size_t{3}, std::size_t{1000}}) {
            std::string questions;
            Watched(row.stream, piece, &questions);
            EXPECT_EQ(questions, row.questions) << row.stream << " in pieces of " << piece;
        }
    }
}

TEST(StreamWatch, TellsWhatOutlastsAStream) {
    auto const lasting = [](std::string_view stream) { return Watched(stream, 5).State(); };
    EXPECT_EQ(lasting("\xFF\xFE").encoding, Encoding::SingleByte) << "a mark ends with its stream";
    EXPECT_EQ(lasting("^XA^CI28^FDa").encoding, Encoding::SingleByte) << "not before the label is drawn";
    EXPECT_EQ(lasting("^XA^CI28^XZ\xEF\xBB\xBF").encoding, Encoding::Utf8);
    EXPECT_EQ(lasting("^XA^CI28^XZ^XA^CI0^XZ").encoding, Encoding::SingleByte);
    EXPECT_EQ(lasting("^CI28^XA^XZ").encoding, Encoding::SingleByte) << "nor outside of labels";
    for (auto const* const unused : {"^XA^DFR:A^CI28^XZ", "^XA^CI28~JX^XZ", "^XA^CI28,0^CI0^XZ", "^XA~CI28^XZ"})
        EXPECT_EQ(lasting(unused).encoding, Encoding::SingleByte) << unused;
    EXPECT_EQ(Watched("^XA^HH^XZ^XA^FX^HH^XZ^XA^HH^FDa^XZ", 3).Labels(), 1U) << "questions in formats are no labels";
    EXPECT_EQ(lasting("^CC/").formatPrefix, '/');
    EXPECT_EQ(lasting("^CD;^CT,").controlPrefix, ',');
    for (auto const* const taken : {"^CC~", "^CC,", "^CT^", "^CT,", "^CD^", "^CD~", "^CD\x07"}) {
        auto const state = lasting(taken);
        EXPECT_EQ((std::string{state.formatPrefix, state.controlPrefix, state.delimiter}), "^~,") << taken;
    }
}

/// A stream of pieces that matter to where formats begin and end.
std::string RandomStream(std::mt19937& random) {
    static auto const pieces = Parts(
        "^XA|^XZ|^FDa|^FS|~HS|^CI28|^CI0|^CC/|/CC^|^CT!|!CT~|^CD;|^CC|^|~|\xEF\xBB\xBF|\xFF\xFE|\xFE\xFF|"
        "\xC3\xBC|\xFC|\r\n|^GFB,3,3,1,|XA|XZ|~JR|~JX|^DFR:A|^PQ2|^FO.|^PQ99999999999|^CI99999999999|"
        "^CI28,99999999999,1|/XA|/XZ|~XZ|^xa|^xz|~SD1|~SD10|,|^\0X\0Z\0|\0^\0X\0A|\0"sv);
    std::string stream;
    for (unsigned i = 0, most = 1 + random() % 25; i < most; ++i) stream += pieces[random() % pieces.size()];
    return stream;
}

// They must agree on where formats begin and end, whatever came before: the host goes on with what one stream leaves to
// the next.
TEST(StreamWatch, AgreesWithTheHost) {
    char const* const rounds = std::getenv("ZPL_WATCH_ROUNDS");
    std::mt19937 random(11);
    Desk desk{DeskSettings()};
    for (int round = 0, most = rounds ? std::atoi(rounds) : 60; round < most; ++round) {
        desk.StartStream();
        StreamState state;
        for (int stream = 0; stream < 3; ++stream) {
            std::string const bytes = RandomStream(random);
            Zpl::Host::PrintStream host([&] { return desk.MakeSession(); });
            StreamWatch watch(state);
            for (std::size_t at = 0; at < bytes.size();) {
                std::size_t const piece = 1 + random() % 7;
                auto const chunk = std::string_view(bytes).substr(at, piece);
                for (std::string_view rest = chunk; !rest.empty();) rest = host.Consume(rest, false, false).remaining;
                for (std::size_t read = 0; read < chunk.size();) read += watch.Read(chunk.substr(read)).read;
                at += chunk.size();
                bool const isInFormat = host.Current().IsInFormat();
                bool const justOpen = !isInFormat && watch.InFormat();
                ASSERT_TRUE(isInFormat == watch.InFormat() || justOpen)
                    << round << ": " << testing::PrintToString(bytes.substr(0, at));
                ASSERT_FALSE(justOpen && watch.SafeCut() + 3 > at) << testing::PrintToString(bytes.substr(0, at));
            }
            state = watch.State();
        }
    }
}

}  // namespace
