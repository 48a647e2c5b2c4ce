// Colour twist: an affine matrix of the caller over the three channels of a pixel, in single precision, at five depths and seven
// layouts.
//
//     out[r] = t[r][0] x0 + t[r][1] x1 + t[r][2] x2 + t[r][3]
//
// The order in which a sum is made up is part of its result: floats round at every step.
#include <type_traits>

#include "frame/parameters.h"
#include "simd/samples.h"
#include "simd/vector.h"
#include "zelcc/intensity.h"

namespace zel::ZEL_LEVEL {
namespace {

template <int rows>
struct Matrix {
    float t[rows][4];

    // No sum over samples of 16 bits is beyond a dword, so that saturation bounds it.
    bool isModest() const {
        bool modest = true;
        for (const auto& row : t)
            modest &=
                (__builtin_fabsf(row[0]) + __builtin_fabsf(row[1]) + __builtin_fabsf(row[2])) * 65536 + __builtin_fabsf(row[3]) <
                0x1p30f;
        return modest;
    }
};

struct Extras {
    const void* matrix;

    bool hasNullPointer() const { return !matrix; }
};

template <int rows>
Matrix<rows> matrix(const Extras& extras) {
    Matrix<rows> m;
    __builtin_memcpy(m.t, extras.matrix, sizeof m.t);
    return m;
}

template <int rows>
using MatrixConversion = Parametric<Matrix<rows>, Extras>;

// Signed bytes add the offset last, all others first, and then the last two products before the sum with the first.
template <class Depth>
class Twist {
  public:
    ZEL_INLINE explicit Twist(const Matrix<3>& m) {
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 4; ++c) t_[r][c] = splatFloat(m.t[r][c]);
    }

    ZEL_INLINE Floats operator()(int r, Floats x0, Floats x1, Floats x2) const {
        const Floats(&t)[4] = t_[r];
        if constexpr (std::is_same_v<Depth, Depth8s>) return ((t[0] * x0 + t[1] * x1) + t[2] * x2) + t[3];
        return (t[3] + t[0] * x0) + (t[2] * x2 + t[1] * x1);
    }

  private:
    Floats t_[3][4];
};

template <class Depth>
ZEL_INLINE void floatsOf(const Channels<typename Depth::Vector>& pixels, Floats (&x)[3][Depth::parts]) {
    unrolled<Depth::parts>([&](auto part) ZEL_INLINE_LAMBDA {
        x[0][part] = Depth::template toFloats<part>(pixels.a);
        x[1][part] = Depth::template toFloats<part>(pixels.b);
        x[2][part] = Depth::template toFloats<part>(pixels.c);
    });
}

template <class Depth>
struct FromPlanesOf {
    static constexpr int streams = 3, bytes = sizeof(typename Depth::Element);
    using V = typename Depth::Vector;
    ZEL_INLINE static void load(const Row& row, size_t block, Floats (&x)[3][Depth::parts]) {
        const auto plane = [&](int i) { return (V)loadBytes(row.in[i] + block * vectorBytes); };
        floatsOf<Depth>({plane(0), plane(1), plane(2)}, x);
    }
    ZEL_INLINE static void store(const Row& row, size_t block, Channels<V> x) {
        const auto put = [&](int i, V v) { storeVector(row.out[i] + block * vectorBytes, v); };
        put(0, x.a);
        put(1, x.b);
        put(2, x.c);
    }
};

template <class Depth>
struct Packed3Of {
    static constexpr int streams = 1, bytes = 3 * sizeof(typename Depth::Element);
    using V = typename Depth::Vector;
    ZEL_INLINE static void load(const Row& row, size_t block, Floats (&x)[3][Depth::parts]) {
        const uint8_t* const p = row.in[0] + block * 3 * vectorBytes;
        if constexpr (sizeof(typename Depth::Element) == 1)
            samples::loadBytesAsFloats<Depth>(p, x);
        else
            floatsOf<Depth>(InterleavedThree<Depth>::load(p), x);
    }
    ZEL_INLINE static void store(const Row& row, size_t block, Channels<V> x) {
        InterleavedThree<Depth>::store(row.out[0] + block * 3 * vectorBytes, x);
    }
};

template <class Depth, class Layout>
class TwistChannels {
  public:
    using Constants = Matrix<3>;
    static constexpr int sites = vectorBytes / sizeof(typename Depth::Element);
    static constexpr bool keepsUp = sizeof(typename Depth::Element) == 4;

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        const Twist<Depth> twist(k);
        if (!std::is_same_v<Depth, Depth32f> && k.isModest())
            for (size_t i = 0; i < count; ++i) convertBlock<Reach::dword>(twist, row, i);
        else
            for (size_t i = 0; i < count; ++i) convertBlock<Reach::any>(twist, row, i);
    }

  private:
    template <Reach reach>
    ZEL_INLINE static void convertBlock(const Twist<Depth>& twist, const Row& row, size_t block) {
        Floats x[3][Depth::parts];
        Layout::load(row, block, x);
        const auto channel = [&](int r) ZEL_INLINE_LAMBDA {
            Floats sums[Depth::parts];
            unrolled<Depth::parts>([&](auto part)
                                       ZEL_INLINE_LAMBDA { sums[part] = twist(r, x[0][part], x[1][part], x[2][part]); });
            return Depth::template limited<reach>(sums);
        };
        Layout::store(row, block, {channel(0), channel(1), channel(2)});
    }
};

// Four samples a pixel: a dword of bytes, or the two dwords that a pixel's words are.
template <class Depth>
struct PixelsOfFour;

template <class Depth>
struct PixelsOfFourBytes {
    static constexpr int vectors = 1;
    ZEL_INLINE static Channels<Floats> load(const uint8_t* p) {
        const Dwords v = (Dwords)loadBytes(p);
        constexpr bool isSigned = Depth::lowest < 0;
        const auto sample = [&](auto c) ZEL_INLINE_LAMBDA {
            return toFloats(isSigned ? v << (24 - 8 * c) >> 24 : (Dwords)((UDwords)v >> 8 * c) & splatDword(0xff));
        };
        return {sample(Constant<0>{}), sample(Constant<1>{}), sample(Constant<2>{})};
    }
    ZEL_INLINE static void store(uint8_t* p, Channels<Dwords> x) {
        const Dwords low = splatDword(0xff);
        storeThreeOfFour<1>(p, (Bytes)((x.a & low) | (x.b & low) << 8 | x.c << 16));
    }
};
template <>
struct PixelsOfFour<Depth8u> : PixelsOfFourBytes<Depth8u> {};
template <>
struct PixelsOfFour<Depth8s> : PixelsOfFourBytes<Depth8s> {};

template <class Sample>
struct PixelsOfFour<Depth16<Sample>> {
    using Depth = Depth16<Sample>;
    static constexpr int vectors = 2;
    ZEL_INLINE static Channels<Floats> load(const uint8_t* p) {
        const Bytes v0 = loadBytes(p), v1 = loadBytes(p + vectorBytes);
        const Words ab = (Words)evenDwords((Dwords)v0, (Dwords)v1), cd = (Words)oddDwords((Dwords)v0, (Dwords)v1);
        return {Depth::evens(ab), Depth::odds(ab), Depth::evens(cd)};
    }
    ZEL_INLINE static void store(uint8_t* p, Channels<Dwords> x) {
        const Dwords ab = (Dwords)Depth::joined(x.a, x.b);
        storeThreeOfFour<2>(p, (Bytes)interleaveLow(ab, x.c));
        storeThreeOfFour<2>(p + vectorBytes, (Bytes)interleaveHigh(ab, x.c));
    }
};

template <class Depth>
class TwistFour {
  public:
    using Constants = Matrix<3>;
    using Pixels = PixelsOfFour<Depth>;
    static constexpr int sites = vectorBytes / 4;

    ZEL_INLINE explicit TwistFour(const Constants& k) : twist_(k) {}

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        constexpr int bytes = Pixels::vectors * vectorBytes;
        const auto x = Pixels::load(row.in[0] + block * bytes);
        const auto channel = [&](int r) ZEL_INLINE_LAMBDA {
            const Floats sum = atMost(twist_(r, x.a, x.b, x.c), splatFloat(Depth::highest));
            return rounded(atLeast(sum, splatFloat(Depth::lowest)));
        };
        Pixels::store(row.out[0] + block * bytes, {channel(0), channel(1), channel(2)});
    }

  private:
    Twist<Depth> twist_;
};

// Four floats a pixel are a lane, and a column of the matrix is one too.
struct Columns {
    Floats c[4];

    template <int rows>
    ZEL_INLINE explicit Columns(const Matrix<rows>& m) {
        for (int i = 0; i < 4; ++i) {
            const float column[4] = {m.t[0][i], m.t[1][i], m.t[2][i], rows == 4 ? m.t[rows - 1][i] : 0};
            c[i] = (Floats)everyLane(column);
        }
    }
};

class TwistLanes {
  public:
    using Constants = Matrix<3>;
    static constexpr int sites = lanes;

    ZEL_INLINE explicit TwistLanes(const Constants& k) : t_(k) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Floats v = (Floats)loadBytes(row.in[0] + block * vectorBytes);
        const Floats first = t_.c[3] + t_.c[0] * everyOf<0>(v);
        const Floats sum = first + (t_.c[2] * everyOf<2>(v) + t_.c[1] * everyOf<1>(v));
        storeThreeOfFour<4>(row.out[0] + block * vectorBytes, (Bytes)sum);
    }

  private:
    Columns t_;
};

// Alpha is a colour like the others.
class TransformLanes : public FewOperations {
  public:
    using Constants = Matrix<4>;
    static constexpr int sites = lanes;

    ZEL_INLINE explicit TransformLanes(const Constants& k) : m_(k) {}
    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        const Floats v = (Floats)loadBytes(row.in[0] + block * vectorBytes);
        const Floats two = everyOf<0>(v) * m_.c[0] + everyOf<1>(v) * m_.c[1];
        storeVector(row.out[0] + block * vectorBytes, (two + everyOf<2>(v) * m_.c[2]) + everyOf<3>(v) * m_.c[3]);
    }

  private:
    Columns m_;
};

constexpr Layout layout(int streams, int bytes) {
    Layout l{.count = streams, .streams = {}};
    for (int i = 0; i < streams; ++i) l.streams[i] = {.plane = uint8_t(i), .bytes = uint8_t(bytes)};
    return l;
}

constexpr Conversion conversion(int streams, int bytes, Kernel block, bool keepsAlpha = false) {
    return {.site = {1, 1},
            .from = layout(streams, bytes),
            .to = layout(streams, bytes),
            .block = block,
            .checks = {Check::pointers, Check::planes, Check::size, Check::steps},
            .keepsAlpha = keepsAlpha};
}

template <class Layout>
constexpr Conversion channels(Kernel block) {
    return conversion(Layout::streams, Layout::bytes, block);
}

struct IntegerTwist : MatrixConversion<3> {};

// Sums are rounded to the nearest, ties to even, whatever mode the caller's thread is in.
[[maybe_unused]] void convert(const IntegerTwist& twist, const Images& images, Extras extras) {
    const uint32_t old = setRoundNearestState();
    convert(static_cast<const MatrixConversion<3>&>(twist), images, extras);
    restoreRoundState(old);
}

template <class Depth, template <class> class Layout>
constexpr IntegerTwist integerTwist{{channels<Layout<Depth>>(parametric<TwistChannels<Depth, Layout<Depth>>>), matrix<3>}};

template <class Depth>
constexpr IntegerTwist integerTwistFour{
    {conversion(1, 4 * sizeof(typename Depth::Element), parametric<TwistFour<Depth>>, true), matrix<3>}};

template <template <class> class Layout>
constexpr MatrixConversion<3> floatTwist{channels<Layout<Depth32f>>(parametric<TwistChannels<Depth32f, Layout<Depth32f>>>),
                                         matrix<3>};

struct Transform : MatrixConversion<4> {
    static constexpr bool takesStepsAsGiven = true;
};

// Rows that are 4 bytes a pixel apart are taken as an image without gaps, although a pixel has 16. Meant: images with
// such a step on both sides are read and written beyond what their steps say, and by them would come out different.
[[maybe_unused]] void convert(const Transform& transform, Images& images, Extras extras) {
    const ptrdiff_t apart = ptrdiff_t{4} * images.size.width;
    if (images.sourceStep[0] == apart && images.destinationStep[0] == apart)
        images.sourceStep[0] = images.destinationStep[0] = 4 * apart;
    images.sourceStep[0] &= -4;
    images.destinationStep[0] &= -4;
    convert(static_cast<const MatrixConversion<4>&>(transform), images, extras);
}

}  // namespace

namespace rows {

constexpr auto zeliColorTwist32f_8u_C3R = integerTwist<Depth8u, Packed3Of>;
constexpr auto zeliColorTwist32f_8u_P3R = integerTwist<Depth8u, FromPlanesOf>;
constexpr auto zeliColorTwist32f_8u_AC4R = integerTwistFour<Depth8u>;
constexpr auto zeliColorTwist32f_8s_C3R = integerTwist<Depth8s, Packed3Of>;
constexpr auto zeliColorTwist32f_8s_P3R = integerTwist<Depth8s, FromPlanesOf>;
constexpr auto zeliColorTwist32f_8s_AC4R = integerTwistFour<Depth8s>;
constexpr auto zeliColorTwist32f_16u_C3R = integerTwist<Depth16u, Packed3Of>;
constexpr auto zeliColorTwist32f_16u_P3R = integerTwist<Depth16u, FromPlanesOf>;
constexpr auto zeliColorTwist32f_16u_AC4R = integerTwistFour<Depth16u>;
constexpr auto zeliColorTwist32f_16s_C3R = integerTwist<Depth16s, Packed3Of>;
constexpr auto zeliColorTwist32f_16s_P3R = integerTwist<Depth16s, FromPlanesOf>;
constexpr auto zeliColorTwist32f_16s_AC4R = integerTwistFour<Depth16s>;

constexpr auto zeliColorTwist_32f_C3R = floatTwist<Packed3Of>;
constexpr auto zeliColorTwist_32f_P3R = floatTwist<FromPlanesOf>;
constexpr MatrixConversion<3> zeliColorTwist_32f_AC4R{conversion(1, 16, parametric<TwistLanes>, true), matrix<3>};
constexpr Transform zeliColorTwist_32f_C4R{{conversion(1, 16, parametric<TransformLanes>), matrix<4>}};

// In place: the same rules, since a block is read before it is written.
constexpr auto zeliColorTwist32f_8u_C3IR = zeliColorTwist32f_8u_C3R;
constexpr auto zeliColorTwist32f_8u_IP3R = zeliColorTwist32f_8u_P3R;
constexpr auto zeliColorTwist32f_8u_AC4IR = zeliColorTwist32f_8u_AC4R;
constexpr auto zeliColorTwist32f_8s_C3IR = zeliColorTwist32f_8s_C3R;
constexpr auto zeliColorTwist32f_8s_IP3R = zeliColorTwist32f_8s_P3R;
constexpr auto zeliColorTwist32f_8s_AC4IR = zeliColorTwist32f_8s_AC4R;
constexpr auto zeliColorTwist32f_16u_C3IR = zeliColorTwist32f_16u_C3R;
constexpr auto zeliColorTwist32f_16u_IP3R = zeliColorTwist32f_16u_P3R;
constexpr auto zeliColorTwist32f_16u_AC4IR = zeliColorTwist32f_16u_AC4R;
constexpr auto zeliColorTwist32f_16s_C3IR = zeliColorTwist32f_16s_C3R;
constexpr auto zeliColorTwist32f_16s_IP3R = zeliColorTwist32f_16s_P3R;
constexpr auto zeliColorTwist32f_16s_AC4IR = zeliColorTwist32f_16s_AC4R;
constexpr auto zeliColorTwist_32f_C3IR = zeliColorTwist_32f_C3R;
constexpr auto zeliColorTwist_32f_IP3R = zeliColorTwist_32f_P3R;
constexpr auto zeliColorTwist_32f_AC4IR = zeliColorTwist_32f_AC4R;

}  // namespace rows
}  // namespace zel::ZEL_LEVEL

#define ZEL_CURRENT_color_twist ~, 1
#define ZEL_GROUP color_twist
#include "frame/table.h"
