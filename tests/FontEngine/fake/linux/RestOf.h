#pragma once

#include <dwrite_2.h>

namespace fake {

HRESULT unexpected(const char* operation);

// An interface with everything implemented that the fake has no answer for.
template <typename Interface>
class RestOf : public Interface {};

template <>
class RestOf<IDWriteFactory2> : public IDWriteFactory2 {
public:
    HRESULT STDMETHODCALLTYPE CreateEllipsisTrimmingSign(IDWriteTextFormat*, IDWriteInlineObject**) override {
        return unexpected("CreateEllipsisTrimmingSign");
    }
};

} // namespace fake
