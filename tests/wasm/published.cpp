// Holds every function to its published checksum: checksums LIST.
#include <cstdio>
#include <string>

#include "tools/checksums.h"

int main(int, char** arguments) {
    std::string text;
    if (std::FILE* const file = std::fopen(arguments[1], "r")) {
        for (int c; (c = std::getc(file)) != EOF;) text += static_cast<char>(c);
        std::fclose(file);
    }
    const tool::Checksums published = tool::readChecksums(text);
    int faults = 0, equal = 0;
    for (const tool::Subject& subject : tool::functionSubjects()) {
        const auto entry = published.find(subject.name);
        const std::string sum = tool::hexadecimal(subject.sum());
        if (entry != published.end() && tool::wantedSum(entry->second.back()) == sum) {
            ++equal;
            continue;
        }
        std::printf("%s: %s\n", subject.name.c_str(), sum.c_str());
        ++faults;
    }
    std::printf("%d checksums are equal, %d are not\n", equal, faults);
    return faults != 0 || equal == 0;
}
