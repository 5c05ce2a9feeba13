#include "BlockContents.h"
#include "Completion.h"
#include "RecordReader.h"
#include "StringDecoder.h"
#include "TextLength.h"
#include "Widened.h"
#include <dxf/Drawing.h>
#include <dxf/PairReader.h>

#include <algorithm>
#include <memory>
#include <string>

namespace dxf {
namespace {

enum class Section { None, Header, Tables, Blocks, Entities, Other };

Section sectionFrom(std::string_view name) {
    if (name == "HEADER") {
        return Section::Header;
    }
    if (name == "TABLES") {
        return Section::Tables;
    }
    if (name == "BLOCKS") {
        return Section::Blocks;
    }
    if (name == "ENTITIES") {
        return Section::Entities;
    }
    return Section::Other;
}

/// Groups whose text is worth having even when the file ends inside it. Half a number is a wrong number.
bool isTextGroup(int code) {
    return code == 1 || code == 3 || (code >= 300 && code < 310);
}

/// Names and the like may be longer than the longest text that a host wants.
std::size_t longestValue(const Limits& limits) {
    constexpr std::size_t enoughForNames = std::size_t{1} << 16;
    return std::max(enoughForNames, mostBytesOf(limits.textLength));
}

/// One pass over the pairs: follows sections, blocks and records, and hands each record's pairs to its reader.
class DrawingReader {
public:
    DrawingReader(std::istream& input, const Progress& progress, const Limits& limits)
        : m_pairs(input, longestValue(limits)), m_progress(progress), m_textLength(limits.textLength) {}

    Drawing read() {
        try {
            while (!m_ended) {
                const std::optional<Pair> pair = m_pairs.next();
                if (!pair || !reportProgress()) {
                    break;
                }
                take(*pair);
            }
        } catch (const Error& error) {
            if (error.kind() != ErrorKind::BadGroupCode && error.kind() != ErrorKind::Unreadable) {
                throw;
            }
            if (m_pairs.offset() == 0) {
                throw;
            }
            m_drawing.problems.push_back({error.kind(), error.line(), error.what()});
        }
        finish();
        return std::move(m_drawing);
    }

private:
    bool reportProgress() {
        constexpr std::uint64_t interval = std::uint64_t{1} << 20;
        if (!m_progress || m_pairs.offset() - m_reported < interval) {
            return true;
        }
        m_reported = m_pairs.offset();
        return m_progress(m_reported);
    }

    void take(const Pair& pair) {
        constexpr int comment = 999;
        const bool certain = pair.complete || isTextGroup(pair.code) || pair.is(0, "EOF");
        if (pair.code == comment || !certain) {
            return;
        }
        if (pair.code == 0) {
            m_atSectionName = false;
            startRecord(pair);
            return;
        }
        if (m_atSectionName && pair.code == 2) {
            startSection(pair.trimmedValue());
            return;
        }
        noteHandle(pair);
        if (m_inBlockHeader) {
            takeBlockHeader(pair);
        } else if (m_record) {
            m_record->add(pair);
        }
    }

    void noteHandle(const Pair& pair) {
        // In a dimension style group 5 names a block; its handle is in group 105.
        const bool handle = pair.code == 105 || (pair.code == 5 && m_type != "DIMSTYLE");
        if (handle && m_section != Section::Header) {
            m_drawing.maxHandle = std::max(m_drawing.maxHandle, pair.handle());
        }
    }

    void startSection(std::string_view name) {
        m_atSectionName = false;
        m_section = sectionFrom(name);
        m_sectionName = name;
        if (m_section == Section::Header) {
            m_record = makeHeaderReader();
        }
    }

    void startRecord(const Pair& pair) {
        finishRecord();
        m_type = pair.trimmedValue();
        m_recordLine = pair.line;
        if (m_type == "SECTION") {
            m_atSectionName = true;
            m_section = Section::Other;
            m_sectionName.clear();
        } else if (m_type == "ENDSEC") {
            endSection();
        } else if (m_type == "EOF") {
            m_ended = true;
        } else if (m_section == Section::Tables) {
            m_record = makeTableRecordReader(m_type);
        } else if (m_section == Section::Blocks || m_section == Section::Entities) {
            startEntity(pair);
        }
    }

    void startEntity(const Pair& pair) {
        if (m_type == "BLOCK") {
            m_block = {};
            m_inBlockHeader = true;
        } else if (m_type == "ENDBLK") {
            m_block = {};
            m_inBlock = false;
        } else {
            EntityPlace place{pair.offset, pair.line, m_inBlock ? m_block.name : std::wstring(),
                              m_inBlock && m_block.paperSpace, m_textLength};
            m_record = makeEntityReader(m_type, place);
        }
    }

    void takeBlockHeader(const Pair& pair) {
        constexpr int firstExtendedData = 1000;
        if (pair.code == 2) {
            m_block.name = widened(pair.trimmedValue());
        } else if (pair.code == 67) {
            m_block.paperSpace = pair.integer() == 1;
        } else if (pair.code < firstExtendedData) {
            takeCoordinate(pair, 10, m_block.base);
        }
    }

    void finishRecord() {
        if (m_inBlockHeader) {
            m_drawing.blocks.push_back(m_block);
            m_inBlockHeader = false;
            m_inBlock = true;
        }
        if (m_record) {
            m_record->finish(m_drawing);
            m_record.reset();
            if (m_section == Section::Entities) {
                m_contents.dropUselessInsert(m_drawing);
            }
        }
    }

    void endSection() {
        if (m_section == Section::Blocks) {
            m_contents.collect(m_drawing);
        }
        m_section = Section::None;
        m_sectionName.clear();
        m_inBlock = false;
    }

    void finish() {
        const std::string where = placeName();
        finishRecord();
        if (!m_ended && m_drawing.problems.empty()) {
            m_drawing.problems.push_back(
                {ErrorKind::Truncated, m_pairs.line(),
                 "The drawing is cut off at line " + std::to_string(m_pairs.line()) + where +
                     ": its end mark is missing. What stands before was read; export or copy the drawing again."});
        }
        m_drawing.byteCount = m_pairs.offset();
        m_drawing.lineCount = m_pairs.line();
        decodeStrings(m_drawing, m_textLength);
        completeDrawing(m_drawing);
    }

    /// Where the reading stands, for the message about a file that ends there.
    [[nodiscard]] std::string placeName() const {
        if (m_sectionName.empty()) {
            return {};
        }
        const bool inRecord = m_record != nullptr && m_section != Section::Header;
        return (inRecord ? ", inside " + m_type + " from line " + std::to_string(m_recordLine) : std::string()) +
               ", in section " + m_sectionName;
    }

    PairReader m_pairs;
    const Progress& m_progress;
    std::size_t m_textLength;
    std::uint64_t m_reported = 0;
    Drawing m_drawing;
    BlockContents m_contents;
    std::unique_ptr<IRecordReader> m_record;
    std::string m_type;
    std::uint64_t m_recordLine = 0;
    Section m_section = Section::None;
    std::string m_sectionName;
    bool m_atSectionName = false;
    bool m_inBlockHeader = false;
    bool m_inBlock = false;
    Block m_block;
    bool m_ended = false;
};

} // namespace

Drawing readDrawing(std::istream& input, const Progress& progress, const Limits& limits) {
    return DrawingReader(input, progress, limits).read();
}

} // namespace dxf
