// The order of interleaved chroma.
#pragma once

namespace zel::ZEL_LEVEL {

// Where p stands in it.
enum class ChromaOrder { pFirst, qFirst };

}  // namespace zel::ZEL_LEVEL
