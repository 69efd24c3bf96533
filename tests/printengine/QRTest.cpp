#include <gtest/gtest.h>

#include <random>

#include "../support/LibrarySymbol.h"
#include "../support/RandomText.h"
#include "Barcode/Encoder/QREncoder.h"

using namespace Barcode::Encoder;

namespace {

std::vector<std::string> Rows(Barcode::Model::MatrixBarcodeModel const& model) {
    std::vector<std::string> rows;
    for (auto const& cells : model.GetCells()) {
        auto& row = rows.emplace_back();
        for (bool const dark : cells) row += dark ? '#' : '.';
    }
    return rows;
}

std::vector<std::string> LibraryRows(std::string const& text, QROptions const& options) {
    int const level = static_cast<int>(std::string("LMQH").find(options.level)) + 1;
    int const mask = static_cast<int>(options.mask + 1) << 8;
    LibraryRequest request{BARCODE_QRCODE, level, 0, mask | (options.kanji ? ZINT_FULL_MULTIBYTE : 0)};
    if (options.count >= 2) {
        request.append.index = static_cast<int>(options.index);
        request.append.count = static_cast<int>(options.count);
        std::to_string(options.parity).copy(request.append.id, sizeof request.append.id - 1);
    }
    return LibrarySymbol(text, request);
}

/// Characters of Shift JIS, among them bytes that are none.
std::string JapaneseText(std::mt19937& random, std::size_t longest) {
    std::string text;
    for (std::size_t const length = 1 + random() % longest; text.size() < length;) {
        bool const isFirst = random() % 2 == 0;
        text += static_cast<char>(isFirst ? 0x81 + random() % 31 : 0xE0 + random() % 13);
        text += static_cast<char>(0x3E + random() % 0xC2);
        if (random() % 9 == 0) text += RandomText(random, 20);
    }
    return text;
}

TEST(QR, ModuleForModuleAsTheLibrarys) {
    std::mt19937 random(37);
    constexpr std::size_t Longest[] = {25, 60, 300, 2000, 7089};
    int const count = RandomTextCount(600);
    for (int i = 0; i < count; ++i) {
        QROptions options;
        options.level = "LMQH"[random() % 4];
        options.mask = static_cast<unsigned>(random() % 8);
        options.kanji = random() % 3 == 0;
        if (random() % 6 == 0) {
            options.count = static_cast<unsigned>(2 + random() % 15);
            options.index = static_cast<unsigned>(1 + random() % options.count);
            options.parity = static_cast<unsigned>(random() % 256);
        }
        std::size_t const longest = Longest[random() % std::size(Longest)];
        auto text = options.kanji ? JapaneseText(random, longest) : RandomText(random, longest);
        if (random() % 6 == 0) text.assign(text.size(), '7');
        ASSERT_EQ(Rows(QREncoder::Encode(text, options)), LibraryRows(text, options)) << i;
    }
}

/// The most that each kind of text may be, at the first and the last version (ISO/IEC 18004, table 7).
TEST(QR, HoldsAsMuchAsTheStandardSays) {
    struct {
        char level;
        char character;
        std::size_t first;
        std::size_t last;
    } const rows[] = {{'L', '1', 41, 7089}, {'L', 'A', 25, 4296}, {'L', 'a', 17, 2953}, {'M', '1', 34, 5596},
                      {'Q', 'A', 16, 2420}, {'H', 'a', 7, 1273},  {'H', '1', 17, 3057}};
    for (auto const& row : rows) {
        auto const side = [&](std::size_t length) {
            return QREncoder::Encode(std::string(length, row.character), {.level = row.level}).GetCells().size();
        };
        EXPECT_EQ(side(row.first), 21U) << row.level << row.character;
        EXPECT_EQ(side(row.first + 1), 25U) << row.level << row.character;
        EXPECT_EQ(side(row.last), 177U) << row.level << row.character;
        EXPECT_EQ(side(row.last + 1), 0U) << row.level << row.character;
    }
}

}  // namespace
