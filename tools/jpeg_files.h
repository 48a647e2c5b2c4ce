// JPEG pictures. The header of libjpeg wants to stand behind this one.
#pragma once

#include <cstddef>
#include <cstdio>

#include "tools/files.h"
