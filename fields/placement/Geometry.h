#pragma once

#include <cstdint>

namespace ZplCore {

/// Arithmetic on coordinates wraps at 32 bits: a stream can send any number, and none may be undefined.
constexpr int WrapAdd(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
constexpr int WrapSubtract(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}
constexpr int WrapMultiply(int a, int b) {
    return static_cast<int>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

/// A position or an extent in dots; x grows to the right, y downwards.
struct ZplPoint {
    int x = 0;
    int y = 0;

    constexpr ZplPoint() = default;
    constexpr ZplPoint(int px, int py) : x(px), y(py) {}

    friend constexpr bool operator==(ZplPoint, ZplPoint) = default;
    friend constexpr ZplPoint operator+(ZplPoint a, ZplPoint b) { return {WrapAdd(a.x, b.x), WrapAdd(a.y, b.y)}; }
    friend constexpr ZplPoint operator-(ZplPoint a, ZplPoint b) {
        return {WrapSubtract(a.x, b.x), WrapSubtract(a.y, b.y)};
    }
    friend constexpr ZplPoint operator-(ZplPoint a) { return ZplPoint() - a; }
    friend constexpr ZplPoint operator*(ZplPoint a, int factor) {
        return {WrapMultiply(a.x, factor), WrapMultiply(a.y, factor)};
    }
};

/// x' = xx x + xy y + offset.x, y' = yx x + yy y + offset.y. Mind the order of the entries: yy stands before yx.
struct LinearTransform {
    int xx = 1;
    int xy = 0;
    int yy = 1;
    int yx = 0;
    ZplPoint offset;

    constexpr LinearTransform(int mxx, int mxy, int myy, int myx, ZplPoint shift)
        : xx(mxx), xy(mxy), yy(myy), yx(myx), offset(shift) {}
    /// The translation by `shift`.
    constexpr explicit LinearTransform(ZplPoint shift) : offset(shift) {}

    friend constexpr bool operator==(LinearTransform const&, LinearTransform const&) = default;

    constexpr ZplPoint operator*(ZplPoint p) const {
        return ZplPoint(WrapAdd(WrapMultiply(xx, p.x), WrapMultiply(xy, p.y)),
                        WrapAdd(WrapMultiply(yx, p.x), WrapMultiply(yy, p.y))) +
               offset;
    }
    /// (A * B) * p is A * (B * p).
    constexpr LinearTransform operator*(LinearTransform const& b) const {
        return {WrapAdd(WrapMultiply(xx, b.xx), WrapMultiply(xy, b.yx)),
                WrapAdd(WrapMultiply(xx, b.xy), WrapMultiply(xy, b.yy)),
                WrapAdd(WrapMultiply(yx, b.xy), WrapMultiply(yy, b.yy)),
                WrapAdd(WrapMultiply(yx, b.xx), WrapMultiply(yy, b.yx)), *this * b.offset};
    }
};

}  // namespace ZplCore
