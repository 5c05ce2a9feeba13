#pragma once

// The platform's basic types, status codes and IUnknown, for systems that do
// not have them. Widths are the platform's: HRESULT, LONG and ULONG have 32 bits.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

using BOOL = int;
using UINT = unsigned int;
using INT16 = std::int16_t;
using INT32 = std::int32_t;
using UINT8 = std::uint8_t;
using UINT16 = std::uint16_t;
using UINT32 = std::uint32_t;
using UINT64 = std::uint64_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using HRESULT = LONG;
using FLOAT = float;
// Text holds UTF-16 code units, one per element, although an element is wider.
using WCHAR = wchar_t;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

#define STDMETHODCALLTYPE
#define WINAPI

// Functions that the platform's libraries export.
#define PLATFORM_EXPORT [[gnu::visibility("default")]]

/// A point in time: units of 100 nanoseconds since the start of the year 1601 (UTC), in two halves.
struct FILETIME {
    UINT32 dwLowDateTime;
    UINT32 dwHighDateTime;
};

// ---- status codes ----

inline constexpr HRESULT platformStatus(std::uint32_t code) {
    return static_cast<HRESULT>(code);
}

#define SUCCEEDED(status) (static_cast<HRESULT>(status) >= 0)
#define FAILED(status) (static_cast<HRESULT>(status) < 0)

#define S_OK platformStatus(0x00000000u)
#define S_FALSE platformStatus(0x00000001u)
#define E_NOTIMPL platformStatus(0x80004001u)
#define E_NOINTERFACE platformStatus(0x80004002u)
#define E_POINTER platformStatus(0x80004003u)
#define E_FAIL platformStatus(0x80004005u)
#define E_UNEXPECTED platformStatus(0x8000FFFFu)
#define E_OUTOFMEMORY platformStatus(0x8007000Eu)
#define E_INVALIDARG platformStatus(0x80070057u)
#define E_NOT_SUFFICIENT_BUFFER platformStatus(0x8007007Au)

// ---- identifiers ----

/// A 128-bit identifier of an interface or of anything else.
struct GUID {
    UINT32 Data1;
    UINT16 Data2;
    UINT16 Data3;
    UINT8 Data4[8];
};

using IID = GUID;
using UUID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;

inline bool operator==(REFGUID left, REFGUID right) {
    return std::memcmp(&left, &right, sizeof(GUID)) == 0;
}

inline bool IsEqualGUID(REFGUID left, REFGUID right) {
    return left == right;
}

inline bool IsEqualIID(REFIID left, REFIID right) {
    return left == right;
}

namespace platform::detail {

constexpr UINT32 hexDigits(const char* text, int count) {
    UINT32 value = 0;
    for (int i = 0; i < count; ++i) {
        const char c = text[i];
        const int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
        if (digit < 0) {
            throw "an identifier consists of lower-case hexadecimal digits";
        }
        value = value * 16u + static_cast<UINT32>(digit);
    }
    return value;
}

/// The identifier written as "00000000-0000-0000-c000-000000000046".
consteval GUID guid(const char (&text)[37]) {
    GUID result{hexDigits(text, 8),
                static_cast<UINT16>(hexDigits(text + 9, 4)),
                static_cast<UINT16>(hexDigits(text + 14, 4)),
                {}};
    constexpr int positions[8] = {19, 21, 24, 26, 28, 30, 32, 34};
    for (int i = 0; i < 8; ++i) {
        result.Data4[i] = static_cast<UINT8>(hexDigits(text + positions[i], 2));
    }
    return result;
}

} // namespace platform::detail

/// The identifier bound to an interface; smart pointers and raw pointers to an
/// interface mean that interface (a smart pointer names it as `value_type`).
template <typename T>
struct PlatformUuidOf : PlatformUuidOf<std::remove_cv_t<typename T::value_type>> {};

template <typename T>
struct PlatformUuidOf<T*> : PlatformUuidOf<std::remove_cv_t<T>> {};

/// Binds an identifier to an interface that is at least declared; at global scope.
#define PLATFORM_UUID(Interface, text)                                                                                 \
    template <>                                                                                                        \
    struct PlatformUuidOf<Interface> {                                                                                 \
        static constexpr GUID value = platform::detail::guid(text);                                                    \
    }

/// The identifier of an interface, given as a type or as an expression of that
/// type. A constant that lives as long as the program.
#define __uuidof(typeOrExpression) (PlatformUuidOf<std::remove_cvref_t<__typeof__(typeOrExpression)>>::value)

/// The root of every interface: reference counting and the way to other interfaces.
///
/// Objects of this platform are thread-safe in all three operations. A caller's
/// own implementation (renderer, analysis source, sink) may return any counts.
struct IUnknown {
    /// Asks for another interface of the same object.
    /// Success stores the pointer with a reference of its own; failure stores null
    /// and returns E_NOINTERFACE.
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppvObject) = 0;
    /// Adds a reference; returns the new count.
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    /// Gives a reference back; returns the new count. An object that is not shared
    /// by the whole process ends with its last reference.
    virtual ULONG STDMETHODCALLTYPE Release() = 0;

    template <typename Interface>
    HRESULT QueryInterface(Interface** object) {
        return QueryInterface(__uuidof(Interface), reinterpret_cast<void**>(object));
    }

protected:
    ~IUnknown() = default;
};

PLATFORM_UUID(IUnknown, "00000000-0000-0000-c000-000000000046");
