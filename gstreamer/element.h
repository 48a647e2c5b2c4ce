// The element zelconvert.
#pragma once

#include <gst/gst.h>

namespace zelconvert {

bool registerElement(GstPlugin* plugin);

}  // namespace zelconvert
