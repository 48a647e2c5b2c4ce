// Pictures from PNG and JPEG files, and to PNG files. Failures are thrown as std::runtime_error.
#pragma once

#include <string>

#include "picture.h"

// The format is told by the content of the file, not by its name. Every PNG is served (gray, palette, 1 to 16 bits, interlaced;
// alpha is laid on white), and JPEG in gray and RGB or YCbCr.
Picture readPicture(const std::string& path);

void writePng(const std::string& path, const Picture& picture);
