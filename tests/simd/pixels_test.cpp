// Pixel layouts: which byte of memory becomes which byte of a channel, and back.
#include <algorithm>
#include <cmath>

#include "simd/check.h"
#include "simd/lifted_pixels.h"
#include "simd/pixel_dwords.h"
#include "simd/samples.h"
#include "simd/sites.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr int block = blockPixels;

// Where a channel has a pixel, whose lanes are natural or split into even and odd pixels.
int placeOf(Order order, int pixel) {
    const int ofLane = pixel % laneBytes;
    return pixel - ofLane + (order == Order::natural ? ofLane : ofLane / 2 + ofLane % 2 * (laneBytes / 2));
}

// Channels in natural order, one vector of `n` samples after the other, from so many interleaved samples a pixel.
template <int ofPixel>
auto channels(int n) {
    return [=](int i) { return i % n * ofPixel + i / n; };
}

// Interleaved pixels from channels of n samples, of which the last may not be written.
template <int ofPixel, int written = ofPixel>
auto interleaved(int n) {
    return [=](int i) { return i % ofPixel < written ? i % ofPixel * n + i / ofPixel : kept; };
}

template <Order order>
void storesBytes() {
    stores<1, Triple>(WORD(Interleaved3::store<order>), 3 * block, [](int i) { return i % 3 * block + placeOf(order, i / 3); });
    const auto places = [](int i) { return i % 4 == 3 ? 3 * block : i % 4 * block + placeOf(order, i / 4); };
    const auto withAlpha = [](auto p, Triple t, uint8_t alpha) { Interleaved4::store<order>(p, t, splatByte(alpha)); };
    stores<1, Triple, uint8_t>(Word{"Interleaved4::store", withAlpha}, 4 * block, places);
    stores<1, Triple>(WORD(Interleaved4::storeColours<order>), 4 * block, [=](int i) { return i % 4 == 3 ? kept : places(i); });
    const auto words = [](auto p, Bytes low, Bytes high) { storePixelWords<order>(p, joinBytes<order>(low, high)); };
    stores<1, Bytes, Bytes>(Word{"storePixelWords of joinBytes", words}, 2 * block,
                            [](int i) { return i % 2 * block + placeOf(order, i / 2); });
    if constexpr (Interleaved4::wantsDealt) {
        // Pixels 4i to 4i + 3 of lane l are of the fours that come i-th to it.
        const auto dealt = [](auto p, Triple t, uint8_t alpha) { Interleaved4::storeDealt<order>(p, t, splatByte(alpha)); };
        stores<1, Triple, uint8_t>(Word{"Interleaved4::storeDealt", dealt}, 4 * block, [=](int i) {
            const int four = i / 16, pixel = four % lanes * laneBytes + four / lanes * 4 + i / 4 % 4;
            return places(4 * pixel + i % 4);
        });
    }
}

TEST(SimdPixels, OfBytes) {
    loads<1>(WORD(Interleaved3::load), 3 * block, channels<3>(block));
    loads<1>(WORD(Interleaved4::load), 4 * block, channels<4>(block));
    loads<1>(WORD(Interleaved4::loadFour), 4 * block, channels<4>(block));
    storesBytes<Order::natural>();
    storesBytes<Order::split>();
}

template <class Depth>
void movesThree() {
    using Interleaved = InterleavedThree<Depth>;
    constexpr int size = Interleaved::size, n = vectorBytes / size;
    static_assert(Interleaved::bytes == 3 * size);
    loads<size>(WORD(Interleaved::load), 3 * vectorBytes, channels<3>(n));
    stores<size, Channels<typename Depth::Vector>>(WORD(Interleaved::store), 3 * vectorBytes, interleaved<3>(n));
}

template <class Depth>
void movesFour() {
    using V = typename Depth::Vector;
    constexpr int size = sizeof(typename Depth::Element), n = vectorBytes / size;
    if constexpr (size > 1) loads<size>(WORD(InterleavedFour<Depth>::load), 4 * vectorBytes, channels<4>(n));
    if constexpr (size < 8) {
        stores<size, Channels<V>, V>(WORD(storeFour<size>), 4 * vectorBytes, interleaved<4>(n));
        stores<size, Channels<V>>(WORD(storeThree<size>), 4 * vectorBytes, interleaved<4, 3>(n));
        stores<size, V>(Word{"storeThreeOfFour", [](uint8_t* p, V v) { storeThreeOfFour<size>(p, (Bytes)v); }}, vectorBytes,
                        [](int i) { return i % 4 < 3 ? i : kept; });
    }
}

TEST(SimdPixels, OfSamples) {
    movesThree<Depth8u>();
    movesThree<Depth8s>();
    movesThree<Depth16u>();
    movesThree<Depth32f>();
    movesThree<Depth64f>();
    movesFour<Depth8u>();
    movesFour<Depth16s>();
    movesFour<Depth32f>();
    movesFour<Depth64f>();
}

// The alpha of this test is the first sample.
template <int size, int channels>
void repeats() {
    const auto all = [](const uint8_t* p) {
        uint32_t alpha = 0;
        std::memcpy(&alpha, p, size);
        const Repeated<size, channels> samples(p, alpha);
        std::array<Bytes, channels> vectors;
        unrolled<channels>([&](auto v) { vectors[v] = samples.template vector<v>(); });
        return vectors;
    };
    loads<size>(Word{"Repeated", all}, vectorBytes, [](int i) { return channels == 4 && i % 4 == 3 ? 0 : i / channels; });
}

TEST(SimdPixels, RepeatedSamples) {
    repeats<1, 3>();
    repeats<1, 4>();
    repeats<2, 3>();
    repeats<2, 4>();
    repeats<4, 3>();
    repeats<4, 4>();
}

// Bytes become floats of the same value, part p those of the pixels 4p to 4p + 3 of every lane.
template <class Depth>
void loadsFloats() {
    const auto asBytes = [](const uint8_t* p) {
        Floats x[3][4];
        samples::loadBytesAsFloats<Depth>(p, x);
        std::array<uint8_t, 3 * block> bytes;
        for (int i = 0; i < 3 * block; ++i) {
            const int pixel = i / 3, ofLane = pixel % laneBytes;
            const float value = x[i % 3][ofLane / 4][pixel / laneBytes * 4 + ofLane % 4];
            if (value != std::floor(value) || value < Depth::lowest || value > Depth::highest) ADD_FAILURE() << value;
            bytes[i] = uint8_t(int(value));
        }
        return bytes;
    };
    loads<1>(Word{"loadBytesAsFloats", asBytes}, 3 * block, [](int i) { return i; });
}

TEST(SimdPixels, BytesAsFloats) {
    loadsFloats<Depth8u>();
    loadsFloats<Depth8s>();
}

template <class Depth, class V>
void choosesSites() {
    constexpr int size = sizeof(typename Depth::Element), n = vectorBytes / size;
    for (const bool first : {true, false}) {
        const Sites<Depth, V> sites(first);
        const auto store = [&](auto p, Channels<V> here, Channels<V> between) { sites.store(p, here, between); };
        stores<size, Channels<V>, Channels<V>>(Word{"Sites::store", store}, 3 * vectorBytes, [=](int i) {
            const bool isSite = (i / 3 % 2 == 0) == first;
            return (isSite ? 0 : 3 * n) + i % 3 * n + i / 3;
        });
    }
}

TEST(SimdPixels, EveryOtherOne) {
    choosesSites<Depth8u, Bytes>();
    choosesSites<Depth16u, UWords>();
}

// What lifted words hold but for the samples.
UWords besidesSamples(const Lifted& x) {
    return (x.first.a | x.first.b | x.first.c | x.second.a | x.second.b | x.second.c) & 0xff;
}

// A product by 256 is the sample, and comes back in order.
template <class Layout, class InOrder>
std::array<Bytes, 3> lifted(const Lifted& x, InOrder inOrder) {
    const auto channel = [&](UWords first, UWords second) {
        const auto sample = [](UWords v) { return (Words)Floors<15>::product(v, (UWords)splatWord(256)); };
        return inOrder(sample(first), sample(second));
    };
    return {channel(x.first.a, x.second.a), channel(x.first.b, x.second.b), channel(x.first.c, x.second.c)};
}

template <class Layout>
void lifts() {
    const auto holds = [](const char* word, auto inOrder) {
        loads<1>(Word{word, [=](const uint8_t* p) { return lifted<Layout>(Layout::load(p), inOrder); }}, Layout::bytes * block,
                 channels<Layout::bytes>(block));
    };
    holds("load and inOrder of lifted pixels", Layout::inOrder);
    // Both ends of what is nearest to a number.
    holds("roundedInOrder", [](Words a, Words b) { return roundedInOrder<7, Layout>(a * 128 - 64, b * 128 - 64); });
    holds("roundedInOrder", [](Words a, Words b) { return roundedInOrder<7, Layout>(a * 128 + 63, b * 128 + 63); });
    holds("joinedInOrder",
          [](Words a, Words b) { return joinedInOrder<8, Layout>((UWords)a << 8 | 0xff, (UWords)b << 8 | 0xff); });
    holds("joinedInOrder", [](Words a, Words b) { return joinedInOrder<7, Layout>((UWords)a << 7, (UWords)b << 7); });
}

// Words of the halves of lifted bytes, in order.
std::array<uint16_t, vectorBytes> inOrder(LiftedBytes x) {
    const auto low = [](UWords v) { return (v & 0xff) << 1; };
    const auto lows = joined<1>(low(x.first), low(x.second)), highs = joined<8>(x.first, x.second);
    std::array<uint16_t, vectorBytes> words;
    for (int i = 0; i < vectorBytes; ++i) words[i] = uint16_t(lows[i] | highs[i] << 8);
    return words;
}

template <class Products, class Weight, class Expected>
void multiplies(const char* word, Weight weight, Expected expected) {
    for (int from = 0; from < 256; from += vectorBytes) {
        Bytes x;
        for (int i = 0; i < vectorBytes; ++i) x[i] = uint8_t(from + i);
        const LiftedBytes lifted = Products::lift(x);
        const auto product = [&](UWords v) { return (UWords)Products::product((decltype(weight))v, weight); };
        const auto words = inOrder({product(lifted.first), product(lifted.second)});
        for (int i = 0; i < vectorBytes; ++i) ASSERT_EQ(words[i], uint16_t(expected(from + i))) << word << " of " << from + i;
    }
}

TEST(SimdPixels, Products) {
    for (int k : edges<uint16_t>()) {
        const auto floored = [=](int x) { return x * k >> 8; };
        multiplies<Floors<16>>("Floors<16>", (UWords)splatWord(k), floored);
        if (k < 32768) multiplies<Floors<15>>("Floors<15>", (UWords)splatWord(k), floored);
        const int half = k / 4 - 8192;  // a weight that doubled is a word
        multiplies<Rounds>("Rounds", Rounds::weight(half), [=](int x) { return (x * half + 128) >> 8; });
    }
}

TEST(SimdPixels, LiftedBytes) {
    compare<Bytes, 1>(Word{"sumsOfPairs",
                           [](Bytes a) {
                               const LiftedBytes x = Floors<15>::lift(a);
                               return sumsOfPairs(x.first >> 2, x.second >> 2);
                           }},
                      [](int i, const auto& x) { return (x[2 * i] + x[2 * i + 1]) << (liftOf(8) - 2); });
    // A pack leaves the bytes of a lane in liftedOrder.
    moves<1, Bytes>(Word{"liftedOrder",
                         [](Bytes a) {
                             const LiftedBytes x = Floors<15>::lift(a);
                             return packBytes((Words)(x.first >> liftOf(8)), (Words)(x.second >> liftOf(8)));
                         }},
                    [](int i) {
                        const int lane = i / laneBytes * laneBytes;
                        int pixel = 0;
                        while (placeInLane(liftedOrder, pixel) != i % laneBytes) ++pixel;
                        return lane + pixel;
                    });
}

// Lifted pixels have an order of their own, which stores know; results saturate.
template <int channels>
void liftsAndStores() {
    using Layout = LiftedPixels<channels>;
    using Pixels = std::array<uint8_t, Layout::bytes * block>;
    const auto move = [](auto p, const Pixels& from, auto result) {
        const Lifted x = Layout::load(from.data());
        const auto pixel = [&](const LiftedHalf& h) { return WordPixel{result(h.a), result(h.b), result(h.c)}; };
        Layout::store(p, pixel(x.first), pixel(x.second));
    };
    const auto sample = [](UWords v) { return Words(v >> 8); };
    stores<1, Pixels>(Word{"LiftedPixels, load and store", [&](auto p, const Pixels& from) { move(p, from, sample); }},
                      Layout::bytes * block, [](int i) { return i % channels == 3 ? kept : i; });
    loads<1>(Word{"LiftedPixels, load", [](const uint8_t* p) { return besidesSamples(Layout::load(p)); }}, Layout::bytes * block,
             [](int) { return none; });

    Pixels from, to{};
    fill(from, 1);
    move(to.data(), from, [&](UWords v) { return Words(sample(v) * 4 - 300); });
    for (int i = 0; i < int(from.size()); ++i)
        ASSERT_EQ(to[i], i % channels == 3 ? 0 : std::clamp(from[i] * 4 - 300, 0, 255)) << "LiftedPixels, store, byte " << i;
}

TEST(SimdPixels, Lifted) {
    lifts<LiftedThree>();
    lifts<LiftedFour>();
    liftsAndStores<3>();
    liftsAndStores<4>();
}

// Means of neighbours, as the bytes of two planes, by themselves and in turn.
template <class Layout>
void meansOfPairs() {
    if constexpr (requires(UWords v) { Layout::pairMeans(v, v); }) {
        std::array<uint8_t, Layout::bytes * block> pixels;
        for (int trial = 0; trial < trials; ++trial) {
            fill(pixels, trial);
            const LiftedHalf first = Layout::template half<Half::first>(pixels.data()),
                             second = Layout::template half<Half::second>(pixels.data());
            const auto mean = [](UWords x, UWords y) { return Words(Layout::pairMeans(x, y) >> 8); };
            const auto wanted = [&](int site, int c) {
                const int at = 2 * site * Layout::bytes + c;
                return (pixels[at] + pixels[at + Layout::bytes]) / 2;
            };
            const auto inTurn = arrayOf<uint8_t>(Layout::sitesInOrder(mean(first.a, second.a) | mean(first.c, second.c) << 8));
            uint8_t planes[2][block / 2];
            Layout::storeSites(planes[0], planes[1], mean(first.a, second.a), mean(first.c, second.c));
            for (int site = 0; site < block / 2; ++site)
                for (int plane : {0, 1}) {
                    ASSERT_EQ(inTurn[2 * site + plane], wanted(site, 2 * plane)) << "sitesInOrder, site " << site;
                    ASSERT_EQ(planes[plane][site], wanted(site, 2 * plane)) << "storeSites, site " << site;
                }
            const LiftedHalf by64 = Layout::template half<Half::first, 6>(pixels.data());
            for (int i = 0; i < block / 2; ++i) ASSERT_EQ(by64.b[i] * 4, first.b[i]) << "half of 6 bits, word " << i;
        }
    }
}

TEST(SimdPixels, MeansOfPairs) { meansOfPairs<LiftedFour>(); }

// A block of pixels as dwords in four parts, and back by the high words of dwords.
template <class Layout>
void movesByDwords() {
    constexpr int bytes = Layout::bytes * block;
    const auto move = [](auto p, const uint8_t* from) {
        Bytes parts[4];
        unrolled<4>([&](auto part) {
            const ChannelPairs pixels = Layout::template load<part>(from);
            const auto high = [](UDwords v) { return Dwords(v << 16); };
            parts[part] = packHighWords(high((UDwords)pixels.ac), high((UDwords)pixels.b), high((UDwords)pixels.ac >> 16));
        });
        Layout::store(p, parts);
    };
    using Pixels = std::array<uint8_t, bytes>;
    stores<1, Pixels>(Word{"load and store of pixels as dwords", [&](auto p, const Pixels& from) { move(p, from.data()); }},
                      bytes, [](int i) { return i % Layout::bytes == 3 ? kept : i; });
    loads<1>(Word{"load of pixels as dwords",
                  [&](const uint8_t* p) {
                      Pixels to{};
                      move(to.data(), p);
                      return to;
                  }},
             bytes, [](int i) { return i % Layout::bytes == 3 ? none : i; });
}

TEST(SimdPixels, AsDwords) {
    movesByDwords<PixelDwords3>();
    movesByDwords<PixelDwords4>();
    // Of the numbers in the high halves of dwords, by saturation.
    const auto results = [](Dwords a) {
        const Bytes packed = packHighWords(a, a, a);
        std::array<uint8_t, block / 4 * 3> inOrder;
        for (int i = 0; i < int(inOrder.size()); ++i) inOrder[i] = packed[i / 12 * laneBytes + placeOfResult(i / 3 % 4, i % 3)];
        return inOrder;
    };
    compare<Dwords, 1>(Word{"packHighWords", results}, [](int i, const auto& x) { return std::clamp(x[i / 3] >> 16, 0, 255); });
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
