#include "StackCode.h"

#include <optional>

namespace mtext {

namespace {

constexpr std::wstring_view ESCAPABLE = L"\\{};/#^~";

class StackReader {
public:
    StackReader(std::wstring_view text, const CharacterContext& context) : m_text(text), m_context(context) {}

    StackedText read() {
        while (!m_result.terminated && readUnit()) {
        }
        m_result.text = joined();
        return m_result;
    }

private:
    std::wstring& part() { return m_separator ? m_lower : m_upper; }

    void take(std::wstring_view shown, std::size_t length) {
        part() += shown;
        m_result.length += length;
    }

    void separate(wchar_t separator) {
        m_separator = separator;
        ++m_result.length;
        const std::wstring_view rest = m_text.substr(m_result.length);
        if (separator == L'^' && !rest.empty() && rest.front() == L' ') {
            ++m_result.length;
        }
    }

    bool readSpecial(std::wstring_view rest) {
        const std::optional<SpecialCharacter> special = readSpecialCharacter(rest, m_context);
        if (!special || special->action != SpecialAction::Text) {
            return false;
        }
        m_result.undecodable = m_result.undecodable || special->problem == DiagnosticCode::UndecodableCharacter;
        take(special->text, special->length);
        return true;
    }

    bool readBackslash(std::wstring_view rest) {
        if (rest.size() > 1 && ESCAPABLE.find(rest[1]) != std::wstring_view::npos) {
            take(rest[1] == L'~' ? std::wstring_view(L"\u00A0") : rest.substr(1, 1), 2);
            return true;
        }
        return readSpecial(rest);
    }

    // False where the stack ends without a semicolon.
    bool readUnit() {
        const std::wstring_view rest = m_text.substr(m_result.length);
        if (rest.empty()) {
            return false;
        }
        const wchar_t unit = rest.front();
        switch (unit) {
        case L';':
            m_result.terminated = true;
            ++m_result.length;
            return true;
        case L'{':
        case L'}':
        case L'\n':
        case L'\r':
            return false;
        case L'\\':
            return readBackslash(rest);
        case L'/':
        case L'#':
        case L'^':
            if (!m_separator) {
                separate(unit);
                return true;
            }
            break;
        case L'%':
            if (readSpecial(rest)) {
                return true;
            }
            break;
        default:
            break;
        }
        take(rest.substr(0, 1), 1);
        return true;
    }

    std::wstring joined() const {
        const bool standsAlone = m_separator == L'^' && (m_upper.empty() || m_lower.empty());
        const bool slash = m_separator && !standsAlone;
        return m_upper + (slash ? L"/" : L"") + m_lower;
    }

    std::wstring_view m_text;
    const CharacterContext& m_context;
    std::optional<wchar_t> m_separator;
    std::wstring m_upper;
    std::wstring m_lower;
    StackedText m_result;
};

} // namespace

StackedText readStackCode(std::wstring_view text, const CharacterContext& context) {
    return StackReader(text, context).read();
}

} // namespace mtext
