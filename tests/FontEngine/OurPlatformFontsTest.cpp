// What our platform decides about fonts where others decide otherwise: see docs/parity.md.

#include "RecordedFonts.h"

TEST(OurPlatformFonts, CapitalsThatNoTableStatesAreAsHighAsTheirOutlines) {
    expectRecordedMetrics("our-platform-font-metrics.tsv", 5);
}
