#pragma once

namespace Scripting {

/// A resolution in dots per inch. The product prints at 203, 300 and 600; other values are carried as they stand.
class Dpi {
public:
    constexpr explicit Dpi(unsigned value) : value_(value) {}

    /// Dots per inch.
    constexpr unsigned Value() const { return value_; }

    friend constexpr bool operator==(Dpi, Dpi) = default;

private:
    unsigned value_;
};

}  // namespace Scripting
