// What a plan begins with. A change of the plan or of the arithmetic changes it.
#pragma once

#include <cstdint>

namespace zelv {

constexpr uint64_t planIdentifier = 0x31306e616c70767a;  // "zvplan01"

}  // namespace zelv
