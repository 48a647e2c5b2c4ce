// The functions as Python has them.
#pragma once

#include "python/arrays.h"

namespace zelpy {

// Adds all functions of the library, the constants and the exceptions to the module.
bool addFunctions(PyObject* module);

}  // namespace zelpy
