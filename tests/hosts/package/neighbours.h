#pragma once

// What other libraries put into a file: types and macros of X11, of the JPEG library, of ODBC, and the macros that
// Windows' headers are known for.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <iostream>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include <boost/container/flat_map.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/static_string/static_string.hpp>

#include <X11/Xlib.h>
#include <X11/Xmd.h>
#include <X11/Xutil.h>
#include <jpeglib.h>
#include <sql.h>
#include <sqlext.h>

#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))
#define near
#define far
#define small char
#define interface struct
#define IN
#define OUT
#define OPTIONAL
#define ERROR 0
#define DELETE 0x00010000L
#define STRICT 1
#define DrawText DrawTextW
#define CreateFont CreateFontW
#define GetObject GetObjectW
#define GetMessage GetMessageW
#define CreateWindow CreateWindowW
#define GetGlyphOutline GetGlyphOutlineW
