// zelcc: the conversions of the library for files, pipes and scripts.
#include "tools/arguments.h"

int main(int count, char** arguments) { return tool::run(count, arguments); }
