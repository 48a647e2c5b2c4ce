#include "result_table.h"

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
    std::printf("%-38s %-18s %10s %13s %14s\n", "conversion", "status", "mean error", "largest error", "megapixels/s");
    for (const Conversion& conversion : conversions) {
        std::printf("%-38s %-18s ", conversion.name.c_str(), statusName(conversion.status).c_str());
        if (conversion.error)
            std::printf("%10.3f %13d ", conversion.error->mean, conversion.error->largest);
        else
            std::printf("%10s %13s ", "", "");
        if (conversion.status < 0)
            std::printf("%14s\n", "");
        else
            std::printf("%14.0f\n", conversion.megapixelsPerSecond);
    }
}
