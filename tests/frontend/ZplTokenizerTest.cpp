#include "frontend/stream/ZplTokenizer.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/CommandDump.h"

using namespace std::literals;

namespace {

/// Feeds a tokenizer as a session does: with the encoding that it gave last, chunk by chunk.
std::string Tokenize(std::vector<std::string_view> const& chunks, Encoding encoding, bool flushAtEnd,
                     std::string_view characters = "^~,") {
    ZplTokenizer tokenizer;
    std::string dump;
    for (auto const& chunk : chunks) {
        bool const flush = flushAtEnd && &chunk == &chunks.back();
        for (std::size_t position = 0; position < chunk.size();) {
            auto [next, command] =
                tokenizer.TokenizeString(chunk, position, characters[0], characters[1], characters[2], flush, encoding);
            encoding = next;
            if (command) dump += (dump.empty() ? "" : " ") + Dump(*command);
        }
    }
    return dump;
}

struct Row {
    char const* name;
    std::string input;
    char const* expected;
};

/// Whole, cut in two at every byte, and byte by byte.
void ExpectAtEveryCut(std::vector<Row> const& rows, Encoding encoding, bool flushAtEnd = false) {
    for (auto const& [name, input, expected] : rows) {
        SCOPED_TRACE(name);
        std::string_view const whole = input;
        EXPECT_EQ(Tokenize({whole}, encoding, flushAtEnd), expected);
        std::vector<std::string_view> bytes;
        for (std::size_t cut = 0; cut < whole.size(); ++cut) {
            bytes.push_back(whole.substr(cut, 1));
            EXPECT_EQ(Tokenize({whole.substr(0, cut), whole.substr(cut)}, encoding, flushAtEnd), expected)
                << "cut at " << cut;
        }
        EXPECT_EQ(Tokenize(bytes, encoding, flushAtEnd), expected);
    }
}

std::string Utf16(std::u16string_view text, bool bigEndian) {
    std::string bytes;
    for (char16_t const unit : text) {
        auto const high = static_cast<char>(unit >> 8);
        auto const low = static_cast<char>(unit);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

}  // namespace

TEST(ZplTokenizer, EndsCommands) {
    ExpectAtEveryCut(
        {
            {"a label", "^XA^FO10,20^FDtext^FS^XZ", "^XA ^FO[10][20] ^FD[text] ^FS ^XZ"},
            {"letters are raised, parameters are not", "^xa^fdabc^fs^xz", "^XA ^FD[abc] ^FS ^XZ"},
            {"no prefix, no command", "FO10,20\r\nXZ", ""},
            {"text behind an eager command is dropped", "^XZ,junk^XA^", "^XZ ^XA"},
            {"a doubled prefix", "^^XA^", "^XA"},
            {"a broken command", "^X^XA^", "^XA"},
            {"the last of several prefixes decides", "^~JS^~^JS~", "~JS ^JS"},
            {"line ends vanish everywhere", "^\nX\rA\r\n^FD\na\r\nb\n,c^", "^XA ^FD[ab][c]"},
            {"a line end alone is no parameter", "^FS\r\n^", "^FS"},
            {"empty parameters", "^FO,20^PQ^BC,,^", "^FO[][20] ^PQ ^BC[][][]"},
            {"blanks are kept", "^FO 1 , 2 ^", "^FO[ 1 ][ 2 ]"},
            {"one byte beyond 7 bits makes a command", "^\xE9X^", "^\xC3\xA9[X]"},
            {"an open command waits", "^FO10,20", ""},
        },
        Encoding::SingleByte);
}

TEST(ZplTokenizer, DeliversEagerCommandsAtOnce) {
    ExpectAtEveryCut(
        {
            {"status without a following byte", "~HS", "~HS"},
            {"format prefix is not eager", "^HS", ""},
            {"format prefix waits for the next one", "^HSx^", "^HS[x]"},
            {"either prefix", "^PP~PP", "^PP ~PP"},
            {"control prefix only", "~WL~WC~PS~JA~PR~HL", "~WL ~WC ~PS ~JA ~PR ~HL"},
            {"the end of a format with the wrong prefix", "~XZ", ""},
            {"lower case", "~hs^xz", "~HS ^XZ"},
            {"two digits of darkness", "~SD15", "~SD[15]"},
            {"and once more at the end", "~SD15^", "~SD[15] ~SD[15]"},
            {"a decimal follows", "~SD15.5", "~SD[15] ~SD[15.5]"},
            {"a decimal behind one digit", "~SD7.5", "~SD[7.5]"},
            {"a decimal alone", "~SD.5", "~SD[.5]"},
            {"three digits go on", "~SD123", "~SD[12]"},
            {"darkness that is no number", "~SDx", "~SD[x]"},
            {"a point behind something else", "~SD-.", "~SD[-]"},
            {"a second parameter", "~SD1,", "~SD[1][]"},
            {"darkness with the format prefix", "^SD15.5^", "^SD[15.5]"},
            {"every character of an argument", "~RVab^", "~RV[a] ~RV[ab] ~RV[ab]"},
            {"a delimiter ends it", "~RV,x", "~RV[][]"},
        },
        Encoding::SingleByte);
}

TEST(ZplTokenizer, WaitsForTheEndOfAnArgumentThatNobodyWaitsFor) {
    std::string const digits(300, '1');
    EXPECT_EQ(Tokenize({"~SD" + digits + "x^XZ"}, Encoding::SingleByte, false), "~SD[11] ~SD[" + digits + "x] ^XZ");
}

TEST(ZplTokenizer, KeepsNothingOfACommandThatIsTooLong) {
    ZplTokenizer tokenizer;
    std::string const part(ZplCommand::LongestParameters / 4 - 1, 'x');
    std::string dump;
    // Behind a prefix all is well again, and a counted run is read to its end.
    for (auto const& chunk : {"^FD" + part, part, part, part + "^FD", part, part, part, part, ",^~HS^GFB,1,"s,
                              std::to_string(5 * part.size()) + ",1,", part, part, part, part, part, "^XZ"s}) {
        for (std::size_t position = 0; position < chunk.size();) {
            auto const [encoding, command] =
                tokenizer.TokenizeString(chunk, position, '^', '~', ',', false, Encoding::SingleByte);
            if (command)
                dump +=
                    command->command + std::to_string(command->parameters.Bytes()) + (command->isOverlong ? "! " : " ");
        }
    }
    EXPECT_EQ(dump, "FD" + std::to_string(4 * part.size() + 4) + " FD0! HS0 GF0! XZ0 ");
}

TEST(ZplTokenizer, TakesOneCharacterOfSyntaxCommands) {
    ExpectAtEveryCut(
        {
            {"the character ends it", "^CC+x^XA^", "^CC[+] ^XA"},
            {"either prefix", "~ct+^cd;", "~CT[+] ^CD[;]"},
            {"the delimiter gives an empty parameter", "^CC,", "^CC[]"},
            {"a prefix gives none", "^CC^XA^", "^CC ^XA"},
            {"a line end does not count", "^CC\r\n+", "^CC[+]"},
        },
        Encoding::SingleByte);
    EXPECT_EQ(Tokenize({"+XA+FO1;2-HS+"}, Encoding::SingleByte, false, "+-;"), "^XA ^FO[1][2] ~HS");
}

TEST(ZplTokenizer, CopiesCountedBinaryRuns) {
    ExpectAtEveryCut(
        {
            {"third GF parameter counts the bytes", "^GFB,10,4,2,\x01^\r\x02", "^GF[B][10][4][2][01 5E 0D 02]"},
            {"the run may hold all that has a meaning", "^GFB,1,6,2,^~,\n\r\xFF^XZ",
             "^GF[B][1][6][2][5E 7E 2C 0A 0D FF] ^XZ"},
            {"what follows belongs to nothing", "^GFB,1,2,1,ab,junk^XA^", "^GF[B][1][2][1][ab] ^XA"},
            {"a count of 0 is 1", "^GFB,10,0,2,^^XZ", "^GF[B][10][0][2][^] ^XZ"},
            {"lower case, and more than a letter", "^gfbin,10,002,2,^^", "^GF[bin][10][002][2][^^]"},
            {"a count that is no number is text", "^GFB,10,x4,2,ab^", "^GF[B][10][x4][2][ab]"},
            {"nor with a blank", "^GFB,10, 4,2,ab^", "^GF[B][10][ 4][2][ab]"},
            {"nor with a sign", "^GFB,10,+4,2,ab^", "^GF[B][10][+4][2][ab]"},
            {"nor an empty one", "^GFB,10,,2,ab^", "^GF[B][10][][2][ab]"},
            {"nor beyond 32 bits", "^GFB,10,4294967296,2,ab^", "^GF[B][10][4294967296][2][ab]"},
            {"a huge count allocates nothing", "^GFB,10,4294967295,2,ab^", ""},
            {"text forms", "^GFA,10,4,2,\nFF,00^", "^GF[A][10][4][2][FF][00]"},
            {"packed forms", "^GFC,10,4,2,ab^", "^GF[C][10][4][2][ab]"},
            {"no form", "^GF,10,4,2,ab^", "^GF[][10][4][2][ab]"},
            {"other commands", "^FDB,10,4,2,ab^", "^FD[B][10][4][2][ab]"},
            {"either prefix", "~GFB,1,1,1,^", "~GF[B][1][1][1][^]"},
            {"no byte order mark inside", "^GFB,1,3,1,\xEF\xBB\xBF^FD\xE4^", "^GF[B][1][3][1][EF BB BF] ^FD[E4]"},
            {"a mark that ends behind the run", "^GFB,1,2,1,\xEF\xBB\xBF^FD\xE4 abcd^",
             "^GF[B][1][2][1][EF BB] ^FD[ d]"},
        },
        Encoding::SingleByte);
}

TEST(ZplTokenizer, FollowsByteOrderMarks) {
    std::string const utf16le = "\xFF\xFE" + Utf16(u"^FDäő^XZ", false);
    std::string const utf16be = "\xFE\xFF" + Utf16(u"^FDäő^XZ", true);
    ExpectAtEveryCut(
        {
            {"UTF-8, told by what a stray byte costs", "\xEF\xBB\xBF^FD\xC3\xA4\xE4 abcd^", "^FD[C3 A4 20 64]"},
            {"single bytes without a mark", "^FD\xC3\xA4\xE4 ab^", "^FD[C3 A4 E4 20 61 62]"},
            {"UTF-16, low byte first", utf16le, "^FD[C3 A4 C5 91] ^XZ"},
            {"UTF-16, high byte first", utf16be, "^FD[C3 A4 C5 91] ^XZ"},
            {"inside a parameter its last byte is kept", "^FDa\xEF\xBB\xBF\xC3\xA4^", "^FD[61 EF BB C2 BF C3 A4]"},
            {"from one encoding to another", "\xEF\xBB\xBF^FD1^XZ" + utf16be, "^FD[1] ^XZ ^FD[C3 A4 C5 91] ^XZ"},
            {"7-bit characters part the mark", "\xEF\xBB ^FD\xBF\xE4^", "^FD[BF E4]"},
        },
        Encoding::SingleByte);
}

TEST(ZplTokenizer, DecodesUnicode) {
    ExpectAtEveryCut(
        {
            {"two to four bytes", "^FD\xC3\xA4\xE9\x85\x8D\xF0\x9F\x98\x80^", "^FD[C3 A4 E9 85 8D F0 9F 98 80]"},
            {"a stray byte costs what follows", "^FD\xE4 abcd^FS^", "^FD[ d] ^FS"},
            {"a cut sequence too", "^FD\342\202abcdef^", "^FD[aef]"},
            {"and surrogates", "^FD\xED\xA0\200abcde^", "^FD[ae]"},
            {"binary runs pass through the decoder", "^GFB,1,2,1,\xC3\xA4^XZ", "^GF[B][1][2][1][E4 5E]"},
            {"and may hold a mark", "^GFB,1,1,1,\xEF\xBB\xBF^XZ", "^GF[B][1][1][1][FF] ^XZ"},
            {"the mark of the encoding in force", "^FD\xEF\xBB\xBFz^", "^FD[C2 BF 7A]"},
            {"another mark", "^FD\xFE\xFF" + Utf16(u"Ł^", true), "^FD[C3 BF C5 81]"},
        },
        Encoding::Utf8);
    ExpectAtEveryCut(
        {
            {"surrogates are characters of their own", Utf16(u"^FD\xD83D\xDE00^", true), "^FD[ED A0 BD ED B8 80]"},
            {"half a UTF-8 mark stops all", Utf16(u"^FD\xEFBB^FS^", true), ""},
            {"up to another mark", Utf16(u"^FD\xEFBB^F\xFEFFŁ^", true), "^FD[C3 BF C5 81]"},
            {"a whole one ends UTF-16", Utf16(u"^FD", true) + "\xEF\xBB\xBFz^", "^FD[C2 BF 7A]"},
        },
        Encoding::Utf16Be);
    ExpectAtEveryCut({{"a mark is no text", Utf16(u"^FD\xFEFFŁ^", false), "^FD[C3 BE C5 81]"}}, Encoding::Utf16Le);
}

TEST(ZplTokenizer, ForgetsHeldBytesWhenTheCallerChangesTheEncoding) {
    ZplTokenizer tokenizer;
    std::string dump;
    for (auto const& [bytes, encoding] :
         {std::pair("^FD\xEF\xBB"sv, Encoding::SingleByte), {"\xBF", Encoding::Utf8}, {"Q^", Encoding::SingleByte}}) {
        for (std::size_t position = 0; position < bytes.size();) {
            auto const command = tokenizer.TokenizeString(bytes, position, '^', '~', ',', false, encoding).second;
            if (command) dump += Dump(*command);
        }
    }
    EXPECT_EQ(dump, "^FD[EF BB 51]");
}

TEST(ZplTokenizer, FlushesAtTheEnd) {
    ExpectAtEveryCut(
        {
            {"an open command", "^XA^FO10,20", "^XA ^FO[10][20]"},
            {"one letter", "^X", "^X"},
            {"a prefix alone", "^XA^", "^XA"},
            {"a binary run that is cut off", "^GFB,1,9,1,ab", "^GF[B][1][9][1][ab]"},
            {"nothing open", "^XZ abc", "^XZ"},
        },
        Encoding::SingleByte, true);
}

TEST(ZplTokenizer, GoesOnBehindAFlush) {
    ZplTokenizer tokenizer;
    std::string dump;
    for (std::string_view const chunk : {"^FO1", "2,3^FS", "^GFB,1,3,1,a", "bc^XZ", "~SD1", "55^PQ"}) {
        for (std::size_t position = 0; position < chunk.size();) {
            auto const [encoding, command] =
                tokenizer.TokenizeString(chunk, position, '^', '~', ',', true, Encoding::SingleByte);
            if (command) dump += Dump(*command) + ' ';
        }
    }
    EXPECT_EQ(dump, "^FO[1] ^[2][3] ^FS ^ ^GF[B][1][3][1][a] ^[bc] ^XZ ~SD[1] ^[55] ^PQ ");
}

TEST(ZplTokenizer, TellsWhereCommandsStand) {
    std::string const input = "\r\n^XA^^FO1,2~SD15.5 ^GFB,1,2,1,^^ ^XZ" + "\xFF\xFE"s + Utf16(u"^FS^XZ^FDx", false);
    std::string const expected = "XA2+3 FO6+6 SD12+5 SD12+7 GF20+13 XZ34+3 FS39+6 XZ45+6 FD51+8 ";
    for (std::size_t cut = 0; cut < input.size(); ++cut) {
        ZplTokenizer tokenizer;
        std::string offsets;
        auto encoding = Encoding::SingleByte;
        for (bool const isLast : {false, true}) {
            auto const chunk = isLast ? input.substr(cut) : input.substr(0, cut);
            for (std::size_t position = 0; position < chunk.size();) {
                auto [next, command] = tokenizer.TokenizeString(chunk, position, '^', '~', ',', isLast, encoding);
                encoding = next;
                if (!command) continue;
                EXPECT_EQ(command->offset, tokenizer.CommandOffset());
                offsets += command->command + std::to_string(tokenizer.CommandOffset()) + "+" +
                           std::to_string(command->length) + " ";
            }
        }
        EXPECT_EQ(offsets, expected) << "cut at " << cut;
    }
}
