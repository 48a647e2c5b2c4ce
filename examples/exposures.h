// A picture taken anew with three exposures, merged from them to floats, and brought back to bytes by tone mapping.
#pragma once

#include "study.h"

Study exposures(const Picture& original);
