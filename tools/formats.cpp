#include "tools/formats.h"

#include <algorithm>

#include "tools/errors.h"
#include "tools/foreign.h"

namespace tool {

const Format& formatNamed(std::string_view name) {
    if (const Format* found = findFormat(name)) return *found;
    if (const auto meaning = meaningOf(name))
        throw UnsupportedError("no function takes or makes " + std::string(name) + ", which is FFmpeg's name of " + *meaning +
                               " (zelcc list formats shows what there is)");
    throw UsageError("there is no format \"" + std::string(name) + '"' + catalog::suggestedFormats(name) +
                     " (zelcc list formats shows all)");
}

const Function& functionNamed(std::string_view name) {
    if (const Function* found = catalog::findFunction(name)) return *found;
    throw UsageError("there is no function \"" + std::string(name) + '"' + catalog::suggestedFunctions(name) +
                     " (zelcc list functions WORD finds them)");
}

const Conversion& conversionOf(const Function& function) {
    const auto number = &function - catalog::functions().data();
    return *std::ranges::find(catalog::conversions(), number, &Conversion::function);
}

}  // namespace tool
