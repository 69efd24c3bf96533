#include "plugin/surfaces/PageReduction.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

/// Sums of the grey of the dots of a row, up to each of them.
class RowSums {
public:
    explicit RowSums(QImage const& page) : page_(page), sums_(static_cast<std::size_t>(page.width()) + 1) {
        auto const colours = page.colorTable();
        for (qsizetype i = 0; i < 2 && i < colours.size(); ++i)
            greys_[static_cast<std::size_t>(i)] = static_cast<unsigned>(qGray(colours[i]));
    }

    void Read(int row) {
        auto const* const dots = page_.constScanLine(row);
        bool const isMono = page_.format() == QImage::Format_Mono;
        unsigned sum = 0;
        for (std::size_t x = 0; x + 1 < sums_.size(); ++x) {
            sum += isMono ? greys_[dots[x / 8] >> (7 - x % 8) & 1U] : dots[x];
            sums_[x + 1] = static_cast<float>(sum);
        }
    }
    /// Between two dots the next one counts in part.
    float At(std::size_t dot, float part) const {
        return part > 0 ? sums_[dot] + part * (sums_[dot + 1] - sums_[dot]) : sums_[dot];
    }

private:
    QImage const& page_;
    std::array<unsigned, 2> greys_{0, 255};
    std::vector<float> sums_;
};

/// Where pixels begin, in dots.
struct Edge {
    std::size_t dot;
    float part;
};

std::vector<Edge> EdgesOf(int dots, int pixels) {
    std::vector<Edge> edges;
    for (int i = 0; i <= pixels; ++i) {
        auto const whole = static_cast<long long>(i) * dots;
        edges.push_back({static_cast<std::size_t>(whole / pixels),
                         static_cast<float>(whole % pixels) / static_cast<float>(pixels)});
    }
    return edges;
}

}  // namespace

QImage ReducedPage(QImage const& page, QSize size) {
    size = size.boundedTo(page.size()).expandedTo({1, 1});
    if (page.isNull()) return {};
    QImage const source = page.format() == QImage::Format_Mono ? page : page.convertToFormat(QImage::Format_Grayscale8);
    QImage reduced(size, QImage::Format_Grayscale8);
    auto const columns = EdgesOf(source.width(), size.width());
    auto const rows = EdgesOf(source.height(), size.height());
    RowSums sums(source);
    std::vector<float> totals(static_cast<std::size_t>(size.width()));
    auto const add = [&](float weight) {
        float before = 0;
        for (std::size_t i = 0; i < totals.size(); ++i) {
            float const end = sums.At(columns[i + 1].dot, columns[i + 1].part);
            totals[i] += weight * (end - before);
            before = end;
        }
    };
    float const dotsOfPixel = static_cast<float>(source.width()) / static_cast<float>(size.width()) *
                              static_cast<float>(source.height()) / static_cast<float>(size.height());
    for (std::size_t pixel = 0, dot = 0; pixel + 1 < rows.size(); ++pixel) {
        // What of the row of dots has not gone into the row of pixels above.
        std::fill(totals.begin(), totals.end(), 0.0F);
        if (rows[pixel].part > 0) add(1 - rows[pixel].part);
        for (dot = rows[pixel].dot + (rows[pixel].part > 0 ? 1 : 0); dot < rows[pixel + 1].dot; ++dot) {
            sums.Read(static_cast<int>(dot));
            add(1);
        }
        if (rows[pixel + 1].part > 0) {
            sums.Read(static_cast<int>(dot));
            add(rows[pixel + 1].part);
        }
        auto* const line = reduced.scanLine(static_cast<int>(pixel));
        for (std::size_t i = 0; i < totals.size(); ++i)
            line[i] = static_cast<uchar>(std::lround(totals[i] / dotsOfPixel));
    }
    return reduced;
}
