#include "library/LoadedReader.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <vector>

#include "scanner/ScanModule.h"

namespace {

using ReadFunction = decltype(&zpl_scan_read_1);

/// What a camera would take of a picture: modules of some pixels, and white around.
struct Photograph {
    static constexpr int White = 40;          // pixels
    static constexpr double LeastModule = 3;  // pixels
    static constexpr std::int64_t MostPixels = 64 * 1024 * 1024;

    std::vector<std::uint8_t> pixels;
    int width;
    int height;

    Photograph(Scripting::PixelRows const& picture, double module) {
        std::int64_t const area = std::int64_t{picture.box.Width()} * picture.box.Height();
        int scale = module > 0 ? std::max(1, static_cast<int>(std::ceil(LeastModule / module))) : 1;
        if (area * scale * scale > MostPixels) scale = 1;
        width = picture.box.Width() * scale + 2 * White;
        height = picture.box.Height() * scale + 2 * White;
        pixels.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 255);
        for (int y = White; y < height - White; ++y) {
            auto const* const row = picture.Row((y - White) / scale);
            auto* const out = pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
            for (int x = White; x < width - White; ++x) {
                int const at = (x - White) / scale;
                if ((row[at / 64] >> (63 - at % 64) & 1) != 0) out[x] = 0;
            }
        }
    }
};

class LoadedReader final : public ZplCore::SymbolReader {
public:
    explicit LoadedReader(ReadFunction read) : read_(read) {}

    std::optional<std::string> Read(Scripting::PixelRows const& picture, std::string_view format,
                                    double module) const override {
        if (picture.box.IsEmpty()) return std::nullopt;
        Photograph const photograph(picture, module);
        // More than any symbol holds.
        std::array<std::uint8_t, 16384> text{};
        int const length = read_(photograph.pixels.data(), photograph.width, photograph.height,
                                 std::string(format).c_str(), text.data(), static_cast<int>(text.size()));
        if (length < 0) return std::nullopt;
        return std::string(text.begin(), text.begin() + length);
    }

private:
    ReadFunction read_;
};

}  // namespace

std::shared_ptr<ZplCore::SymbolReader const> LoadSymbolReader() {
    void* const module = ::dlopen("libzplscan.so", RTLD_NOW | RTLD_LOCAL);
    void* const function = module ? ::dlsym(module, "zpl_scan_read_1") : nullptr;
    if (!function) {
        char const* const reason = ::dlerror();
        throw std::runtime_error("the reader of symbols cannot be loaded: " +
                                 std::string(reason ? reason : "no reason"));
    }
    return std::make_shared<LoadedReader>(reinterpret_cast<ReadFunction>(function));
}
