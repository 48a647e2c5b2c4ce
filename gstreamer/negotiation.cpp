#include "negotiation.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "formats.h"

namespace zelconvert {
namespace {

// Calls with each string that a field may be: itself, or those of its list.
template <typename Use>
void forEachString(const GstStructure* structure, const char* field, Use use) {
    const GValue* value = gst_structure_get_value(structure, field);
    if (!value) return;
    if (G_VALUE_HOLDS_STRING(value)) use(g_value_get_string(value));
    if (!GST_VALUE_HOLDS_LIST(value)) return;
    for (guint i = 0; i < gst_value_list_get_size(value); ++i)
        if (const GValue* item = gst_value_list_get_value(value, i); G_VALUE_HOLDS_STRING(item)) use(g_value_get_string(item));
}

bool mayBe(const GstStructure* structure, const char* field, std::string_view text) {
    bool found = !gst_structure_has_field(structure, field);
    forEachString(structure, field, [&](const char* each) { found = found || text == each; });
    return found;
}

template <typename Strings>
void setStrings(GstStructure* structure, const char* field, const Strings& strings) {
    GValue list = G_VALUE_INIT, item = G_VALUE_INIT;
    gst_value_list_init(&list, static_cast<guint>(std::size(strings)));
    g_value_init(&item, G_TYPE_STRING);
    for (const auto& each : strings) {
        g_value_set_string(&item, std::string(each).c_str());
        gst_value_list_append_value(&list, &item);
    }
    g_value_unset(&item);
    gst_structure_take_value(structure, field, &list);
}

std::vector<std::string> formatNames(bool rgbAlone) {
    std::vector<std::string> names;
    for (const Format& each : formats())
        if (!rgbAlone || GST_VIDEO_FORMAT_INFO_IS_RGB(gst_video_format_get_info(each.name)))
            names.push_back(gst_video_format_to_string(each.name));
    return names;
}

bool mayBeRgb(const GstStructure* structure) {
    return std::ranges::any_of(formatNames(true), [&](const std::string& name) { return mayBe(structure, "format", name); });
}

constexpr std::string_view servedSites[] = {"jpeg", "mpeg2", "cosited"};
// Others have fields in buffers of their own.
constexpr std::string_view servedInterlacing[] = {"progressive", "interleaved", "mixed"};

template <typename Strings>
bool mayBeAnyOf(const GstStructure* structure, const char* field, const Strings& strings) {
    return std::ranges::any_of(strings, [&](std::string_view each) { return mayBe(structure, field, each); });
}

std::optional<GstVideoColorimetry> colorimetryOf(const char* text) {
    GstVideoColorimetry result;
    if (!gst_video_colorimetry_from_string(&result, text)) return {};
    return result;
}

std::string textOf(const GstVideoColorimetry& colorimetry) {
    gchar* const text = gst_video_colorimetry_to_string(&colorimetry);
    const std::string result = text ? text : "";
    g_free(text);
    return result;
}

// All colorimetry with the same colours as some that the field may be; none where it says nothing of them.
std::set<std::string> sameColours(const GstStructure* structure) {
    std::vector<GstVideoColorimetry> stated;
    bool isOpen = !gst_structure_has_field(structure, "colorimetry");
    forEachString(structure, "colorimetry", [&](const char* text) {
        const std::optional<GstVideoColorimetry> each = colorimetryOf(text);
        isOpen = isOpen || !each || each->primaries == GST_VIDEO_COLOR_PRIMARIES_UNKNOWN ||
                 each->transfer == GST_VIDEO_TRANSFER_UNKNOWN;
        if (each) stated.push_back(*each);
    });
    std::set<std::string> result;
    if (isOpen) return result;
    for (int transfer = 0; transfer <= GST_VIDEO_TRANSFER_BT601; ++transfer)
        for (int primaries = 0; primaries <= GST_VIDEO_COLOR_PRIMARIES_EBU3213; ++primaries) {
            GstVideoColorimetry each{GST_VIDEO_COLOR_RANGE_UNKNOWN, GST_VIDEO_COLOR_MATRIX_UNKNOWN,
                                     static_cast<GstVideoTransferFunction>(transfer),
                                     static_cast<GstVideoColorPrimaries>(primaries)};
            if (std::ranges::none_of(stated, [&](const GstVideoColorimetry& other) { return haveSameColours(each, other); }))
                continue;
            for (const GstVideoColorRange range : {GST_VIDEO_COLOR_RANGE_0_255, GST_VIDEO_COLOR_RANGE_16_235})
                for (int matrix = GST_VIDEO_COLOR_MATRIX_RGB; matrix <= GST_VIDEO_COLOR_MATRIX_BT2020; ++matrix) {
                    each.range = range;
                    each.matrix = static_cast<GstVideoColorMatrix>(matrix);
                    if (const std::string text = textOf(each); !text.empty()) result.insert(text);
                }
        }
    return result;
}

// In memory of the system, which fields of a frame share.
bool isPlain(const GstCapsFeatures* features) {
    return !features || gst_caps_features_is_equal(features, GST_CAPS_FEATURES_MEMORY_SYSTEM_MEMORY);
}

void appendConverted(GstCaps* to, GstPadDirection direction, const GstStructure* from) {
    const bool bayer = isBayer(from);
    if (bayer && direction == GST_PAD_SRC) return;
    if (!bayer && (!mayBeAnyOf(from, "format", formatNames(false)) || !mayBeAnyOf(from, "chroma-site", servedSites) ||
                   !mayBeAnyOf(from, "interlace-mode", servedInterlacing)))
        return;

    GstStructure* const raw = gst_structure_copy(from);
    gst_structure_set_name(raw, "video/x-raw");
    gst_structure_remove_fields(raw, "format", "colorimetry", "chroma-site", nullptr);
    setStrings(raw, "format", formatNames(bayer));
    if (!bayer) {
        if (const std::set<std::string> colours = sameColours(from); !colours.empty()) setStrings(raw, "colorimetry", colours);
        if (gst_structure_has_field(from, "interlace-mode")) {
            std::vector<std::string> modes;
            for (const std::string_view mode : servedInterlacing)
                if (mayBe(from, "interlace-mode", mode)) modes.emplace_back(mode);
            if (modes.size() == 1)
                gst_structure_set(raw, "interlace-mode", G_TYPE_STRING, modes[0].c_str(), nullptr);
            else
                setStrings(raw, "interlace-mode", modes);
        }
    }
    gst_caps_append_structure(to, raw);

    if (direction == GST_PAD_SRC && mayBeRgb(from) && mayBe(from, "interlace-mode", "progressive")) {
        GstStructure* const mosaic = gst_structure_copy(from);
        gst_structure_set_name(mosaic, "video/x-bayer");
        gst_structure_remove_fields(mosaic, "colorimetry", "chroma-site", "interlace-mode", nullptr);
        setStrings(mosaic, "format", bayerFormats);
        gst_caps_append_structure(to, mosaic);
    }
}

// What a conversion loses, the lightest first, and lightest of all whatever it changes without a loss.
enum Loss { anyChange = 1, otherModel = 2, depth = 4, alpha = 8, sitesAcross = 16, sitesDown = 32, colour = 64 };

int lossOf(const GstVideoFormatInfo* from, const GstVideoFormatInfo* to) {
    const auto model = [](const GstVideoFormatInfo* f) {
        return f->flags & (GST_VIDEO_FORMAT_FLAG_YUV | GST_VIDEO_FORMAT_FLAG_RGB | GST_VIDEO_FORMAT_FLAG_GRAY);
    };
    const auto grayed = [](const GstVideoFormatInfo* f) { return GST_VIDEO_FORMAT_INFO_IS_GRAY(f) ? 1 : 0; };
    const auto alphaOf = [](const GstVideoFormatInfo* f) { return GST_VIDEO_FORMAT_INFO_HAS_ALPHA(f) ? 1 : 0; };
    const auto across = [](const GstVideoFormatInfo* f) {
        return GST_VIDEO_FORMAT_INFO_IS_GRAY(f) ? 0 : static_cast<int>(GST_VIDEO_FORMAT_INFO_W_SUB(f, 1));
    };
    const auto down = [](const GstVideoFormatInfo* f) {
        return GST_VIDEO_FORMAT_INFO_IS_GRAY(f) ? 0 : static_cast<int>(GST_VIDEO_FORMAT_INFO_H_SUB(f, 1));
    };
    const auto depthOf = [](const GstVideoFormatInfo* f) { return static_cast<int>(GST_VIDEO_FORMAT_INFO_DEPTH(f, 0)); };
    if (from == to) return 0;
    int loss = anyChange;
    const auto add = [&](int more, Loss lost) { loss += more > 0 ? lost : more < 0 ? anyChange : 0; };
    if (model(from) != model(to)) loss += otherModel;
    add(depthOf(from) - depthOf(to), depth);
    add(alphaOf(from) - alphaOf(to), alpha);
    if (!grayed(from)) {  // which has no chroma to lose
        add(across(to) - across(from), sitesAcross);
        add(down(to) - down(from), sitesDown);
    }
    add(grayed(to) - grayed(from), colour);
    return loss;
}

struct Choice {
    guint structure = 0;
    GstVideoFormat format = GST_VIDEO_FORMAT_UNKNOWN;
    int loss = G_MAXINT;
};

Choice leastLoss(GstPadDirection direction, GstVideoFormat known, const GstCaps* choices) {
    const GstVideoFormatInfo* const knownInfo = gst_video_format_get_info(known);
    Choice best;
    for (guint i = 0; i < gst_caps_get_size(choices); ++i) {
        const GstStructure* const structure = gst_caps_get_structure(choices, i);
        if (isBayer(structure)) continue;
        forEachString(structure, "format", [&](const char* name) {
            const GstVideoFormat format = gst_video_format_from_string(name);
            if (format != known && !formatOf(format)) return;
            const GstVideoFormatInfo* const info = gst_video_format_get_info(format);
            const int loss = direction == GST_PAD_SINK ? lossOf(knownInfo, info) : lossOf(info, knownInfo);
            if (loss < best.loss) best = {i, format, loss};
        });
    }
    return best;
}

// Primaries and transfer are carried over; matrix and range are, too, between luma-chroma or RGB, and otherwise those that
// GStreamer gives the format and size.
GstVideoColorimetry wantedColorimetry(const GstVideoInfo& known, const GstVideoFormatInfo* format) {
    GstVideoInfo plain;
    gst_video_info_set_format(&plain, format->format, static_cast<guint>(known.width), static_cast<guint>(known.height));
    GstVideoColorimetry wanted = known.colorimetry;
    if ((known.finfo->flags ^ format->flags) &
        (GST_VIDEO_FORMAT_FLAG_YUV | GST_VIDEO_FORMAT_FLAG_RGB | GST_VIDEO_FORMAT_FLAG_GRAY)) {
        wanted.range = plain.colorimetry.range;
        wanted.matrix = plain.colorimetry.matrix;
    }
    return wanted;
}

void setColorimetry(GstStructure* structure, const GstVideoInfo& known, const GstVideoFormatInfo* format) {
    const GstVideoColorimetry wanted = wantedColorimetry(known, format);
    const std::string text = textOf(wanted);
    std::string chosen = text;
    if (!mayBe(structure, "colorimetry", text)) {
        int best = -1;
        forEachString(structure, "colorimetry", [&](const char* each) {
            const std::optional<GstVideoColorimetry> other = colorimetryOf(each);
            if (!other || (other->matrix == GST_VIDEO_COLOR_MATRIX_RGB) != (wanted.matrix == GST_VIDEO_COLOR_MATRIX_RGB)) return;
            const int likeness =
                4 * haveSameColours(*other, wanted) + 2 * (other->matrix == wanted.matrix) + (other->range == wanted.range);
            if (likeness > best) best = likeness, chosen = each;
        });
        if (best < 0) return;
    }
    gst_structure_set(structure, "colorimetry", G_TYPE_STRING, chosen.c_str(), nullptr);
}

void setChromaSite(GstStructure* structure, const GstVideoInfo& known, const GstVideoFormatInfo* format) {
    const auto hasSites = [](const GstVideoFormatInfo* f) {
        return GST_VIDEO_FORMAT_INFO_IS_YUV(f) && (GST_VIDEO_FORMAT_INFO_W_SUB(f, 1) || GST_VIDEO_FORMAT_INFO_H_SUB(f, 1));
    };
    if (!hasSites(format)) return gst_structure_remove_field(structure, "chroma-site");
    const char* const same = hasSites(known.finfo) ? gst_video_chroma_to_string(known.chroma_site) : nullptr;
    if (same && mayBe(structure, "chroma-site", same)) gst_structure_set(structure, "chroma-site", G_TYPE_STRING, same, nullptr);
}

}  // namespace

GstCaps* templateCaps(GstPadDirection direction) {
    GstCaps* const caps = gst_caps_from_string("video/x-raw, width=[1,32767], height=[1,32767], framerate=[0/1,2147483647/1]");
    setStrings(gst_caps_get_structure(caps, 0), "format", formatNames(false));
    if (direction == GST_PAD_SINK) {
        GstStructure* const mosaic = gst_structure_copy(gst_caps_get_structure(caps, 0));
        gst_structure_set_name(mosaic, "video/x-bayer");
        setStrings(mosaic, "format", bayerFormats);
        gst_caps_append_structure(caps, mosaic);
    }
    // Whatever both sides agree on passes as it is.
    gst_caps_append(caps, gst_caps_from_string("video/x-raw(ANY)"));
    return caps;
}

GstCaps* transformed(GstPadDirection direction, GstCaps* caps) {
    GstCaps* const result = gst_caps_new_empty();
    for (guint i = 0; i < gst_caps_get_size(caps); ++i)
        if (const GstStructure* const each = gst_caps_get_structure(caps, i); !isBayer(each))
            gst_caps_append_structure_full(result, gst_structure_copy(each),
                                           gst_caps_features_copy(gst_caps_get_features(caps, i)));
    for (guint i = 0; i < gst_caps_get_size(caps); ++i)
        if (isPlain(gst_caps_get_features(caps, i))) appendConverted(result, direction, gst_caps_get_structure(caps, i));
    return result;
}

GstCaps* fixated(GstPadDirection direction, GstCaps* caps, GstCaps* choices) {
    if (gst_caps_is_subset(caps, choices)) {  // they pass
        gst_caps_unref(choices);
        return gst_caps_ref(caps);
    }
    GstVideoInfo known;
    const bool bayer = isBayer(caps);
    if (bayer) gst_video_info_set_format(&known, GST_VIDEO_FORMAT_RGB, 1, 1);
    if (!bayer && !gst_video_info_from_caps(&known, caps)) return gst_caps_fixate(choices);
    const Choice choice = leastLoss(direction, GST_VIDEO_INFO_FORMAT(&known), choices);
    if (choice.loss == G_MAXINT) return gst_caps_fixate(choices);

    GstCaps* const result = gst_caps_copy_nth(choices, choice.structure);
    gst_caps_unref(choices);
    GstStructure* const structure = gst_caps_get_structure(result, 0);
    gst_structure_set(structure, "format", G_TYPE_STRING, gst_video_format_to_string(choice.format), nullptr);
    const GstVideoFormatInfo* const format = gst_video_format_get_info(choice.format);
    if (!bayer) setColorimetry(structure, known, format);
    setChromaSite(structure, known, format);
    return gst_caps_fixate(result);
}

bool haveSameColours(const GstVideoColorimetry& a, const GstVideoColorimetry& b) {
    // One curve at several depths, and the one of sRGB, by which RGB goes that nothing is said of: no player converts between
    // these.
    const auto curve = [](GstVideoTransferFunction transfer) {
        switch (static_cast<int>(transfer)) {
            case GST_VIDEO_TRANSFER_BT601:
            case GST_VIDEO_TRANSFER_BT2020_10:
            case GST_VIDEO_TRANSFER_BT2020_12:
            case GST_VIDEO_TRANSFER_SRGB:
                return GST_VIDEO_TRANSFER_BT709;
            default:
                return transfer;
        }
    };
    const auto agree = [](int one, int other) { return one == 0 || other == 0 || one == other; };
    return agree(a.primaries, b.primaries) && agree(curve(a.transfer), curve(b.transfer));
}

}  // namespace zelconvert
