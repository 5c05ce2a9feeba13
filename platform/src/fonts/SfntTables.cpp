#include "fonts/SfntTables.h"

#include <boost/endian/conversion.hpp>

namespace platform {

namespace {

/// A table's bytes as HarfBuzz found them; fields are big-endian at fixed offsets.
class TableBytes {
public:
    TableBytes(hb_face_t* face, hb_tag_t tag) : m_blob(hb_face_reference_table(face, tag)) {
        m_data = reinterpret_cast<const unsigned char*>(hb_blob_get_data(m_blob.get(), &m_size));
    }

    unsigned size() const { return m_size; }
    std::uint16_t u16(unsigned offset) const { return boost::endian::load_big_u16(m_data + offset); }
    std::int16_t s16(unsigned offset) const { return boost::endian::load_big_s16(m_data + offset); }

private:
    HbBlobPtr m_blob;
    unsigned m_size = 0;
    const unsigned char* m_data = nullptr;
};

} // namespace

bool hasHead(hb_face_t* face) {
    const TableBytes bytes(face, HB_TAG('h', 'e', 'a', 'd'));
    return bytes.size() >= 54 && bytes.u16(12) == 0x5F0F && bytes.u16(14) == 0x3CF5;
}

bool hasSymbolEncoding(hb_face_t* face) {
    const TableBytes bytes(face, HB_TAG('c', 'm', 'a', 'p'));
    constexpr unsigned headerSize = 4;
    constexpr unsigned recordSize = 8;
    const unsigned count = bytes.size() >= headerSize ? bytes.u16(2) : 0;
    for (unsigned at = headerSize; at < headerSize + count * recordSize && at + recordSize <= bytes.size();
         at += recordSize) {
        constexpr std::uint16_t windows = 3;
        constexpr std::uint16_t symbol = 0;
        if (bytes.u16(at) == windows && bytes.u16(at + 2) == symbol) {
            return true;
        }
    }
    return false;
}

std::uint32_t readRevision(hb_face_t* face) {
    const TableBytes bytes(face, HB_TAG('h', 'e', 'a', 'd'));
    return bytes.size() < 54 ? 0 : static_cast<std::uint32_t>(bytes.u16(4)) << 16 | bytes.u16(6);
}

std::optional<Os2Table> readOs2(hb_face_t* face) {
    const TableBytes bytes(face, HB_TAG('O', 'S', '/', '2'));
    constexpr unsigned sizeOfVersion0 = 78;
    constexpr unsigned sizeOfVersion2 = 96;
    if (bytes.size() < sizeOfVersion0) {
        return std::nullopt;
    }
    Os2Table table{};
    table.version = bytes.u16(0);
    table.weightClass = bytes.u16(4);
    table.widthClass = bytes.u16(6);
    table.strikeoutSize = bytes.s16(26);
    table.strikeoutPosition = bytes.s16(28);
    table.selection = bytes.u16(62);
    table.typoAscender = bytes.s16(68);
    table.typoDescender = bytes.s16(70);
    table.typoLineGap = bytes.s16(72);
    table.winAscent = bytes.u16(74);
    table.winDescent = bytes.u16(76);
    if (table.version >= 2 && bytes.size() >= sizeOfVersion2) {
        table.xHeight = bytes.s16(86);
        table.capHeight = bytes.s16(88);
    }
    return table;
}

std::optional<HheaTable> readHhea(hb_face_t* face) {
    const TableBytes bytes(face, HB_TAG('h', 'h', 'e', 'a'));
    if (bytes.size() < 36) {
        return std::nullopt;
    }
    return HheaTable{bytes.s16(4), bytes.s16(6), bytes.s16(8)};
}

std::optional<PostTable> readPost(hb_face_t* face) {
    const TableBytes bytes(face, HB_TAG('p', 'o', 's', 't'));
    if (bytes.size() < 32) {
        return std::nullopt;
    }
    return PostTable{bytes.s16(8), bytes.s16(10)};
}

} // namespace platform
