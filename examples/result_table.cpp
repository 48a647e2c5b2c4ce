#include "result_table.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

std::string statusName(ZelStatus status) {
    switch (status) {
        case zelStsNoErr:
            return "zelStsNoErr";
        case zelStsOddSizeWarn:
            return "zelStsOddSizeWarn";
        case zelStsSizeErr:
            return "zelStsSizeErr";
        case zelStsNullPtrErr:
            return "zelStsNullPtrErr";
        default:
            return std::to_string(status);
    }
}

}  // namespace

void printTable(const std::vector<Conversion>& conversions) {
    int name = 0;  // columns of the longest one
    for (const Conversion& conversion : conversions) name = std::max(name, static_cast<int>(conversion.name.size()));
    std::printf("%-*s %-17s %10s %13s %13s\n", name, "conversion", "status", "mean error", "largest error", "megapixels/s");
    for (const Conversion& conversion : conversions) {
        std::printf("%-*s %-17s ", name, conversion.name.c_str(), statusName(conversion.status).c_str());
        if (conversion.error)
            std::printf("%10.3f %13d ", conversion.error->mean, conversion.error->largest);
        else
            std::printf("%10s %13s ", "", "");
        if (conversion.status < 0)
            std::printf("%13s\n", "");
        else
            std::printf("%13.0f\n", conversion.megapixelsPerSecond);
    }
}
