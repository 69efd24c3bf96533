#include "library/PageFormat.h"

#include <cstdio>
#include <string>
#include <vector>

#include "library/OutputError.h"

namespace {

/// For a format whose pages are files as they are.
class FileWriter final : public PageWriter {
    std::string_view Add(PageForm const& page) override { return page.content; }
};

std::string Number(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.6g", value);
    return text.data();
}

/// Nothing of a page is kept but where its objects begin. The image keeps the compressed rows as they are.
class PdfWriter final : public PageWriter {
    enum : std::size_t { Catalog = 1, Pages, FirstOfPages };  // numbers of objects
    enum : std::size_t { Image, Drawing, Page, ObjectsOfPage };

    std::string_view Add(PageForm const& page) override {
        constexpr double PointsPerInch = 72;
        auto const& [size, dpi, rows] = page;
        std::string const columns = std::to_string(size.width);
        std::size_t const first = FirstOfPages + offsets_.size();
        text_ = offsets_.empty() ? Header : "";
        Begin();
        text_ += "<</Type/XObject/Subtype/Image/Width " + columns + "/Height " + std::to_string(size.height) +
                 "/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/FlateDecode/DecodeParms<</Predictor 15/Colors 1"
                 "/BitsPerComponent 1/Columns " +
                 columns + ">>/Length " + std::to_string(rows.size()) + ">>stream\n";
        text_.append(rows).append("\nendstream\nendobj\n");

        double const resolution = dpi != 0 ? dpi : PointsPerInch;
        std::string const width = Number(size.width * PointsPerInch / resolution);
        std::string const height = Number(size.height * PointsPerInch / resolution);
        std::string const drawing = "q " + width + " 0 0 " + height + " 0 0 cm /Page Do Q";
        Begin();
        text_ += "<</Length " + std::to_string(drawing.size()) + ">>stream\n" + drawing + "\nendstream\nendobj\n";
        Begin();
        text_ += "<</Type/Page/Parent 2 0 R/MediaBox[0 0 " + width + " " + height + "]/Resources<</XObject<</Page " +
                 Reference(first + Image) + ">>>>/Contents " + Reference(first + Drawing) + ">>\nendobj\n";
        size_ += text_.size();
        return text_;
    }

    std::string_view End() override {
        std::size_t const pages = offsets_.size() / ObjectsOfPage;
        offsets_.resize(pages * ObjectsOfPage);  // without those of a page that was not written
        text_.clear();
        std::uint64_t const catalog = size_;
        text_ += "1 0 obj<</Type/Catalog/Pages 2 0 R>>\nendobj\n";
        std::uint64_t const tree = size_ + text_.size();
        text_ += "2 0 obj<</Type/Pages/Count " + std::to_string(pages) + "/Kids[";
        for (std::size_t i = 0; i < pages; ++i) text_ += Reference(FirstOfPages + i * ObjectsOfPage + Page) + "\n";
        text_ += "]>>\nendobj\n";
        std::uint64_t const table = size_ + text_.size();
        std::string const count = std::to_string(FirstOfPages + offsets_.size());
        text_ += "xref\n0 " + count + "\n0000000000 65535 f \n";
        AddToTable(catalog);
        AddToTable(tree);
        for (std::uint64_t const offset : offsets_) AddToTable(offset);
        text_ += "trailer<</Size " + count + "/Root 1 0 R>>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
        return text_;
    }

    // Behind the version, bytes that say that the file is binary.
    static constexpr char const* Header = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";

    static std::string Reference(std::size_t object) { return std::to_string(object) + " 0 R"; }

    /// Begins the next object of a page; throws OutputError where the table cannot tell its place.
    void Begin() {
        constexpr std::uint64_t MostBytes = 9'999'999'999;
        if (size_ + text_.size() > MostBytes)
            throw OutputError("a PDF document holds at most 10 GB; make several, or a file of each page");
        std::string const number = std::to_string(FirstOfPages + offsets_.size());
        offsets_.push_back(size_ + text_.size());
        text_ += number + " 0 obj";
    }

    void AddToTable(std::uint64_t offset) {
        std::array<char, 32> entry{};
        std::snprintf(entry.data(), entry.size(), "%010llu 00000 n \n", static_cast<unsigned long long>(offset));
        text_ += entry.data();
    }

    std::vector<std::uint64_t> offsets_;  ///< of the objects of the pages
    std::uint64_t size_ = 0;              ///< of what was made before, in bytes
    std::string text_;                    ///< made last
};

}  // namespace

std::unique_ptr<PageWriter> MakeFileWriter() { return std::make_unique<FileWriter>(); }

std::unique_ptr<PageWriter> MakePdfWriter() { return std::make_unique<PdfWriter>(); }
