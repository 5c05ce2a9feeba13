#pragma once

#include <iterator>

#include <dwrite.h>

#include <oslayer/com_ptr.h>

#include "Input.h"

namespace fuzz {

/// An inline object of any size, which may be none, negative or wider than every box.
class OddObject final : public IDWriteInlineObject {
public:
    static oslayer::com_ptr<IDWriteInlineObject> take(Input& input) {
        return oslayer::com_ptr<IDWriteInlineObject>::adopt(new OddObject(input));
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == __uuidof(IUnknown) || iid == __uuidof(IDWriteInlineObject);
        *object = known ? this : nullptr;
        if (known) {
            AddRef();
        }
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE Draw(void*, IDWriteTextRenderer*, FLOAT, FLOAT, BOOL, BOOL, IUnknown*) override {
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetMetrics(DWRITE_INLINE_OBJECT_METRICS* metrics) override {
        *metrics = m_metrics;
        return m_fails ? E_FAIL : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetOverhangMetrics(DWRITE_OVERHANG_METRICS* overhangs) override {
        *overhangs = m_overhangs;
        return m_fails ? E_FAIL : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetBreakConditions(DWRITE_BREAK_CONDITION* before,
                                                 DWRITE_BREAK_CONDITION* after) override {
        *before = m_before;
        *after = m_after;
        return m_fails ? E_FAIL : S_OK;
    }

private:
    explicit OddObject(Input& input)
        : m_metrics{takeLength(input), takeLength(input), takeLength(input), FALSE}, m_overhangs{takeLength(input),
                                                                                                 takeLength(input),
                                                                                                 takeLength(input),
                                                                                                 takeLength(input)},
          m_before(static_cast<DWRITE_BREAK_CONDITION>(input.below(4))),
          m_after(static_cast<DWRITE_BREAK_CONDITION>(input.below(4))), m_fails(input.below(8) == 0) {}
    virtual ~OddObject() = default;

    static float takeLength(Input& input) {
        static constexpr float lengths[] = {10.0F, 0.0F, 5.5F, -3.0F, 1000.0F, 1e-3F, 1e7F};
        return lengths[input.below(std::size(lengths))];
    }

    ULONG m_references = 1;
    const DWRITE_INLINE_OBJECT_METRICS m_metrics;
    const DWRITE_OVERHANG_METRICS m_overhangs;
    const DWRITE_BREAK_CONDITION m_before;
    const DWRITE_BREAK_CONDITION m_after;
    const bool m_fails;
};

} // namespace fuzz
