// Which caps the element offers for those of its other side, and which it takes of those that are left.
#pragma once

#include <gst/video/video.h>

namespace zelconvert {

GstCaps* templateCaps(GstPadDirection direction);

// The caps themselves first, which pass as they are, then what they can be converted to, or from.
GstCaps* transformed(GstPadDirection direction, GstCaps* caps);

// Of `choices`, which it takes over, those that lose least beside `caps`, which are fixed.
GstCaps* fixated(GstPadDirection direction, GstCaps* caps, GstCaps* choices);

// Whether nothing but what the element converts differs: where both sides tell primaries and transfer, these are alike.
bool haveSameColours(const GstVideoColorimetry& a, const GstVideoColorimetry& b);

inline bool isBayer(const GstStructure* structure) { return gst_structure_has_name(structure, "video/x-bayer"); }
inline bool isBayer(const GstCaps* caps) { return isBayer(gst_caps_get_structure(caps, 0)); }

}  // namespace zelconvert
