#include "RunBlender.h"

#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#define HAS_VECTORS
#endif

namespace
{

void blendSingly(quint32 *pixels, quint64 covered, const BlendColor &color)
{
    for (int index = 0; index < blendedPixels; ++index) {
        if ((covered >> index & 1) != 0) {
            pixels[index] = blended(pixels[index], color);
        }
    }
}

#ifdef HAS_VECTORS

constexpr int groupPixels = 16; // skipped together if not covered: curves cover few of 64 pixels

// Two versions: four pixels at a time with SSE2, which every x86-64 has, and eight.

/// For faded(): a channel, 0 to 255, in the upper half of 16 bits times this factor has in the upper half of its 32 bits
/// what blended() rounds: the channel times the share that is kept, and a 256th of that.
short factorOf(const BlendColor &color)
{
    return static_cast<short>(color.kept * 0x101);
}

__m128i faded(__m128i upperHalves, __m128i factor)
{
    return _mm_srli_epi16(_mm_add_epi16(_mm_mulhi_epu16(upperHalves, factor), _mm_set1_epi16(128)), 8);
}

void blendFours(quint32 *pixels, quint64 covered, const BlendColor &color)
{
    constexpr int vectorPixels = 4;
    const __m128i source = _mm_set1_epi32(static_cast<int>(color.source));
    const __m128i factor = _mm_set1_epi16(factorOf(color));
    const __m128i zero = _mm_setzero_si128();
    for (int first = 0; first < blendedPixels; first += groupPixels) {
        const auto group = static_cast<int>(covered >> first & 0xffffU);
        if (group == 0) {
            continue;
        }
        const __m128i bits = _mm_set1_epi32(group);
        __m128i bit = _mm_setr_epi32(1, 2, 4, 8);
        for (int index = first; index < first + groupPixels; index += vectorPixels) {
            auto *const place = reinterpret_cast<__m128i *>(pixels + index);
            const __m128i before = _mm_loadu_si128(place);
            const __m128i low = faded(_mm_unpacklo_epi8(zero, before), factor);
            const __m128i high = faded(_mm_unpackhi_epi8(zero, before), factor);
            const __m128i over = _mm_add_epi8(source, _mm_packus_epi16(low, high));
            const __m128i chosen = _mm_cmpeq_epi32(_mm_and_si128(bits, bit), bit);
            _mm_storeu_si128(place, _mm_or_si128(_mm_and_si128(chosen, over), _mm_andnot_si128(chosen, before)));
            bit = _mm_slli_epi32(bit, vectorPixels);
        }
    }
}

__attribute__((target("avx2"))) inline __m256i faded(__m256i upperHalves, __m256i factor)
{
    return _mm256_srli_epi16(_mm256_add_epi16(_mm256_mulhi_epu16(upperHalves, factor), _mm256_set1_epi16(128)), 8);
}

__attribute__((target("avx2"))) void blendEights(quint32 *pixels, quint64 covered, const BlendColor &color)
{
    constexpr int vectorPixels = 8;
    const __m256i source = _mm256_set1_epi32(static_cast<int>(color.source));
    const __m256i factor = _mm256_set1_epi16(factorOf(color));
    const __m256i zero = _mm256_setzero_si256();
    const __m256i toSign = _mm256_setr_epi32(31, 30, 29, 28, 27, 26, 25, 24); // the bit of each pixel
    for (int first = 0; first < blendedPixels; first += vectorPixels) {
        const auto group = static_cast<int>(covered >> first & 0xffU);
        if (group == 0) {
            continue;
        }
        auto *const place = reinterpret_cast<__m256i *>(pixels + first);
        const __m256i before = _mm256_loadu_si256(place);
        const __m256i low = faded(_mm256_unpacklo_epi8(zero, before), factor);
        const __m256i high = faded(_mm256_unpackhi_epi8(zero, before), factor);
        const __m256i over = _mm256_add_epi8(source, _mm256_packus_epi16(low, high));
        const __m256 chosen = _mm256_castsi256_ps(_mm256_sllv_epi32(_mm256_set1_epi32(group), toSign));
        const __m256 after = _mm256_blendv_ps(_mm256_castsi256_ps(before), _mm256_castsi256_ps(over), chosen);
        _mm256_storeu_si256(place, _mm256_castps_si256(after));
    }
}

#endif

} // namespace

QVector<BlendWay> blendWays()
{
    QVector<BlendWay> ways = {blendSingly};
#ifdef HAS_VECTORS
    ways.append(blendFours);
    if (__builtin_cpu_supports("avx2")) {
        ways.append(blendEights);
    }
#endif
    return ways;
}
