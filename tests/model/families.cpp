#include "model/export.h"

namespace model {

std::span<const std::span<const Export>> families() {
    static const std::span<const Export> all[] = {
        lumachromaExports(),   yuvExports(),        chromaExports(),       intensityExports(),
        liftingExports(),      reduceBitsExports(), packedSourceExports(), packedDestinationExports(),
        colorimetricExports(), hueExports(),        labExports()};
    return all;
}

}  // namespace model
