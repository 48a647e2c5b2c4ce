// zelcc info.
#pragma once

namespace tool {

int info();

}  // namespace tool
