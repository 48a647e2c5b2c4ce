#include "element.h"

#include <gst/video/gstvideofilter.h>
#include <gst/video/gstvideometa.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <thread>

#include "conversion.h"
#include "formats.h"
#include "negotiation.h"

GST_DEBUG_CATEGORY_STATIC(zelconvert_debug);
#define GST_CAT_DEFAULT zelconvert_debug

namespace zelconvert {
namespace {

enum Property { propertyThreads = 1, propertyDither, propertyChromaFilter, propertyDemosaic };
enum ChromaFilter { filterBox, filterLinear };

struct State {
    guint threads = 1;
    int dither = zelvRound, chromaFilter = filterBox, demosaic = demosaicBilinear;
    // Of the caps; without a conversion they pass, or aren't there yet.
    std::optional<Conversion> conversion;
    std::optional<Mosaic> mosaic;
    GstVideoInfo in{}, out{};
    bool isPlanned = false;  // by the properties as they are
    std::unique_ptr<tool::Workers> workers;

    ZelvOptions options() const {
        const bool linear = chromaFilter == filterLinear;
        return {linear ? zelvLinear : zelvRepeat, linear ? zelvSited : zelvMean, dither};
    }
    bool plan() {
        conversion.emplace();
        isPlanned = mosaic ? conversion->plan(*mosaic, out, static_cast<Demosaic>(demosaic), options())
                           : conversion->plan(in, out, options());
        return isPlanned;
    }
    tool::Workers& startedWorkers() {
        const int wanted = threads ? static_cast<int>(std::min(threads, 1024u))
                                   : static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
        if (!workers || workers->count() != wanted) workers = std::make_unique<tool::Workers>(wanted);
        return *workers;
    }
};

struct Element {
    GstVideoFilter parent;
    State* state;
};
struct ElementClass {
    GstVideoFilterClass parent;
};

GstBaseTransformClass* parentTransform = nullptr;

State& stateOf(gpointer element) { return *static_cast<Element*>(element)->state; }

GType ditherType() {
    static const GEnumValue values[] = {{zelvRound, "To the nearest", "none"},
                                        {zelvOrdered, "By a pattern of 8 x 8 thresholds", "ordered"},
                                        {0, nullptr, nullptr}};
    static const GType type = g_enum_register_static("ZelConvertDither", values);
    return type;
}

GType chromaFilterType() {
    static const GEnumValue values[] = {
        {filterBox, "Repeated to pixels, and the mean of them", "box"},
        {filterLinear, "Interpolated to pixels, and weighted around the sites, by chroma-site", "linear"},
        {0, nullptr, nullptr}};
    static const GType type = g_enum_register_static("ZelConvertChromaFilter", values);
    return type;
}

GType demosaicType() {
    static const GEnumValue values[] = {{demosaicBilinear, "Bilinear, green by gradients", "bilinear"},
                                        {demosaicAhd, "Adaptive homogeneity-directed", "ahd"},
                                        {0, nullptr, nullptr}};
    static const GType type = g_enum_register_static("ZelConvertDemosaic", values);
    return type;
}

void setProperty(GObject* object, guint id, const GValue* value, GParamSpec* property) {
    State& state = stateOf(object);
    GST_OBJECT_LOCK(object);
    switch (id) {
        case propertyThreads:
            state.threads = g_value_get_uint(value);
            break;
        case propertyDither:
            state.dither = g_value_get_enum(value);
            break;
        case propertyChromaFilter:
            state.chromaFilter = g_value_get_enum(value);
            break;
        case propertyDemosaic:
            state.demosaic = g_value_get_enum(value);
            break;
        default:
            G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
    }
    state.isPlanned = false;
    GST_OBJECT_UNLOCK(object);
}

void getProperty(GObject* object, guint id, GValue* value, GParamSpec* property) {
    const State& state = stateOf(object);
    GST_OBJECT_LOCK(object);
    switch (id) {
        case propertyThreads:
            g_value_set_uint(value, state.threads);
            break;
        case propertyDither:
            g_value_set_enum(value, state.dither);
            break;
        case propertyChromaFilter:
            g_value_set_enum(value, state.chromaFilter);
            break;
        case propertyDemosaic:
            g_value_set_enum(value, state.demosaic);
            break;
        default:
            G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
    }
    GST_OBJECT_UNLOCK(object);
}

void finalize(GObject* object) {
    delete &stateOf(object);
    G_OBJECT_CLASS(parentTransform)->finalize(object);
}

GstCaps* transformCaps(GstBaseTransform* transform, GstPadDirection direction, GstCaps* caps, GstCaps* filter) {
    GstCaps* result = transformed(direction, caps);
    if (filter) {
        GstCaps* const both = gst_caps_intersect_full(filter, result, GST_CAPS_INTERSECT_FIRST);
        gst_caps_unref(result);
        result = both;
    }
    GST_DEBUG_OBJECT(transform, "%" GST_PTR_FORMAT " becomes %" GST_PTR_FORMAT, caps, result);
    return result;
}

GstCaps* fixateCaps(GstBaseTransform*, GstPadDirection direction, GstCaps* caps, GstCaps* choices) {
    return fixated(direction, caps, choices);
}

// Rows of video/x-bayer are padded to multiples of four bytes.
gsize mosaicStep(int width) { return GST_ROUND_UP_4(static_cast<gsize>(width)); }

std::optional<Mosaic> mosaicOf(GstCaps* caps) {
    const GstStructure* const structure = gst_caps_get_structure(caps, 0);
    Mosaic mosaic;
    mosaic.grid = gridOf(gst_structure_get_string(structure, "format"));
    if (!isBayer(structure) || mosaic.grid < 0 || !gst_structure_get_int(structure, "width", &mosaic.size.width) ||
        !gst_structure_get_int(structure, "height", &mosaic.size.height))
        return {};
    return mosaic;
}

gboolean getUnitSize(GstBaseTransform* transform, GstCaps* caps, gsize* size) {
    const std::optional<Mosaic> mosaic = mosaicOf(caps);
    if (!mosaic) return parentTransform->get_unit_size(transform, caps, size);
    *size = mosaicStep(mosaic->size.width) * static_cast<gsize>(mosaic->size.height);
    return TRUE;
}

gboolean plan(GstElement* element, GstCaps* in, GstCaps* out) {
    State& state = stateOf(element);
    if (state.plan()) return TRUE;
    GST_ERROR_OBJECT(element, "no conversion from %" GST_PTR_FORMAT " to %" GST_PTR_FORMAT, in, out);
    return FALSE;
}

gboolean setInfo(GstVideoFilter* filter, GstCaps* inCaps, GstVideoInfo* in, GstCaps* outCaps, GstVideoInfo* out) {
    State& state = stateOf(filter);
    state.mosaic.reset();
    state.conversion.reset();
    if (gst_base_transform_is_passthrough(GST_BASE_TRANSFORM(filter))) return TRUE;
    if (in->width != out->width || in->height != out->height || in->interlace_mode != out->interlace_mode) return FALSE;
    // A site of the last two rows of each field would have rows that the frame lacks.
    if (GST_VIDEO_INFO_IS_INTERLACED(in) && (hasSitesOfTwoRows(*in) || hasSitesOfTwoRows(*out)) && in->height % 4 != 0) {
        GST_ERROR_OBJECT(filter, "interlaced 4:2:0 of %d rows, which isn't a multiple of 4", in->height);
        return FALSE;
    }
    state.in = *in;
    state.out = *out;
    return plan(GST_ELEMENT(filter), inCaps, outCaps);
}

gboolean setCaps(GstBaseTransform* transform, GstCaps* in, GstCaps* out) {
    if (!isBayer(in)) return parentTransform->set_caps(transform, in, out);
    State& state = stateOf(transform);
    state.mosaic = mosaicOf(in);
    if (!state.mosaic || !gst_video_info_from_caps(&state.out, out)) return FALSE;
    GST_VIDEO_FILTER(transform)->out_info = state.out;
    return plan(GST_ELEMENT(transform), in, out);
}

gboolean proposeAllocation(GstBaseTransform* transform, GstQuery* decided, GstQuery* query) {
    GstCaps* caps = nullptr;
    gst_query_parse_allocation(query, &caps, nullptr);
    if (!caps || !isBayer(caps)) return parentTransform->propose_allocation(transform, decided, query);
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return TRUE;
}

// The properties may have changed since the caps came.
bool prepare(gpointer element) {
    State& state = stateOf(element);
    GST_OBJECT_LOCK(element);
    const bool isReady = state.isPlanned || state.plan();
    state.startedWorkers();
    GST_OBJECT_UNLOCK(element);
    return isReady;
}

GstFlowReturn transformFrame(GstVideoFilter* filter, GstVideoFrame* in, GstVideoFrame* out) {
    if (!prepare(filter)) return GST_FLOW_NOT_NEGOTIATED;
    State& state = stateOf(filter);
    state.conversion->convert(*in, *out, *state.workers);
    return GST_FLOW_OK;
}

// Maps a buffer as long as it lives.
class MappedMosaic {
  public:
    MappedMosaic(GstBuffer* buffer, ZelSize size) : buffer_(buffer) {
        isMapped_ = gst_buffer_map(buffer, &map_, GST_MAP_READ);
        if (const GstVideoMeta* const meta = gst_buffer_get_video_meta(buffer); meta && meta->n_planes == 1)
            offset_ = meta->offset[0], step_ = meta->stride[0];
        else
            step_ = static_cast<int32_t>(mosaicStep(size.width));
        const gsize end = offset_ + static_cast<gsize>(std::max(step_, 0)) * static_cast<gsize>(size.height - 1) +
                          static_cast<gsize>(size.width);
        isWhole_ = isMapped_ && step_ >= size.width && end <= map_.size;
    }
    ~MappedMosaic() {
        if (isMapped_) gst_buffer_unmap(buffer_, &map_);
    }
    MappedMosaic(const MappedMosaic&) = delete;
    MappedMosaic& operator=(const MappedMosaic&) = delete;

    bool isWhole() const { return isWhole_; }
    const uint8_t* data() const { return map_.data + offset_; }
    int32_t step() const { return step_; }

  private:
    GstBuffer* buffer_;
    GstMapInfo map_{};
    bool isMapped_ = false, isWhole_ = false;
    gsize offset_ = 0;
    int32_t step_ = 0;
};

GstFlowReturn transform(GstBaseTransform* transform, GstBuffer* in, GstBuffer* out) {
    State& state = stateOf(transform);
    if (!state.mosaic) return parentTransform->transform(transform, in, out);
    if (!prepare(transform)) {
        GST_ELEMENT_ERROR(transform, STREAM, FORMAT, (nullptr), ("The mosaic is too small for this way to demosaic."));
        return GST_FLOW_NOT_NEGOTIATED;
    }
    const MappedMosaic mosaic(in, state.mosaic->size);
    GstVideoFrame frame;
    if (!mosaic.isWhole() || !gst_video_frame_map(&frame, &state.out, out, GST_MAP_WRITE)) {
        GST_ELEMENT_ERROR(transform, STREAM, FORMAT, (nullptr), ("A buffer doesn't hold what its caps say."));
        return GST_FLOW_ERROR;
    }
    state.conversion->convert(mosaic.data(), mosaic.step(), frame, *state.workers);
    gst_video_frame_unmap(&frame);
    return GST_FLOW_OK;
}

// What describes the picture or its size holds for the converted one, what describes its colours or memory doesn't.
gboolean transformMeta(GstBaseTransform*, GstBuffer*, GstMeta* meta, GstBuffer*) {
    static const char* const kept[] = {GST_META_TAG_VIDEO_STR, GST_META_TAG_VIDEO_SIZE_STR, GST_META_TAG_VIDEO_ORIENTATION_STR};
    const gchar* const* const tags = gst_meta_api_type_get_tags(meta->info->api);
    for (const gchar* const* tag = tags; tag && *tag; ++tag)
        if (std::ranges::none_of(kept, [&](const char* each) { return g_str_equal(*tag, each); })) return FALSE;
    return TRUE;
}

gboolean stop(GstBaseTransform* transform) {
    stateOf(transform).workers.reset();
    return TRUE;
}

GParamSpec* choiceOf(const char* name, const char* nick, const char* text, GType type) {
    const auto flags = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | GST_PARAM_MUTABLE_PLAYING);
    return g_param_spec_enum(name, nick, text, type, 0, flags);
}

void initClass(gpointer klass, gpointer) {
    parentTransform = GST_BASE_TRANSFORM_CLASS(g_type_class_peek_parent(klass));
    GObjectClass* const object = G_OBJECT_CLASS(klass);
    object->set_property = setProperty;
    object->get_property = getProperty;
    object->finalize = finalize;
    const auto flags = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS | GST_PARAM_MUTABLE_PLAYING);
    g_object_class_install_property(
        object, propertyThreads,
        g_param_spec_uint("n-threads", "Threads", "Threads that share a frame, 0 for one on each processor", 0, G_MAXUINT, 1,
                          flags));
    g_object_class_install_property(
        object, propertyDither,
        choiceOf("dither", "Dither", "What is done with the bits that a smaller depth has no room for", ditherType()));
    g_object_class_install_property(
        object, propertyChromaFilter,
        choiceOf("chroma-filter", "Chroma filter", "How chroma becomes finer or coarser", chromaFilterType()));
    g_object_class_install_property(
        object, propertyDemosaic,
        choiceOf("demosaic", "Demosaicing", "How colours of a sensor's mosaic are completed", demosaicType()));

    GstElementClass* const element = GST_ELEMENT_CLASS(klass);
    gst_element_class_set_static_metadata(element, "Exact video colour converter", "Filter/Converter/Video/Colorspace",
                                          "Converts raw video of any matrix, range, depth and layout, and sensors' mosaics, by "
                                          "vectors and exact to the last bit",
                                          "zelCC maintainers <maintainers@zelcc.invalid>");
    for (const auto& [name, direction] : {std::pair("sink", GST_PAD_SINK), std::pair("src", GST_PAD_SRC)}) {
        GstCaps* const caps = templateCaps(direction);
        gst_element_class_add_pad_template(element, gst_pad_template_new(name, direction, GST_PAD_ALWAYS, caps));
        gst_caps_unref(caps);
    }
    gst_type_mark_as_plugin_api(ditherType(), static_cast<GstPluginAPIFlags>(0));
    gst_type_mark_as_plugin_api(chromaFilterType(), static_cast<GstPluginAPIFlags>(0));
    gst_type_mark_as_plugin_api(demosaicType(), static_cast<GstPluginAPIFlags>(0));

    GstBaseTransformClass* const base = GST_BASE_TRANSFORM_CLASS(klass);
    base->transform_caps = transformCaps;
    base->fixate_caps = fixateCaps;
    base->get_unit_size = getUnitSize;
    base->set_caps = setCaps;
    base->propose_allocation = proposeAllocation;
    base->transform = transform;
    base->transform_meta = transformMeta;
    base->stop = stop;
    base->passthrough_on_same_caps = TRUE;
    GST_VIDEO_FILTER_CLASS(klass)->set_info = setInfo;
    GST_VIDEO_FILTER_CLASS(klass)->transform_frame = transformFrame;
}

void initInstance(GTypeInstance* instance, gpointer) { reinterpret_cast<Element*>(instance)->state = new State; }

}  // namespace

bool registerElement(GstPlugin* plugin) {
    GST_DEBUG_CATEGORY_INIT(zelconvert_debug, "zelconvert", 0, "exact video colour converter");
    static const GTypeInfo info{.class_size = sizeof(ElementClass),
                                .base_init = nullptr,
                                .base_finalize = nullptr,
                                .class_init = initClass,
                                .class_finalize = nullptr,
                                .class_data = nullptr,
                                .instance_size = sizeof(Element),
                                .n_preallocs = 0,
                                .instance_init = initInstance,
                                .value_table = nullptr};
    static const GType type = g_type_register_static(GST_TYPE_VIDEO_FILTER, "ZelConvert", &info, static_cast<GTypeFlags>(0));
    return gst_element_register(plugin, "zelconvert", GST_RANK_NONE, type);
}

}  // namespace zelconvert
