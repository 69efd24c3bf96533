#pragma once

#include <zint.h>

#include <memory>
#include <string>
#include <vector>

/// What an independent library is asked for; options are the library's, and left alone where they are 0.
struct LibraryRequest {
    int symbology;
    int option1 = 0;
    int option2 = 0;
    int option3 = 0;
    int inputMode = DATA_MODE;
    zint_structapp append = {};
};

/// Its symbol of the data, row by row, '#' for dark modules; no rows if it has none.
inline std::vector<std::string> LibrarySymbol(std::string const& data, LibraryRequest const& request) {
    std::unique_ptr<zint_symbol, void (*)(zint_symbol*)> const symbol(ZBarcode_Create(), ZBarcode_Delete);
    symbol->symbology = request.symbology;
    symbol->input_mode = request.inputMode;
    if (request.option1 != 0) symbol->option_1 = request.option1;
    if (request.option2 != 0) symbol->option_2 = request.option2;
    if (request.option3 != 0) symbol->option_3 = request.option3;
    symbol->structapp = request.append;
    if (ZBarcode_Encode(symbol.get(), reinterpret_cast<unsigned char const*>(data.data()),
                        static_cast<int>(data.size())) >= ZINT_ERROR)
        return {};
    std::vector<std::string> rows(static_cast<std::size_t>(symbol->rows));
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (int x = 0; x < symbol->width; ++x)
            rows[r] += (symbol->encoded_data[r][x / 8] >> x % 8 & 1) != 0 ? '#' : '.';
    }
    return rows;
}
