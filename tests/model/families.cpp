#include "model/export.h"

namespace model {

std::span<const std::span<const Export>> families() {
    static const std::span<const Export> all[] = {
        lumachromaExports(),        yuvExports(),          chromaExports(),
        intensityExports(),         liftingExports(),      packedSourceExports(),
        packedDestinationExports(), colorimetricExports(),
    };
    return all;
}

}  // namespace model
