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
    /// For so many checks.
    explicit ReedSolomon(std::size_t checks) : checks_(checks), words_((checks + 7) / 8) {
        // The products of the generator and the powers of 2 make up all others.
        Register product{};
        for (std::size_t i = 0; i < checks; ++i) Put(product, i, Gf.power[Generators[Start(checks) + i]]);
        for (auto& products : products_) {
            for (std::size_t bit = 1; bit < products.size(); bit *= 2) {
                for (std::size_t rest = 0; rest < bit; ++rest) {
                    for (std::size_t w = 0; w < words_; ++w) products[bit + rest][w] = products[rest][w] ^ product[w];
                }
                for (std::size_t w = 0; w < words_; ++w) product[w] = Doubled(product[w]);
            }
        }
    }

    /// Fills `checks` with those of every `step`th word of `data`, from the first on.
    void Check(std::span<std::uint8_t const> data, std::size_t step, std::span<std::uint8_t> checks) const {
        // Long division by the generator: the register holds the remainder so far, its highest word first.
        Register rest{};
        for (std::size_t p = 0; p < data.size(); p += step) {
            auto const factor = static_cast<std::uint8_t>(data[p] ^ rest[0] >> 56);
            auto const& low = products_[0][factor & 0xF];
            auto const& high = products_[1][factor >> 4];
            for (std::size_t w = 0; w < words_; ++w) rest[w] = (rest[w] << 8 | rest[w + 1] >> 56) ^ low[w] ^ high[w];
        }
        for (std::size_t i = 0; i < checks_; ++i)
            checks[i] = static_cast<std::uint8_t>(rest[i / 8] >> (56 - i % 8 * 8));
    }

private:
    /// Words of the field, eight in each of its own, the first in the highest bits; the last is always 0.
    using Register = std::array<std::uint64_t, (MostChecks + 7) / 8 + 1>;

    static void Put(Register& into, std::size_t i, std::uint64_t value) { into[i / 8] |= value << (56 - i % 8 * 8); }

    /// Eight words of the field times 2.
    static std::uint64_t Doubled(std::uint64_t words) {
        constexpr std::uint64_t Each = 0x0101010101010101;
        return (words & Each * 0x7F) << 1 ^ (words >> 7 & Each) * (Polynomial & 0xFF);
    }

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

    std::size_t checks_;
    std::size_t words_;  ///< of a register, that hold checks
    /// The generator times each value of the lower and of the upper half of a factor.
    std::array<std::array<Register, 16>, 2> products_{};
};

}  // namespace Barcode::Encoder
