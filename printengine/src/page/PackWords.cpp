#include "printengine/src/page/PackWords.h"

#include <cstring>

#include "printengine/src/raster/Bits.h"

// What the processor can do was found out by the loader already, and is asked of the C library: to ask the processor
// again takes a quarter of a millisecond in a virtual machine, where each such question is one to its host.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__clang__)
#include <immintrin.h>
#include <sys/platform/x86.h>
#define PACKS_BY_VECTORS 1
#else
#define PACKS_BY_VECTORS 0
#endif

namespace PrintEngine::Pages {

using Drawing::Word;

#if PACKS_BY_VECTORS
namespace {

/// Packs four words at a time; gives how many.
__attribute__((target("avx2"))) std::size_t PackVectors(Word const* from, std::size_t count, Word flip,
                                                        std::uint8_t* out) {
    __m256i const turned = _mm256_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8,  //
                                            7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8);
    __m256i const flips = _mm256_set1_epi64x(static_cast<long long>(flip));
    std::size_t done = 0;
    for (; count - done >= 4; done += 4) {
        __m256i const words = _mm256_loadu_si256(reinterpret_cast<__m256i const*>(from + done));
        __m256i const bytes = _mm256_shuffle_epi8(_mm256_xor_si256(words, flips), turned);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + done * sizeof(Word)), bytes);
    }
    return done;
}

bool const HasVectors = CPU_FEATURE_ACTIVE(AVX2);

}  // namespace
#endif

void PackWords(Word const* from, std::size_t count, Word flip, std::uint8_t* out) {
    std::size_t i = 0;
#if PACKS_BY_VECTORS
    if (HasVectors) i = PackVectors(from, count, flip, out);
#endif
    for (; i < count; ++i) {
        Word const packed = Drawing::BigEndian(from[i] ^ flip);
        std::memcpy(out + i * sizeof packed, &packed, sizeof packed);
    }
}

}  // namespace PrintEngine::Pages
