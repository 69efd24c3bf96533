#include "desktop/compare/PictureFile.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/Files.h"
#include "library/OutputError.h"

namespace {

constexpr std::string_view PngSignature("\x89PNG\r\n\x1A\n", 8);
constexpr std::uint64_t MostPixels = std::uint64_t{1} << 26;  // as many as a page has at most

bool IsBitmap(std::string_view bytes) {
    return bytes.size() > 2 && bytes[0] == 'P' && (bytes[1] == '1' || bytes[1] == '4') &&
           (std::isspace(static_cast<unsigned char>(bytes[2])) || bytes[2] == '#');
}

void CheckSize(std::uint64_t width, std::uint64_t height) {
    if (width == 0 || height == 0) throw std::runtime_error("it has no pixels");
    if (width > MostPixels || height > MostPixels || width * height > MostPixels)
        throw std::runtime_error("it has more than 64 Mi pixels");
}

PackedPage EmptyPage(unsigned width, unsigned height) {
    CheckSize(width, height);
    PackedPage page{width, height, {}};
    page.rows.resize(page.BytesPerRow() * height);
    return page;
}

void SetBlack(PackedPage& page, unsigned x, unsigned y) {
    page.rows[y * page.BytesPerRow() + x / 8] |= static_cast<char>(0x80 >> x % 8);
}

/// The library's own record of a picture, freed whatever happens.
class PngImage {
public:
    PngImage() { image_.version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(&image_); }
    PngImage(PngImage const&) = delete;
    PngImage& operator=(PngImage const&) = delete;
    png_image* operator->() { return &image_; }
    png_image* Get() { return &image_; }

private:
    png_image image_{};
};

PackedPage ReadPng(std::string_view bytes) {
    PngImage image;
    if (!png_image_begin_read_from_memory(image.Get(), bytes.data(), bytes.size()))
        throw std::runtime_error(image->message);
    PackedPage page = EmptyPage(image->width, image->height);
    image->format = PNG_FORMAT_GRAY;
    std::vector<png_byte> grey(PNG_IMAGE_SIZE(*image.Get()));
    constexpr png_byte White = 255;
    png_color const background{White, White, White};
    if (!png_image_finish_read(image.Get(), &background, grey.data(), 0, nullptr))
        throw std::runtime_error(image->message);
    constexpr png_byte HalfGrey = 128;
    for (unsigned y = 0; y < page.height; ++y) {
        png_byte const* const row = grey.data() + std::size_t{y} * page.width;
        for (unsigned x = 0; x < page.width; ++x) {
            if (row[x] < HalfGrey) SetBlack(page, x, y);
        }
    }
    return page;
}

/// The words of a portable bitmap, with comments left out.
class BitmapWords {
public:
    explicit BitmapWords(std::string_view bytes) : rest_(bytes) {}

    unsigned Number() {
        Skip();
        std::uint64_t value = 0;
        bool hasDigit = false;
        while (!rest_.empty() && rest_[0] >= '0' && rest_[0] <= '9') {
            value = std::min<std::uint64_t>(value * 10 + static_cast<unsigned>(Take() - '0'), MostPixels + 1);
            hasDigit = true;
        }
        if (!hasDigit) throw std::runtime_error("its size is missing");
        return static_cast<unsigned>(value);
    }

    /// The next pixel of a plain bitmap; digits may touch each other.
    char Digit() {
        Skip();
        if (rest_.empty()) throw std::runtime_error("it ends before its last row");
        return Take();
    }

    /// Behind the one blank that ends the head of a raw bitmap.
    std::string_view Raw() const { return rest_.substr(std::min<std::size_t>(1, rest_.size())); }

private:
    char Take() {
        char const c = rest_[0];
        rest_.remove_prefix(1);
        return c;
    }
    void Skip() {
        while (!rest_.empty() && (std::isspace(static_cast<unsigned char>(rest_[0])) || rest_[0] == '#')) {
            if (rest_[0] == '#') rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size() - 1));
            rest_.remove_prefix(1);
        }
    }

    std::string_view rest_;
};

PackedPage ReadBitmap(std::string_view bytes) {
    bool const isRaw = bytes[1] == '4';
    BitmapWords words(bytes.substr(2));
    unsigned const width = words.Number();
    unsigned const height = words.Number();
    PackedPage page = EmptyPage(width, height);
    if (!isRaw) {
        for (unsigned y = 0; y < height; ++y) {
            for (unsigned x = 0; x < width; ++x) {
                if (words.Digit() != '0') SetBlack(page, x, y);
            }
        }
        return page;
    }
    if (words.Raw().size() < page.rows.size()) throw std::runtime_error("it ends before its last row");
    page.rows = words.Raw().substr(0, page.rows.size());
    if (unsigned const used = width % 8; used != 0) {
        for (std::size_t end = page.BytesPerRow(); end <= page.rows.size(); end += page.BytesPerRow())
            page.rows[end - 1] &= static_cast<char>(0xFF00 >> used);
    }
    return page;
}

}  // namespace

bool PictureFile::IsPicture(std::string_view bytes) { return bytes.starts_with(PngSignature) || IsBitmap(bytes); }

PackedPage PictureFile::Read(std::string_view bytes) { return IsBitmap(bytes) ? ReadBitmap(bytes) : ReadPng(bytes); }

void PictureFile::WriteDifference(std::filesystem::path const& path, PackedPage const& expected,
                                  PackedPage const& actual) {
    using Colour = std::array<png_byte, 3>;
    constexpr Colour White{255, 255, 255};
    constexpr Colour Grey{185, 185, 185};
    constexpr Colour Red{213, 43, 30};
    constexpr Colour Blue{0, 96, 204};
    PngImage image;
    image->width = std::max(expected.width, actual.width);
    image->height = std::max(expected.height, actual.height);
    image->format = PNG_FORMAT_RGB;
    if (std::uint64_t{image->width} * image->height > MostPixels)
        throw OutputError("cannot write " + path.string() + ": one page is wide and the other one high beyond measure");
    std::vector<Colour> pixels;
    pixels.reserve(std::size_t{image->width} * image->height);
    for (unsigned y = 0; y < image->height; ++y) {
        for (unsigned x = 0; x < image->width; ++x) {
            bool const isExpected = expected.IsBlack(x, y);
            bool const isActual = actual.IsBlack(x, y);
            pixels.push_back(isExpected ? isActual ? Grey : Red : isActual ? Blue : White);
        }
    }
    std::string file;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*image.Get());
    file.resize(size);
    if (!png_image_write_to_memory(image.Get(), file.data(), &size, 0, pixels.data(), 0, nullptr))
        throw OutputError("cannot write " + path.string() + ": " + image->message);
    file.resize(size);
    if (auto const error = WriteFileAtomically(path, file))
        throw OutputError("cannot write " + path.string() + ": " + error.message());
}
