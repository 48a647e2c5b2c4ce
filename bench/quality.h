// Tables of how near results come to what they should be, beside those of the peers, as pages of docs show them. bench/quality
// writes them there.
#pragma once

namespace bench {

// Each prints one table of Markdown.
void printRoundTripsOfSpaces();
void printMosaics();

}  // namespace bench
