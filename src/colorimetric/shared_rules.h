// Kernels of rules that are long beside what loads and stores their pixels. A rule is a function of its own that goes from
// channels to channels, so its code is there once for all layouts; which rule, and which way the channels stand, is data.
#pragma once

#include <type_traits>

#include "colorimetric/float_pixels.h"
#include "frame/layouts.h"

namespace zel::ZEL_LEVEL {

// Vectors of a channel, one after the other.
using SourceChannels = const uint8_t* const[3];
using ResultChannels = uint8_t* const[3];
using SharedRule = void (*)(SourceChannels& from, ResultChannels& to, size_t vectors);

// Rule::of is a function of a pixel of bytes or floats.
template <class Rule, class Pixel>
ZEL_INLINE void apply(SourceChannels& from, ResultChannels& to, size_t vectors) {
    using V = decltype(Pixel::a);
    const uint8_t *const a = from[0], *const b = from[1], *const c = from[2];
    uint8_t *const toA = to[0], *const toB = to[1], *const toC = to[2];
    for (size_t at = 0; at != vectors * vectorBytes; at += vectorBytes) {
        const Pixel p = Rule::of({(V)loadBytes(a + at), (V)loadBytes(b + at), (V)loadBytes(c + at)});
        storeVector(toA + at, p.a);
        storeVector(toB + at, p.b);
        storeVector(toC + at, p.c);
    }
}
template <class Rule, class Pixel>
ZEL_NOINLINE void applyShared(SourceChannels& from, ResultChannels& to, size_t vectors) {
    apply<Rule, Pixel>(from, to, vectors);
}

// Where an image has the first and the last channel of a rule.
struct OuterChannels {
    int first = 0, last = 2;
};
constexpr OuterChannels inOrder{}, reversed{2, 0};

template <class Byte>
struct ChannelPointers {
    Byte* of[4];
};
using Sources = ChannelPointers<const uint8_t>;
using Results = ChannelPointers<uint8_t>;

// Some blocks at once, or a rule would set up its constants for each.
constexpr size_t blocksOfBatch = 512 / vectorBytes;
struct Batch {
    size_t block, count;
    alignas(vectorBytes) uint8_t channels[4][blocksOfBatch * 2 * vectorBytes];

    ZEL_INLINE uint8_t* vector(int channel, size_t i) { return channels[channel] + i * vectorBytes; }
    ZEL_INLINE Bytes load(int channel, size_t i) const { return loadBytes(channels[channel] + i * vectorBytes); }
    ZEL_INLINE Results results() { return {{channels[0], channels[1], channels[2], channels[3]}}; }
    ZEL_INLINE Sources sources() const { return {{channels[0], channels[1], channels[2], channels[3]}}; }
};

template <class From, class To, class Rule>
ZEL_INLINE void convertBatch(const Row& row, Batch& batch, OuterChannels in, OuterChannels out, const Rule& rule) {
    const Sources from = From::load(row, batch);
    const Results to = To::results(row, batch);
    rule({from.of[in.first], from.of[1], from.of[in.last]}, {to.of[out.first], to.of[1], to.of[out.last]},
         batch.count * From::vectors);
    To::store(row, batch, from.of[3]);
}

template <class Pixels>
constexpr size_t bytesOfBatch = blocksOfBatch* Pixels::sites* Pixels::bytes;

template <class From, class To>
struct SharedKernel {
    struct Constants {
        SharedRule rule;
        OuterChannels from, to;
    };
    static constexpr int sites = From::sites;
    static constexpr bool keepsUp = fewOperationsKeepUp;  // a batch is stored at once

    ZEL_INLINE static void blocks(const Constants& k, const Row& row, size_t count) {
        Batch batch;
        for (batch.block = 0; batch.block < count; batch.block += blocksOfBatch) {
            batch.count = count - batch.block < blocksOfBatch ? count - batch.block : blocksOfBatch;
            // The next ones are on their way while these are worked on.
            if (batch.block + batch.count < count) {
                const size_t next = (batch.block + batch.count) * sites;
                for (int i = 0; i < From::streams; ++i) prefetch<Use::read>(row.in[i] + next * From::bytes, bytesOfBatch<From>);
                if constexpr (To::keepsFourth) prefetch<Use::written>(row.out.places[0] + next * To::bytes, bytesOfBatch<To>);
            }
            convertBatch<From, To>(row, batch, k.from, k.to, k.rule);
        }
    }
};

template <class From, class To, class Rule, class Pixel, OuterChannels from, OuterChannels to>
struct InlineKernel {
    static constexpr int sites = From::sites;
    static constexpr bool keepsUp = fewOperationsKeepUp;

    ZEL_INLINE void operator()(const Row& row, size_t block) const {
        Batch batch;
        batch.block = block;
        batch.count = 1;
        convertBatch<From, To>(row, batch, from, to,
                               [](SourceChannels& in, ResultChannels& out, size_t vectors)
                                   ZEL_INLINE_LAMBDA { apply<Rule, Pixel>(in, out, vectors); });
    }
};

// Layouts of bytes: the streams, and a batch from and to them. The fourth channel is taken along where it is a sample like the
// others.
struct PackedPixels {
    static constexpr int sites = blockPixels, vectors = 1;

    ZEL_INLINE static Results results(const Row&, Batch& batch) { return batch.results(); }

  protected:
    ZEL_INLINE static void put(Batch& batch, size_t i, const Triple& t) {
        storeVector(batch.vector(0, i), t.a);
        storeVector(batch.vector(1, i), t.b);
        storeVector(batch.vector(2, i), t.c);
    }
    ZEL_INLINE static Triple get(const Batch& batch, size_t i) { return {batch.load(0, i), batch.load(1, i), batch.load(2, i)}; }
};

template <class From, class To>
struct PackedColours : PackedPixels {
    ZEL_INLINE static Sources load(const Row& row, Batch& batch) {
        for (size_t i = 0; i < batch.count; ++i) put(batch, i, From::load(row, batch.block + i));
        return batch.sources();
    }
    ZEL_INLINE static void store(const Row& row, const Batch& batch, const uint8_t*) {
        for (size_t i = 0; i < batch.count; ++i) To::template store<Order::natural>(row, 0, batch.block + i, get(batch, i));
    }
};
struct Packed3 : PackedColours<From3, ToPacked3> {
    static constexpr int streams = 1, bytes = 3;
    static constexpr bool keepsFourth = false;
    static constexpr Layout layout = layoutOf({{0, bytes}});
};
struct ColoursOf4 : PackedColours<From4, ToColoursOf4> {
    static constexpr int streams = 1, bytes = 4;
    static constexpr bool keepsFourth = true;
    static constexpr Layout layout = layoutOf({{0, bytes}});
};

struct Packed4 : PackedPixels {
    static constexpr int streams = 1, bytes = 4;
    static constexpr bool keepsFourth = false;
    static constexpr Layout layout = layoutOf({{0, bytes}});

    ZEL_INLINE static Sources load(const Row& row, Batch& batch) {
        for (size_t i = 0; i < batch.count; ++i) {
            const Quad q = Interleaved4::loadFour(row.in[0] + (batch.block + i) * blockPixels * 4);
            put(batch, i, {q.a, q.b, q.c});
            storeVector(batch.vector(3, i), q.d);
        }
        return batch.sources();
    }
    ZEL_INLINE static void store(const Row& row, const Batch& batch, const uint8_t* fourth) {
        for (size_t i = 0; i < batch.count; ++i) {
            const Triple t = get(batch, i);
            storeFour<1>(row.out[0] + (batch.block + i) * blockPixels * 4, Channels<Bytes>{t.a, t.b, t.c},
                         loadBytes(fourth + i * vectorBytes));
        }
    }
};

// Planes are channels already, where stores needn't bypass the caches. A block alone stays in registers.
template <int channels>
struct Planes {
    static constexpr int sites = blockPixels, vectors = 1, streams = channels, bytes = 1;
    static constexpr bool keepsFourth = false;

    ZEL_INLINE static Sources load(const Row& row, Batch& batch) {
        Sources from{};
        for (int c = 0; c < channels; ++c) from.of[c] = row.in[c] + batch.block * blockPixels;
        if (channels == 4 && batch.count == 1) {  // memory is asked for all four at once
            storeVector(batch.channels[3], loadBytes(from.of[3]));
            from.of[3] = batch.channels[3];
        }
        return from;
    }
    ZEL_INLINE static Results results(const Row& row, Batch& batch) {
        if (isCopied(row, batch)) return batch.results();
        Results to{};
        for (int c = 0; c < channels; ++c) to.of[c] = row.out.places[c] + batch.block * blockPixels;
        return to;
    }
    ZEL_INLINE static void store(const Row& row, const Batch& batch, const uint8_t* fourth) {
        const auto copy = [&](int c, const uint8_t* from) ZEL_INLINE_LAMBDA {
            for (size_t i = 0; i < batch.count; ++i)
                storeVector(row.out[c] + (batch.block + i) * blockPixels, loadBytes(from + i * vectorBytes));
        };
        if (isCopied(row, batch))
            for (int c = 0; c < 3; ++c) copy(c, batch.channels[c]);
        if constexpr (channels == 4) copy(3, fourth);
    }

  private:
    ZEL_INLINE static bool isCopied(const Row& row, const Batch& batch) { return batch.count == 1 || row.out.bypassing != 0; }
};
struct Planes3 : Planes<3> {
    static constexpr Layout layout = layoutOf({{0, 1}, {1, 1}, {2, 1}});
};
struct Planes4 : Planes<4> {
    static constexpr Layout layout = layoutOf({{0, 1}, {1, 1}, {2, 1}, {3, 1}});
};

// Words and floats, as floats.
template <class Samples, template <class> class Pixels>
struct SamplePixels {
    using Depth = typename Samples::Depth;
    using Layout = Pixels<Depth>;
    static constexpr int element = sizeof(typename Depth::Element), sites = vectorBytes / element, vectors = Samples::parts;
    static constexpr int streams = 1, bytes = Layout::bytes;
    static constexpr bool keepsFourth = bytes == 4 * element;

    ZEL_INLINE static Sources load(const Row& row, Batch& batch) {
        for (size_t i = 0; i < batch.count; ++i) {
            const auto x = Layout::load(row.in[0] + (batch.block + i) * sites * Layout::bytes);
            unrolled<vectors>([&](auto part) ZEL_INLINE_LAMBDA {
                storeVector(batch.vector(0, i * vectors + part), Samples::template floats<part>(x.a));
                storeVector(batch.vector(1, i * vectors + part), Samples::template floats<part>(x.b));
                storeVector(batch.vector(2, i * vectors + part), Samples::template floats<part>(x.c));
            });
        }
        return batch.sources();
    }
    ZEL_INLINE static Results results(const Row&, Batch& batch) { return batch.results(); }
    ZEL_INLINE static void store(const Row& row, const Batch& batch, const uint8_t*) {
        for (size_t i = 0; i < batch.count; ++i) {
            const auto samples = [&](int channel) ZEL_INLINE_LAMBDA {
                Floats v[vectors];
                for (int part = 0; part < vectors; ++part) v[part] = (Floats)batch.load(channel, i * vectors + unsigned(part));
                return Samples::samples(v);
            };
            Layout::store(row.out[0] + (batch.block + i) * sites * Layout::bytes, {samples(0), samples(1), samples(2)});
        }
    }
};

template <class K, class Rule, class Pixel, OuterChannels from, OuterChannels to>
constexpr typename K::Constants sharedConstants{applyShared<Rule, Pixel>, from, to};
template <class From, class To, class Rule, class Pixel, OuterChannels from, OuterChannels to>
constexpr Kernel sharedKernel = kernel<SharedKernel<From, To>>(sharedConstants<SharedKernel<From, To>, Rule, Pixel, from, to>);

// Pixels of some rules are better left in registers where there are enough of them for the constants too, and a fourth plane is
// best moved while the others are worked on.
template <class Rule>
constexpr bool prefersRegisters = requires {
    requires Rule::prefersRegisters;
};
template <class From, class To, class Rule, class Pixel, OuterChannels from, OuterChannels to>
constexpr Kernel ruleKernel = [] {
    if constexpr ((traits.holdsConstants && prefersRegisters<Rule>) || std::is_same_v<From, Planes4>)
        return withoutConstants<InlineKernel<From, To, Rule, Pixel, from, to>>;
    else
        return sharedKernel<From, To, Rule, Pixel, from, to>;
}();
template <class Samples, template <class> class Pixels, class Rule, OuterChannels from = inOrder, OuterChannels to = inOrder>
constexpr Kernel floatKernel =
    ruleKernel<SamplePixels<Samples, Pixels>, SamplePixels<Samples, Pixels>, Rule, FloatPixel, from, to>;

// A rule of the columns up to a multiple, and one of the others.
template <class From, class To, class Block, class Tail = Block, OuterChannels from = inOrder, OuterChannels to = inOrder>
constexpr Conversion byteConversion(int (*blockColumns)(int width) = nullptr) {
    Conversion c{.site = {1, 1},
                 .from = From::layout,
                 .to = To::layout,
                 .block = ruleKernel<From, To, Block, Triple, from, to>,
                 .keepsAlpha = To::keepsFourth};
    if (!std::is_same_v<Block, Tail>) {
        c.tail = sharedKernel<From, To, Tail, Triple, from, to>;
        c.blockColumns = blockColumns;
    }
    return c;
}

template <class Samples, template <class> class Pixels, class Block, class Tail = Block, OuterChannels from = inOrder,
          OuterChannels to = inOrder>
constexpr Conversion floatConversion = sampleConversion<Samples, Pixels>(floatKernel<Samples, Pixels, Block, from, to>,
                                                                         std::is_same_v<Block, Tail>
                                                                             ? Kernel{}
                                                                             : floatKernel<Samples, Pixels, Tail, from, to>);

}  // namespace zel::ZEL_LEVEL
