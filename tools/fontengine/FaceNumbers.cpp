#include "FaceNumbers.h"

namespace tool {

std::vector<std::uint32_t> FaceNumbers::of(const fonts::CParagraphLayout& layout) {
    std::vector<std::uint32_t> numbers;
    for (std::size_t i = 0; i < layout.faceCount(); ++i) {
        const fonts::SFontFace face = layout.face(i);
        const Key key = face.file.empty() ? Key(face.family, 0, face.face, face.isEmboldened, face.isSlanted)
                                          : Key(face.file, face.index, L"", face.isEmboldened, face.isSlanted);
        numbers.push_back(m_numbers.emplace(key, static_cast<std::uint32_t>(m_numbers.size())).first->second);
    }
    return numbers;
}

} // namespace tool
