#pragma once

#include <dxf/Drawing.h>
#include <dxf/Limits.h>
#include <dxf/PairReader.h>

#include <memory>
#include <string>
#include <string_view>

namespace dxf {

/// Takes the pairs of one record (an entity, a table record) and puts what it made of them into the drawing. Strings
/// stay widened bytes.
class IRecordReader {
public:
    virtual ~IRecordReader() = default;
    /// One pair of the record, its first one (code 0) excluded.
    virtual void add(const Pair& pair) = 0;
    /// The record is complete, or the file ended in it.
    virtual void finish(Drawing& drawing) = 0;
};

/// Where in the drawing an entity was met.
struct EntityPlace {
    std::uint64_t offset = 0;
    std::uint64_t line = 0;
    std::wstring block; ///< Widened name of the block being defined; empty outside blocks.
    bool paperSpace = false;
    std::size_t textLength = Limits::none; ///< Limit of characters.
};

/// Readers for what the drawing's tables hold, by record type ("STYLE"); null for records that say nothing of texts.
std::unique_ptr<IRecordReader> makeTableRecordReader(std::string_view type);

/// The header's variables, all of them one record.
std::unique_ptr<IRecordReader> makeHeaderReader();

/// Readers for entities that hold or place texts, by type ("MTEXT"); null for all others.
std::unique_ptr<IRecordReader> makeEntityReader(std::string_view type, const EntityPlace& place);

/// Parts of makeEntityReader.
std::unique_ptr<IRecordReader> makeMultiLeaderReader(const EntityPlace& place);
std::unique_ptr<IRecordReader> makeTableEntityReader(const EntityPlace& place);

/// Takes group `code`, `code + 10` or `code + 20` as a coordinate of `point`.
bool takeCoordinate(const Pair& pair, int code, Point& point);
/// The same for a point that need not be there.
bool takeCoordinate(const Pair& pair, int code, std::optional<Point>& point);

} // namespace dxf
