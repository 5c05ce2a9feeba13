#pragma once

// Types that text and geometry share.

#include <unknwn.h>

/// How advances are measured; layout here is always NATURAL (ideal, unhinted).
enum DWRITE_MEASURING_MODE : INT32 {
    DWRITE_MEASURING_MODE_NATURAL = 0,
    DWRITE_MEASURING_MODE_GDI_CLASSIC = 1,
    DWRITE_MEASURING_MODE_GDI_NATURAL = 2
};

/// A point in device-independent units, x to the right and y down.
struct D2D_POINT_2F {
    FLOAT x;
    FLOAT y;
};

/// A rectangle in device-independent units, y down. left > right says "empty".
struct D2D_RECT_F {
    FLOAT left;
    FLOAT top;
    FLOAT right;
    FLOAT bottom;
};

struct D2D_SIZE_F {
    FLOAT width;
    FLOAT height;
};

/// Maps (x, y) to (x * m11 + y * m21 + dx, x * m12 + y * m22 + dy). The second names are those of older headers.
struct D2D_MATRIX_3X2_F {
    union {
        FLOAT m11;
        FLOAT _11;
    };
    union {
        FLOAT m12;
        FLOAT _12;
    };
    union {
        FLOAT m21;
        FLOAT _21;
    };
    union {
        FLOAT m22;
        FLOAT _22;
    };
    union {
        FLOAT dx;
        FLOAT _31;
    };
    union {
        FLOAT dy;
        FLOAT _32;
    };
};

using D2D1_POINT_2F = D2D_POINT_2F;
using D2D1_RECT_F = D2D_RECT_F;
using D2D1_SIZE_F = D2D_SIZE_F;
using D2D1_MATRIX_3X2_F = D2D_MATRIX_3X2_F;
