#include "ui/BlendPixels.h"

#include "ui/PremultipliedColor.h"

#include <algorithm>

#ifdef __SSE2__
#include <emmintrin.h>

namespace {

constexpr int kAtOnce = 4;

// Eight channels times as many factors / 255, rounded like multiplied(): none of the sums exceeds 16 bits.
__m128i multipliedChannels(__m128i channels, __m128i factors)
{
    const __m128i products = _mm_mullo_epi16(channels, factors);
    const __m128i sums = _mm_add_epi16(products, _mm_srli_epi16(products, 8));
    return _mm_srli_epi16(_mm_add_epi16(sums, _mm_set1_epi16(0x80)), 8);
}

__m128i blendedFour(__m128i source, __m128i target)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i single = _mm_sub_epi32(_mm_set1_epi32(255), _mm_srli_epi32(source, 24));
    const __m128i factors = _mm_or_si128(single, _mm_slli_epi32(single, 16)); // twice per pixel
    const __m128i low =
        multipliedChannels(_mm_unpacklo_epi8(target, zero), _mm_unpacklo_epi32(factors, factors));
    const __m128i high =
        multipliedChannels(_mm_unpackhi_epi8(target, zero), _mm_unpackhi_epi32(factors, factors));
    return _mm_add_epi8(source, _mm_packus_epi16(low, high));
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
