#include <gst/gst.h>

#include "element.h"

namespace {

gboolean init(GstPlugin* plugin) { return zelconvert::registerElement(plugin); }

}  // namespace

GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, zelcc, "Image colour conversion, exact to the last bit", init,
                  ZELCC_VERSION, "MIT/X11", "zelCC", "https://zelcc.invalid")
