// The command line.
#pragma once

namespace tool {

int run(int count, char** arguments);

}  // namespace tool
