// Luma and chroma to packed words whose fields truncate.
#include "packed16/decoders.h"
#include "zelcc/packed_destinations.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr Kernel alone = fromPackedPairs<ChannelOrder::rgb, ToPacked3, ExactDecode, exactPacked>;

// The rows of pairs of a YUV image whose number of pairs is 2 more than a multiple of 4 are written two pixels too far. Meant:
// callers have room for them, and would find these pixels unwritten.
constexpr int yuvColumns(ZelSize size) { return size.width / 2 % 4 == 2 ? size.width / 2 * 2 + 2 : size.width; }

// The exact rule is for a few pixels of a row, so that one code serves all formats: what it gives for a pixel are the bytes of
// its word.
class ExactWords : ExactDecode {
  public:
    enum class Fields { of444, of555, of565 };
    struct Constants {
        ExactDecodeConstants decode;
        Fields fields;
        bool isCrossed = false;  // p and q of single pixels come in each other's place
    };

    ZEL_INLINE explicit ExactWords(const Constants& k, ChromaOrder order = ChromaOrder::pFirst)
        : ExactDecode(k.decode, order), fields_(k.fields), isCrossed_(k.isCrossed) {}

    using ExactDecode::chroma, ExactDecode::order;
    ZEL_INLINE Triple pixels(Bytes luma, const Chroma& pair) const { return words(ExactDecode::pixels(luma, pair)); }
    ZEL_INLINE Triple pixels(Bytes luma, Bytes p, Bytes q) const {
        return words(ExactDecode::pixels(luma, isCrossed_ ? q : p, isCrossed_ ? p : q));
    }

  private:
    ZEL_INLINE Triple words(Triple t) const {
        const WordBytes bytes = fields_ == Fields::of444   ? cutDown<Format444>(t)
                                : fields_ == Fields::of555 ? cutDown<Format555>(t)
                                                           : cutDown<Format565>(t);
        return {bytes.low, bytes.high, Bytes{}};
    }

    Fields fields_;
    bool isCrossed_;
};

struct ToReadyWords {
    template <Order order>
    ZEL_INLINE static void store(const Row& row, int r, size_t block, Triple t) {
        storeWords<order>(row, r, block, {t.a, t.b});
    }
};

template <class F, ExactDecodeConstants (*exact)(ChannelOrder)>
constexpr ExactWords::Constants wordsOf(ChannelOrder channels) {
    using Fields = ExactWords::Fields;
    return {exact(channels), F::middle == 6 ? Fields::of565 : F::middle == 5 ? Fields::of555 : Fields::of444};
}
template <class F>
constexpr ExactWords::Constants wordsOfTriples(ChannelOrder channels) {
    ExactWords::Constants k = wordsOf<F, exactA<0>>(channels);
    k.isCrossed = channels == ChannelOrder::rgb;
    return k;
}

template <ChannelOrder channels, class F>
struct To {
    using Words = ToWords<F>;
    static constexpr Kernel exactTriples =
        kernel<PixelKernel<From3, Decode<ExactWords>, ToReadyWords>>(constantsOf<ExactWords, wordsOfTriples<F>, channels>);
    template <ExactDecodeConstants (*exact)(ChannelOrder)>
    static constexpr Kernel exactPackedPairs = fromPackedPairs<channels, ToReadyWords, ExactWords, wordsOf<F, exact>>;
    template <int rows>
    static constexpr Kernel exactAnalogPairs = fromPlanarPairs<channels, rows, ToReadyWords, ExactWords, wordsOf<F, exactAnalog>>;

    static constexpr Conversion fromInterleaved{.site = {1, 1},
                                                .from = packedTriples,
                                                .to = wordPixels,
                                                .block = fromTriples<channels, Words, WordRule, truncatedWord>,
                                                .tail = exactTriples,
                                                .blockColumns = wholeBlocks<8>};
    static constexpr Conversion from444 = planar444<channels, Words>;
    // A single pixel is odd and has no pair before it: it is left as it is. Meant: a rule for it
    // would write where nothing was written.
    static constexpr Conversion from422 = planar422<channels, Words>;
    // Pairs of the tail have biases of their own, but the odd pixel has not.
    static constexpr PackedPairs fromPacked422{
        .rows = {.site = {2, 1},
                 .from = packed422,
                 .to = wordPairs,
                 .block = fromPackedPairs<channels, Words, WordRule, truncatedWord>,
                 .tail = exactPackedPairs<exactPacked>,
                 .blockColumns = wholeBlocks<8>,
                 .oddPixel = {borrowChroma<Packed::lumaFirst>, exactPackedPairs<exactA<0>>}},
        .alone = {.site = {2, 1},
                  .from = packed422,
                  .to = rgb24Pair,
                  .block = alone,
                  .oddPixel = {borrowChroma<Packed::lumaFirst>, alone, alone}}};
    static constexpr RowPairs from420 = planar420OfOneRule<channels, Words, WordRule, truncatedWord>;

    static constexpr RowPairs fromYuv420 = [] {
        RowPairs p = planar420(channels, fromPlanarPairs<channels, 2, Words, AnalogRule, analogWord>, exactAnalogPairs<2>,
                               exactAnalogPairs<1>);
        p.ofPairs = yuvColumns;
        p.converted = {2, 2};
        return p;
    }();
};

template <class F>
constexpr Quads bgrFrom411 = [] {
    Quads q{};
    q.site = {4, 1};
    q.from = planes411;
    q.to = wordQuads;
    q.block = kernel<DecodeQuads<WordRule, ToWords<F>>>(constantsOf<WordRule, roundedWord, ChannelOrder::bgr>);
    q.minimum = {4, 1};
    q.oddSize = OddSize::warned;
    q.checks = planesFirst;
    q.restOfRow = {.site = {1, 1},
                   .from = planes444,
                   .to = wordPixels,
                   .block = fromPlanes<ChannelOrder::bgr, ToReadyWords, ExactWords, wordsOf<F, exactA<32768>>>};
    return q;
}();

constexpr ChannelOrder rgb = ChannelOrder::rgb, bgr = ChannelOrder::bgr;

}  // namespace

namespace rows {

constexpr Conversion zeliYCbCrToBGR444_8u16u_C3R = To<bgr, Format444>::fromInterleaved;
constexpr Conversion zeliYCbCrToRGB444_8u16u_C3R = To<rgb, Format444>::fromInterleaved;
constexpr Conversion zeliYCbCrToBGR555_8u16u_C3R = To<bgr, Format555>::fromInterleaved;
constexpr Conversion zeliYCbCrToRGB555_8u16u_C3R = To<rgb, Format555>::fromInterleaved;
constexpr Conversion zeliYCbCrToBGR565_8u16u_C3R = To<bgr, Format565>::fromInterleaved;
constexpr Conversion zeliYCbCrToRGB565_8u16u_C3R = To<rgb, Format565>::fromInterleaved;

constexpr Conversion zeliYCbCrToBGR444_8u16u_P3C3R = To<bgr, Format444>::from444;
constexpr Conversion zeliYCbCrToRGB444_8u16u_P3C3R = To<rgb, Format444>::from444;
constexpr Conversion zeliYCbCrToBGR555_8u16u_P3C3R = To<bgr, Format555>::from444;
constexpr Conversion zeliYCbCrToRGB555_8u16u_P3C3R = To<rgb, Format555>::from444;
constexpr Conversion zeliYCbCrToBGR565_8u16u_P3C3R = To<bgr, Format565>::from444;
constexpr Conversion zeliYCbCrToRGB565_8u16u_P3C3R = To<rgb, Format565>::from444;

constexpr PackedPairs zeliYCbCr422ToBGR444_8u16u_C2C3R = To<bgr, Format444>::fromPacked422;
constexpr PackedPairs zeliYCbCr422ToRGB444_8u16u_C2C3R = To<rgb, Format444>::fromPacked422;
constexpr PackedPairs zeliYCbCr422ToBGR555_8u16u_C2C3R = To<bgr, Format555>::fromPacked422;
constexpr PackedPairs zeliYCbCr422ToRGB555_8u16u_C2C3R = To<rgb, Format555>::fromPacked422;
constexpr PackedPairs zeliYCbCr422ToBGR565_8u16u_C2C3R = To<bgr, Format565>::fromPacked422;
constexpr PackedPairs zeliYCbCr422ToRGB565_8u16u_C2C3R = To<rgb, Format565>::fromPacked422;

constexpr Conversion zeliYCbCr422ToBGR444_8u16u_P3C3R = To<bgr, Format444>::from422;
constexpr Conversion zeliYCbCr422ToRGB444_8u16u_P3C3R = To<rgb, Format444>::from422;
constexpr Conversion zeliYCbCr422ToBGR555_8u16u_P3C3R = To<bgr, Format555>::from422;
constexpr Conversion zeliYCbCr422ToRGB555_8u16u_P3C3R = To<rgb, Format555>::from422;
constexpr Conversion zeliYCbCr422ToBGR565_8u16u_P3C3R = To<bgr, Format565>::from422;
constexpr Conversion zeliYCbCr422ToRGB565_8u16u_P3C3R = To<rgb, Format565>::from422;

constexpr RowPairs zeliYCbCr420ToBGR444_8u16u_P3C3R = To<bgr, Format444>::from420;
constexpr RowPairs zeliYCbCr420ToRGB444_8u16u_P3C3R = To<rgb, Format444>::from420;
constexpr RowPairs zeliYCbCr420ToBGR555_8u16u_P3C3R = To<bgr, Format555>::from420;
constexpr RowPairs zeliYCbCr420ToRGB555_8u16u_P3C3R = To<rgb, Format555>::from420;
constexpr RowPairs zeliYCbCr420ToBGR565_8u16u_P3C3R = To<bgr, Format565>::from420;
constexpr RowPairs zeliYCbCr420ToRGB565_8u16u_P3C3R = To<rgb, Format565>::from420;

constexpr RowPairs zeliYUV420ToBGR444_8u16u_P3C3R = To<bgr, Format444>::fromYuv420;
constexpr RowPairs zeliYUV420ToRGB444_8u16u_P3C3R = To<rgb, Format444>::fromYuv420;
constexpr RowPairs zeliYUV420ToBGR555_8u16u_P3C3R = To<bgr, Format555>::fromYuv420;
constexpr RowPairs zeliYUV420ToRGB555_8u16u_P3C3R = To<rgb, Format555>::fromYuv420;
constexpr RowPairs zeliYUV420ToBGR565_8u16u_P3C3R = To<bgr, Format565>::fromYuv420;
constexpr RowPairs zeliYUV420ToRGB565_8u16u_P3C3R = To<rgb, Format565>::fromYuv420;

constexpr Quads zeliYCbCr411ToBGR555_8u16u_P3C3R = bgrFrom411<Format555>;
constexpr Quads zeliYCbCr411ToBGR565_8u16u_P3C3R = bgrFrom411<Format565>;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_decode16 ~, 1
#define ZEL_GROUP decode16
#include "frame/table.h"
