#pragma once

#include <dxf/EntityWriter.h>
#include <dxf/PairReader.h>

#include <string>

namespace dxf {

/// Takes from a passing entity what the entities that replace it take over.
class EntityOriginReader {
public:
    EntityOriginReader() = default;
    /// `first`: the pair that names the entity's type.
    explicit EntityOriginReader(const Pair& first);

    void add(const Pair& pair);
    [[nodiscard]] const EntityOrigin& origin() const noexcept { return m_origin; }

private:
    bool addBracketed(const Pair& pair);
    void addCommon(const Pair& pair);

    EntityOrigin m_origin;
    std::string m_subclass;
    bool m_bracketed = false;
    bool m_keepBracketed = false;
    bool m_embedded = false;
    bool m_inExtended = false;
    bool m_keepExtended = false;
};

} // namespace dxf
