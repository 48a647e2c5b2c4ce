#include "quality.h"

#include <cstdio>
#include <exception>
#include <string_view>

namespace {

struct Table {
    std::string_view name;
    void (*print)();
};
constexpr Table tables[] = {
    {"spaces", bench::printRoundTripsOfSpaces},
    {"mosaics", bench::printMosaics},
};

}  // namespace

int main(int count, char** words) try {
    for (const Table& table : tables)
        if (count == 2 && table.name == words[1]) return table.print(), 0;
    std::fputs("usage: zelcc_quality TABLE\nTABLE is one of:\n", stderr);
    for (const Table& table : tables) std::fprintf(stderr, "    %s\n", table.name.data());
    return 2;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
