#pragma once

#include "EntityGroups.h"
#include <dxf/PairReader.h>
#include <dxf/TextEntity.h>

#include <string>
#include <string_view>

namespace dxf {

/// Takes a group of an MTEXT, whether an entity or embedded in an attribute. False: no group of an MTEXT. `groups`:
/// those of the entity.
bool takeMTextGroup(const Pair& pair, const EntityGroups& groups, TextEntity& text);

/// The object inside an MTEXT of newer drawings: its columns, and its placement once more.
void takeEmbeddedColumns(const Pair& pair, TextEntity& text);

/// Columns of an MTEXT in older drawings: extended data, a sequence of keys and values.
class ColumnData {
public:
    void add(const Pair& pair, TextEntity& text);

private:
    void addNumber(double number, TextEntity& text);

    enum class Section { None, Columns, Linked, DefinedHeight };
    Section m_section = Section::None;
    int m_key = 0; ///< 0: a key comes next.
    int m_heightsLeft = 0;
};

} // namespace dxf
