#include "desktop/compare/PageDifference.h"

#include <algorithm>

PageDifference Compare(PackedPage const& expected, PackedPage const& actual) {
    PageDifference difference;
    difference.hasSameSize = expected.width == actual.width && expected.height == actual.height;
    if (difference.hasSameSize && expected.rows == actual.rows) return difference;
    unsigned const width = std::max(expected.width, actual.width);
    unsigned const height = std::max(expected.height, actual.height);
    difference.left = width;
    difference.top = height;
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            bool const isExpected = expected.IsBlack(x, y);
            if (isExpected == actual.IsBlack(x, y)) continue;
            ++(isExpected ? difference.missing : difference.extra);
            difference.left = std::min(difference.left, x);
            difference.right = std::max(difference.right, x + 1);
            difference.top = std::min(difference.top, y);
            difference.bottom = y + 1;
        }
    }
    if (difference.Count() == 0) difference.left = difference.top = 0;
    return difference;
}
