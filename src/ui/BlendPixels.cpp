#include "ui/BlendPixels.h"

#include "ui/PremultipliedColor.h"

#include <algorithm>

#ifdef __SSE2__
#include <bit>
#include <emmintrin.h>

namespace {

constexpr int kAtOnce = 4;
using Words [[gnu::vector_size(16)]] = unsigned short; // eight channels of two pixels
using Pixels [[gnu::vector_size(16)]] = unsigned;

// Times as many factors / 255, rounded like multiplied(): none of the sums exceeds 16 bits.
__m128i multipliedChannels(__m128i channels, __m128i factors)
{
    const auto products = std::bit_cast<Words>(_mm_mullo_epi16(channels, factors));
    return std::bit_cast<__m128i>((products + (products >> 8) + 0x80) >> 8);
}

__m128i blendedFour(__m128i source, __m128i target)
{
    const __m128i zero = _mm_setzero_si128();
    const Pixels rest = 255U - (std::bit_cast<Pixels>(source) >> 24);
    const auto factors = std::bit_cast<__m128i>(rest | (rest << 16)); // twice per pixel
    const __m128i low =
        multipliedChannels(_mm_unpacklo_epi8(target, zero), _mm_unpacklo_epi32(factors, factors));
    const __m128i high =
        multipliedChannels(_mm_unpackhi_epi8(target, zero), _mm_unpackhi_epi32(factors, factors));
    // No channel overflows into the next one: pixels can be added as they are.
    return std::bit_cast<__m128i>(std::bit_cast<Pixels>(source)
                                  + std::bit_cast<Pixels>(_mm_packus_epi16(low, high)));
}

} // namespace

void blendPixels(const QRgb *source, QRgb *target, int count)
{
    int i = 0;
    for (; i + kAtOnce <= count; i += kAtOnce) {
        auto *place = reinterpret_cast<__m128i *>(target + i);
        const __m128i from = _mm_loadu_si128(reinterpret_cast<const __m128i *>(source + i));
        _mm_storeu_si128(place, blendedFour(from, _mm_loadu_si128(place)));
    }
    std::transform(source + i, source + count, target + i, target + i, blended);
}
#else
void blendPixels(const QRgb *source, QRgb *target, int count)
{
    std::transform(source, source + count, target, target, blended);
}
#endif
