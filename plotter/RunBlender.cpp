#include "RunBlender.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#ifdef __SSE2__

namespace
{

constexpr int groupPixels = 16; // looked at together: curves cover few of 64 pixels, and these are neighbours
constexpr int vectorPixels = 4;

/// Eight channels, each in 16 bits, times \a kept / 255.
__m128i faded(__m128i channels, __m128i kept)
{
    const __m128i product = _mm_mullo_epi16(channels, kept);
    const __m128i rounded = _mm_add_epi16(_mm_add_epi16(product, _mm_srli_epi16(product, 8)), _mm_set1_epi16(128));
    return _mm_srli_epi16(rounded, 8);
}

void blendVector(quint32 *pixels, __m128i chosen, __m128i source, __m128i kept)
{
    auto *const place = reinterpret_cast<__m128i *>(pixels);
    const __m128i before = _mm_loadu_si128(place);
    const __m128i zero = _mm_setzero_si128();
    const __m128i low = faded(_mm_unpacklo_epi8(before, zero), kept);
    const __m128i high = faded(_mm_unpackhi_epi8(before, zero), kept);
    const __m128i blended = _mm_add_epi8(source, _mm_packus_epi16(low, high));
    _mm_storeu_si128(place, _mm_or_si128(_mm_and_si128(chosen, blended), _mm_andnot_si128(chosen, before)));
}

} // namespace

void blendCovered(quint32 *pixels, quint64 covered, const BlendColor &color)
{
    const __m128i source = _mm_set1_epi32(static_cast<int>(color.source));
    const __m128i kept = _mm_set1_epi16(static_cast<short>(color.kept));
    for (int first = 0; first < blendedPixels; first += groupPixels) {
        const auto group = static_cast<int>(covered >> first & 0xffffU);
        if (group == 0) {
            continue;
        }
        const __m128i bits = _mm_set1_epi32(group);
        __m128i bit = _mm_setr_epi32(1, 2, 4, 8);
        for (int index = first; index < first + groupPixels; index += vectorPixels) {
            blendVector(pixels + index, _mm_cmpeq_epi32(_mm_and_si128(bits, bit), bit), source, kept);
            bit = _mm_slli_epi32(bit, vectorPixels);
        }
    }
}

#else

void blendCovered(quint32 *pixels, quint64 covered, const BlendColor &color)
{
    for (int index = 0; index < blendedPixels; ++index) {
        if ((covered >> index & 1) != 0) {
            pixels[index] = blended(pixels[index], color);
        }
    }
}

#endif
