// The element in a harness: what it negotiates, and each frame beside what the library makes of the same planes.
#include <gst/check/gstharness.h>
#include <gst/video/video.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "formats.h"
#include "zelcc.h"

namespace zelconvert {
namespace {

using Harness = std::unique_ptr<GstHarness, decltype(&gst_harness_teardown)>;

std::string rawCaps(const std::string& format, int width, int height, const std::string& more = "") {
    return "video/x-raw,format=" + format + ",width=" + std::to_string(width) + ",height=" + std::to_string(height) +
           ",framerate=30/1" + more;
}

GstVideoInfo infoOf(GstCaps* caps) {
    GstVideoInfo info;
    EXPECT_TRUE(gst_video_info_from_caps(&info, caps));
    return info;
}

GstVideoInfo infoOf(const std::string& text) {
    GstCaps* const caps = gst_caps_from_string(text.c_str());
    const GstVideoInfo info = infoOf(caps);
    gst_caps_unref(caps);
    return info;
}

GstBuffer* noise(size_t size, unsigned seed) {
    GstBuffer* const buffer = gst_buffer_new_allocate(nullptr, size, nullptr);
    std::mt19937 random(seed);
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_WRITE);
    for (size_t i = 0; i < size; ++i) map.data[i] = static_cast<uint8_t>(random());
    gst_buffer_unmap(buffer, &map);
    return buffer;
}

Harness harnessOf(const std::string& launch, const std::string& sink, const std::string& source) {
    Harness harness(gst_harness_new_parse(launch.c_str()), gst_harness_teardown);
    gst_harness_set_sink_caps_str(harness.get(), sink.c_str());
    gst_harness_set_src_caps_str(harness.get(), source.c_str());
    return harness;
}

// Visible samples of a frame.
std::vector<uint8_t> pixelsOf(GstBuffer* buffer, const GstVideoInfo& info) {
    std::vector<uint8_t> bytes;
    GstVideoFrame frame;
    if (!gst_video_frame_map(&frame, const_cast<GstVideoInfo*>(&info), buffer, GST_MAP_READ)) return bytes;
    for (guint plane = 0; plane < GST_VIDEO_FRAME_N_PLANES(&frame); ++plane) {
        gint components[GST_VIDEO_MAX_COMPONENTS];
        gst_video_format_info_component(info.finfo, plane, components);
        const int component = components[0], rows = GST_VIDEO_FRAME_COMP_HEIGHT(&frame, component);
        const int stride = GST_VIDEO_FRAME_PLANE_STRIDE(&frame, plane);
        const int pixelBytes = GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, component);
        const int width = pixelBytes > 0 ? std::min(stride, GST_VIDEO_FRAME_COMP_WIDTH(&frame, component) * pixelBytes) : 16;
        for (int row = 0; row < rows; ++row) {
            const auto* const first = static_cast<const uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, plane)) + row * stride;
            bytes.insert(bytes.end(), first, first + width);
        }
    }
    gst_video_frame_unmap(&frame);
    return bytes;
}

// By the library itself, each field by itself if so wished.
GstBuffer* expected(GstBuffer* in, const GstVideoInfo& inInfo, const GstVideoInfo& outInfo, const ZelvOptions& options,
                    bool byFields = false) {
    GstBuffer* const out = gst_buffer_new_allocate(nullptr, outInfo.size, nullptr);
    gst_buffer_memset(out, 0, 0, outInfo.size);
    GstVideoFrame from, to;
    gst_video_frame_map(&from, const_cast<GstVideoInfo*>(&inInfo), in, GST_MAP_READ);
    gst_video_frame_map(&to, const_cast<GstVideoInfo*>(&outInfo), out, GST_MAP_WRITE);
    ZelvPlan plan;
    const auto source = description(inInfo), target = description(outInfo);
    EXPECT_TRUE(source && target && zelvMakePlan(&plan, &*source, &*target, &options) == zelStsNoErr);
    const int fields = byFields ? 2 : 1;
    for (int field = 0; field < fields; ++field) {
        const uint8_t* fromPlanes[4];
        uint8_t* toPlanes[4];
        int32_t fromSteps[4], toSteps[4];
        for (int i = 0; i < 4; ++i) {
            fromPlanes[i] = static_cast<const uint8_t*>(from.data[i]) + field * from.info.stride[i];
            toPlanes[i] = static_cast<uint8_t*>(to.data[i]) + field * to.info.stride[i];
            fromSteps[i] = fields * from.info.stride[i];
            toSteps[i] = fields * to.info.stride[i];
        }
        EXPECT_EQ(zelvConvert(&plan, fromPlanes, fromSteps, toPlanes, toSteps, {inInfo.width, inInfo.height / fields}),
                  zelStsNoErr);
    }
    gst_video_frame_unmap(&from);
    gst_video_frame_unmap(&to);
    return out;
}

void expectFrame(const std::string& launch, const std::string& source, const std::string& sink, const ZelvOptions& options,
                 bool byFields = false) {
    SCOPED_TRACE(launch + ": " + source + " to " + sink);
    const Harness harness = harnessOf(launch, sink, source);
    const GstVideoInfo in = infoOf(source);
    GstBuffer* const buffer = noise(in.size, 7);
    GstBuffer* const out = gst_harness_push_and_pull(harness.get(), gst_buffer_ref(buffer));
    ASSERT_TRUE(out);
    GstCaps* const caps = gst_pad_get_current_caps(harness->sinkpad);
    const GstVideoInfo outInfo = infoOf(caps);
    gst_caps_unref(caps);
    GstBuffer* const right = expected(buffer, in, outInfo, options, byFields);
    EXPECT_TRUE(pixelsOf(out, outInfo) == pixelsOf(right, outInfo));
    for (GstBuffer* each : {buffer, out, right}) gst_buffer_unref(each);
}

TEST(GStreamer, EveryPairOfFormatsIsWhatTheLibraryMakes) {
    for (const Format& from : formats())
        for (const Format& to : formats())
            if (&from != &to)
                expectFrame("zelconvert", rawCaps(gst_video_format_to_string(from.name), 35, 7),
                            rawCaps(gst_video_format_to_string(to.name), 35, 7), {});
}

// The table says where samples lie, and GStreamer's own converter says so, too.
TEST(GStreamer, FormatsLieAsGStreamerHasThem) {
    for (const Format& format : formats()) {
        const std::string name = gst_video_format_to_string(format.name), caps = rawCaps(name, 16, 8);
        SCOPED_TRACE(name);
        GstVideoInfo in = infoOf(caps);
        GstVideoInfo rgb = infoOf(rawCaps("ARGB64", 16, 8));
        // One colour, so that no filter of chroma matters.
        GstBuffer* const colour = gst_buffer_new_allocate(nullptr, rgb.size, nullptr);
        GstMapInfo map;
        gst_buffer_map(colour, &map, GST_MAP_WRITE);
        const uint16_t pixel[] = {0xffff, 0xc000, 0x8000, 0x3000};
        for (size_t i = 0; i < map.size; ++i) map.data[i] = reinterpret_cast<const uint8_t*>(pixel)[i % sizeof pixel];
        gst_buffer_unmap(colour, &map);
        GstBuffer* const stored = gst_buffer_new_allocate(nullptr, in.size, nullptr);
        GstVideoConverter* const converter = gst_video_converter_new(&rgb, &in, nullptr);
        GstVideoFrame from, to;
        gst_video_frame_map(&from, &rgb, colour, GST_MAP_READ);
        gst_video_frame_map(&to, &in, stored, GST_MAP_WRITE);
        gst_video_converter_frame(converter, &from, &to);
        gst_video_frame_unmap(&from);
        gst_video_frame_unmap(&to);
        gst_video_converter_free(converter);

        const Harness harness = harnessOf("zelconvert", rawCaps("ARGB64", 16, 8), caps);
        GstBuffer* const out = gst_harness_push_and_pull(harness.get(), gst_buffer_ref(stored));
        ASSERT_TRUE(out);
        gst_buffer_map(out, &map, GST_MAP_READ);
        const auto* const samples = reinterpret_cast<const uint16_t*>(map.data);
        for (int channel = 1; channel < 4; ++channel) {
            const int right = GST_VIDEO_INFO_IS_GRAY(&in) ? samples[1] : pixel[channel];
            EXPECT_NEAR(samples[channel], right, 0x400) << "channel " << channel;
        }
        gst_buffer_unmap(out, &map);
        for (GstBuffer* each : {colour, stored, out}) gst_buffer_unref(each);
    }
}

TEST(GStreamer, OptionsThreadsAndFieldsAreWhatTheLibraryMakes) {
    const ZelvOptions linear{zelvLinear, zelvSited, zelvRound}, ordered{zelvRepeat, zelvMean, zelvOrdered};
    const std::string fields = ",interlace-mode=interleaved,colorimetry=bt601";
    for (const char* threads : {" n-threads=1", " n-threads=3", " n-threads=0"}) {
        const std::string element = std::string("zelconvert") + threads;
        for (const char* site : {"jpeg", "mpeg2", "cosited"}) {
            const std::string sited = std::string(",chroma-site=") + site;
            expectFrame(element + " chroma-filter=linear", rawCaps("NV12", 75, 101, sited), rawCaps("RGB", 75, 101), linear);
            expectFrame(element + " chroma-filter=linear", rawCaps("RGB", 75, 101), rawCaps("I420", 75, 101, sited), linear);
        }
        expectFrame(element + " dither=ordered", rawCaps("P010_10LE", 66, 90), rawCaps("RGB", 66, 90), ordered);
        expectFrame(element, rawCaps("I420", 64, 104, fields), rawCaps("RGB", 64, 104, ",interlace-mode=interleaved"), {}, true);
        expectFrame(element, rawCaps("YUY2", 64, 104, fields), rawCaps("NV12", 64, 104, fields), {}, true);
        expectFrame(element, rawCaps("YUY2", 64, 104, fields), rawCaps("UYVY", 64, 104, fields), {});
    }
    for (const char* matrix : {"bt601", "bt709", "bt2020", "smpte240m", "1:4:0:0", "2:2:0:0"})
        expectFrame("zelconvert", rawCaps("Y444", 40, 20, std::string(",colorimetry=") + matrix), rawCaps("BGRx", 40, 20), {});
}

TEST(GStreamer, Negotiates) {
    struct {
        const char *source, *sink, *result;  // what stands in the result, nothing where there is none
    } const cases[] = {
        {"format=I420", "video/x-raw,format={RGB,I420}", "format=(string)I420"},
        {"format=I420", "video/x-raw,format={GRAY8,RGB,Y42B}", "format=(string)Y42B"},
        {"format=RGBA", "video/x-raw,format={I420,RGB,Y444}", "format=(string)RGB"},
        {"format=P010_10LE", "video/x-raw,format={NV12,Y444,I420_10LE}", "format=(string)I420_10LE"},
        {"format=I420,colorimetry=bt601", "video/x-raw,format=RGB", "colorimetry=(string)1:1:16:4"},
        {"format=RGB,colorimetry=sRGB", "video/x-raw,format=I420", "colorimetry=(string)2:4:7:1"},
        {"format=RGB,colorimetry=sRGB", "video/x-raw,format=I420,colorimetry=bt709", "colorimetry=(string)bt709"},
        {"format=I420,colorimetry=bt601", "video/x-raw,format=RGB,colorimetry=sRGB", nullptr},
        {"format=I420,colorimetry=bt2100-pq", "video/x-raw,format=RGB,colorimetry=sRGB", nullptr},
        {"format=I420,chroma-site=dv", "video/x-raw,format=RGB", nullptr},
        {"format=I420,interlace-mode=fields", "video/x-raw,format=RGB", nullptr},
        {"format=RGB16", "video/x-raw,format={RGB16,RGB}", "format=(string)RGB16"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string(each.source) + " to " + each.sink);
        GstElement* const element = gst_element_factory_make("zelconvert", nullptr);
        const Harness harness(gst_harness_new_with_element(element, "sink", "src"), gst_harness_teardown);
        const std::string source = std::string("video/x-raw,width=16,height=16,framerate=30/1,") + each.source;
        gst_harness_set_sink_caps_str(harness.get(), each.sink);
        gst_harness_set_src_caps_str(harness.get(), source.c_str());
        GstBuffer* const buffer = noise(infoOf(source).size, 1);
        const GstFlowReturn flow = gst_harness_push(harness.get(), buffer);
        EXPECT_EQ(flow, each.result ? GST_FLOW_OK : GST_FLOW_NOT_NEGOTIATED);
        GstCaps* const caps = gst_pad_get_current_caps(harness->sinkpad);
        gchar* const text = caps ? gst_caps_to_string(caps) : g_strdup("");
        EXPECT_TRUE(!each.result || std::strstr(text, each.result)) << text;
        g_free(text);
        if (caps) gst_caps_unref(caps);
        gst_object_unref(element);
    }
}

// Rows farther apart than their width, planes behind a gap, and caps that change in the stream.
TEST(GStreamer, FollowsStridesAndNewCaps) {
    const Harness harness = harnessOf("zelconvert n-threads=2", "video/x-raw,format=RGB", rawCaps("I420", 33, 21));
    for (const int width : {33, 64, 17}) {
        const std::string text = rawCaps("I420", width, 21);
        gst_harness_set_src_caps_str(harness.get(), text.c_str());
        const GstVideoInfo plain = infoOf(text);
        gint strides[4] = {width + 19, width + 5, width + 8};
        gsize offsets[4] = {3, 3 + static_cast<gsize>(strides[0]) * 22, 0};
        offsets[2] = offsets[1] + static_cast<gsize>(strides[1]) * 12;
        GstBuffer* const buffer = noise(offsets[2] + static_cast<gsize>(strides[2]) * 12, 5);
        gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_I420, static_cast<guint>(width), 21, 3,
                                       offsets, strides);
        GstBuffer* const out = gst_harness_push_and_pull(harness.get(), gst_buffer_ref(buffer));
        ASSERT_TRUE(out);
        GstCaps* const caps = gst_pad_get_current_caps(harness->sinkpad);
        const GstVideoInfo info = infoOf(caps);
        gst_caps_unref(caps);
        EXPECT_EQ(info.width, width);
        GstBuffer* const right = expected(buffer, plain, info, {});
        EXPECT_TRUE(pixelsOf(out, info) == pixelsOf(right, info)) << width;
        for (GstBuffer* each : {buffer, out, right}) gst_buffer_unref(each);
    }
}

TEST(GStreamer, MosaicsAreWhatTheFunctionsMakeForAnyThreads) {
    constexpr int width = 45, height = 150, step = 48;
    const ZelSize size{width, height};
    const ZelRect whole{0, 0, width, height};
    for (int grid = 0; grid < 4; ++grid)
        for (const bool ahd : {false, true})
            for (const int threads : {1, 3}) {
                GstBuffer* const buffer = noise(step * height, 3);
                GstMapInfo map;
                gst_buffer_map(buffer, &map, GST_MAP_READ);
                std::vector<uint8_t> right(3 * width * height), scratch(30 * (width + 6));
                if (ahd)
                    zeliDemosaicAHD_8u_C1C3R(map.data, whole, size, step, right.data(), 3 * width, grid, scratch.data(),
                                             width + 6);
                else
                    zeliCFAToRGB_8u_C1C3R(map.data, whole, size, step, right.data(), 3 * width, grid, 0);
                gst_buffer_unmap(buffer, &map);
                for (const char* format : {"RGB", "BGRx"}) {
                    const std::string launch = "zelconvert n-threads=" + std::to_string(threads) + (ahd ? " demosaic=ahd" : "");
                    SCOPED_TRACE(launch + " " + bayerFormats[grid] + " " + format);
                    const Harness harness =
                        harnessOf(launch, std::string("video/x-raw,format=") + format,
                                  std::string("video/x-bayer,width=45,height=150,framerate=30/1,format=") + bayerFormats[grid]);
                    GstBuffer* const out = gst_harness_push_and_pull(harness.get(), gst_buffer_ref(buffer));
                    ASSERT_TRUE(out);
                    const std::vector<uint8_t> pixels = pixelsOf(out, infoOf(rawCaps(format, width, height)));
                    const bool isRgb = std::strcmp(format, "RGB") == 0;
                    size_t wrong = 0;
                    for (size_t i = 0; i < size_t{width} * height; ++i)
                        for (size_t c = 0; c < 3; ++c)
                            wrong += right[3 * i + c] != (isRgb ? pixels[3 * i + c] : pixels[4 * i + 2 - c]);
                    EXPECT_EQ(wrong, 0u);
                    gst_buffer_unref(out);
                }
                gst_buffer_unref(buffer);
            }
}

}  // namespace
}  // namespace zelconvert

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    gst_init(&argc, &argv);
    const int result = RUN_ALL_TESTS();
    gst_deinit();
    return result;
}
