#pragma once

#include "RecordReader.h"
#include <dxf/PairReader.h>
#include <dxf/TextEntity.h>

#include <string>
#include <vector>

namespace dxf {

/// What all entities share, and where in an entity the reading stands.
class EntityGroups {
public:
    explicit EntityGroups(const EntityPlace& place);

    /// True when the pair is done with: it is common to all entities, structure, or inside a bracketed group.
    bool take(const Pair& pair);

    /// Group 100 last met; empty in old drawings.
    [[nodiscard]] const std::string& subclass() const noexcept { return m_subclass; }
    /// True inside the subclass, and in drawings too old to have subclasses.
    [[nodiscard]] bool in(std::string_view subclass) const noexcept {
        return m_subclass.empty() || m_subclass == subclass;
    }
    /// Behind group 101: the pairs belong to an object inside the entity.
    [[nodiscard]] bool embedded() const noexcept { return m_embedded; }
    /// Application of the extended data being read; empty outside extended data.
    [[nodiscard]] const std::string& application() const noexcept { return m_application; }

    /// Adds a chunk to the entity's text. Throws Error (TextLengthLimit).
    void append(std::wstring& content, const Pair& pair) const;

    void store(TextEntity& text) const;
    void store(Insert& insert) const;

private:
    bool takeStructure(const Pair& pair);
    bool takeCommon(const Pair& pair);

    EntityPlace m_place;
    std::string m_subclass;
    std::string m_application;
    bool m_embedded = false;
    bool m_bracketed = false;
    std::uint64_t m_handle = 0;
    std::uint64_t m_owner = 0;
    std::wstring m_layer = L"0";
    int m_color = 256;
    std::optional<std::uint32_t> m_trueColor;
    bool m_invisible = false;
    bool m_paperSpace = false;
    std::wstring m_layout;
};

/// Values of enumerations as files give them: what is out of range has the default.
Attachment attachmentFrom(std::int64_t value);
LineSpacingStyle lineSpacingStyleFrom(std::int64_t value);
DrawingDirection drawingDirectionFrom(std::int64_t value);
double lineSpacingFactorFrom(double value);

} // namespace dxf
