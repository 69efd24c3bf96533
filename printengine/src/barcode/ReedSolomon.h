#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Barcode::Encoder {

/// Check words over the Galois field of 256 elements by `Polynomial`, whose primitive element is 2: up to `MostChecks`,
/// by the polynomials with the roots 2^FirstRoot and those that follow.
template <unsigned Polynomial, unsigned FirstRoot, unsigned MostChecks>
class ReedSolomon {
public:
    /// Fills `checks` with those of every `step`th word of `data`, from the first on.
    static void Check(std::span<std::uint8_t const> data, std::size_t step, std::span<std::uint8_t> checks) {
        static_assert(MostChecks < 255);
        auto const* const generator = Generators.data() + Start(checks.size());
        std::size_t const last = checks.size() - 1;
        // Long division by the generator: the register holds the remainder so far, its highest word first.
        for (auto& check : checks) check = 0;
        for (std::size_t p = 0; p < data.size(); p += step) {
            std::uint8_t const factor = data[p] ^ checks[0];
            auto const* const multiples = &Gf.power[Gf.logarithm[factor]];
            std::uint8_t const mask = factor == 0 ? 0 : 0xFF;
            for (std::size_t i = 0; i < last; ++i)
                checks[i] = static_cast<std::uint8_t>(checks[i + 1] ^ (multiples[generator[i]] & mask));
            checks[last] = multiples[generator[last]] & mask;
        }
    }

private:
    struct Field {
        std::array<std::uint8_t, 510> power{};  ///< twice around, for sums of two logarithms
        std::array<std::uint8_t, 256> logarithm{};

        constexpr Field() {
            unsigned value = 1;
            for (unsigned i = 0; i < 255; ++i) {
                power[i] = power[i + 255] = static_cast<std::uint8_t>(value);
                logarithm[value] = static_cast<std::uint8_t>(i);
                value <<= 1;
                if (value > 255) value ^= Polynomial;
            }
        }
    };
    static constexpr Field Gf{};

    /// Where the generator of so many checks begins: they stand one behind the other.
    static constexpr std::size_t Start(std::size_t checks) { return checks * (checks - 1) / 2; }

    /// The generators, highest power first, without their leading 1; in logarithms, as none of their coefficients is 0.
    static constexpr auto Generators = [] {
        std::array<std::uint8_t, Start(MostChecks + 1)> generators{};
        std::array<std::uint8_t, MostChecks + 1> polynomial{1};
        for (unsigned count = 1; count <= MostChecks; ++count) {
            unsigned const root = (FirstRoot + count - 1) % 255;
            for (std::size_t i = count; i > 0; --i) {
                if (polynomial[i - 1] != 0) polynomial[i] ^= Gf.power[Gf.logarithm[polynomial[i - 1]] + root];
            }
            for (std::size_t i = 0; i < count; ++i) generators[Start(count) + i] = Gf.logarithm[polynomial[i + 1]];
        }
        return generators;
    }();
};

}  // namespace Barcode::Encoder
