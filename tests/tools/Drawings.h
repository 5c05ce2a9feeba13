#pragma once

#include <string>

/// Small drawings, built in the tests that lay them out.
namespace tooltest {

/// Pairs of one entity or record, each "code value", one per line.
inline std::string pairs(const std::string& lines) {
    std::string result;
    for (std::size_t at = 0; at < lines.size();) {
        const std::size_t end = std::min(lines.find('\n', at), lines.size());
        const std::string line = lines.substr(at, end - at);
        const std::size_t blank = line.find(' ');
        result += line.substr(0, blank) + "\n" + (blank == std::string::npos ? "" : line.substr(blank + 1)) + "\n";
        at = end + 1;
    }
    return result;
}

/// A drawing with a style of an installed family and these entities (as for pairs()).
inline std::string drawing(const std::string& entities, const std::string& version = "AC1032",
                           const std::string& styleFont = "DejaVuSans.ttf", const std::string& blocks = "") {
    return pairs("0 SECTION\n2 HEADER\n9 $ACADVER\n1 " + version + "\n9 $HANDSEED\n5 1000\n0 ENDSEC") +
           pairs("0 SECTION\n2 TABLES\n0 TABLE\n2 STYLE\n70 1\n0 STYLE\n5 11\n2 STANDARD\n70 0\n40 0.0\n41 1.0\n3 " +
                 styleFont + "\n4 \n0 ENDTAB\n0 ENDSEC") +
           (blocks.empty() ? "" : pairs("0 SECTION\n2 BLOCKS\n" + blocks + "\n0 ENDSEC")) +
           pairs("0 SECTION\n2 ENTITIES" + (entities.empty() ? "" : "\n" + entities) + "\n0 ENDSEC\n0 EOF");
}

/// A paragraph text of cap height 2.5 at (10, 20).
inline std::string mtextEntity(const std::string& content, const std::string& more = "",
                               const std::string& handle = "20") {
    return "0 MTEXT\n5 " + handle + "\n100 AcDbEntity\n8 NOTES\n100 AcDbMText\n10 10.0\n20 20.0\n30 0.0\n40 2.5\n1 " +
           content + "\n7 STANDARD" + (more.empty() ? "" : "\n" + more);
}

} // namespace tooltest
