#include "library/forms/FieldGroups.h"

#include <algorithm>
#include <cmath>
#include <utility>

using Scripting::PixelBox;

namespace {

std::vector<std::size_t> WithInk(DrawnFormat const& drawn, std::vector<std::size_t> fields) {
    std::erase_if(fields,
                  [&](std::size_t field) { return field >= drawn.fields.size() || drawn.fields[field].box.IsEmpty(); });
    return fields;
}

double Middle(int from, int to) { return (from + to) / 2.0; }

/// How far a box is from its place in the box around all.
std::pair<double, double> WayTo(PixelBox const& all, PixelBox const& box, Alignment alignment) {
    switch (alignment) {
        case Alignment::Left: return {all.left - box.left, 0};
        case Alignment::Right: return {all.right - box.right, 0};
        case Alignment::Top: return {0, all.top - box.top};
        case Alignment::Bottom: return {0, all.bottom - box.bottom};
        case Alignment::CenterAcross: return {Middle(all.left, all.right) - Middle(box.left, box.right), 0};
        case Alignment::CenterDown: break;
    }
    return {0, Middle(all.top, all.bottom) - Middle(box.top, box.bottom)};
}

}  // namespace

FieldShift ShiftOf(DrawnFormat const& drawn, std::size_t field, double right, double down) {
    // A page that is turned has been turned behind the drawing.
    double const across = drawn.turned != drawn.mirrored ? -1 : 1;
    double const upright = drawn.turned ? -1 : 1;
    return {field, static_cast<int>(std::lround(across * right / drawn.pixelsPerDot)),
            static_cast<int>(std::lround(upright * down / drawn.pixelsPerDot))};
}

std::vector<FieldShift> Align(DrawnFormat const& drawn, std::vector<std::size_t> const& fields, Alignment alignment) {
    PixelBox all;
    auto const inked = WithInk(drawn, fields);
    for (auto const field : inked) all.Add(drawn.fields[field].box);
    std::vector<FieldShift> shifts;
    for (auto const field : inked) {
        auto const [right, down] = WayTo(all, drawn.fields[field].box, alignment);
        shifts.push_back(ShiftOf(drawn, field, right, down));
    }
    return shifts;
}

std::vector<FieldShift> Distribute(DrawnFormat const& drawn, std::vector<std::size_t> fields, bool across) {
    fields = WithInk(drawn, std::move(fields));
    auto const box = [&](std::size_t field) -> PixelBox const& { return drawn.fields[field].box; };
    auto const begin = [&](std::size_t field) { return across ? box(field).left : box(field).top; };
    auto const size = [&](std::size_t field) { return across ? box(field).Width() : box(field).Height(); };
    if (fields.size() < 3) return {};
    std::stable_sort(fields.begin(), fields.end(), [&](auto a, auto b) { return begin(a) < begin(b); });
    int room = begin(fields.back()) - begin(fields.front());
    for (std::size_t i = 0; i + 1 < fields.size(); ++i) room -= size(fields[i]);
    double const gap = room / static_cast<double>(fields.size() - 1);
    std::vector<FieldShift> shifts;
    double at = begin(fields.front());
    for (auto const field : fields) {
        double const way = at - begin(field);
        shifts.push_back(ShiftOf(drawn, field, across ? way : 0, across ? 0 : way));
        at += size(field) + gap;
    }
    return shifts;
}
