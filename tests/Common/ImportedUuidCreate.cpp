// The library imports UuidCreate on Windows: it calls through the pointer that the
// loader fills in for imported functions. A program with a UuidCreate of its own gives
// it that one.

#include <rpc.h>

extern "C" decltype(&UuidCreate) __imp_UuidCreate;
decltype(&UuidCreate) __imp_UuidCreate = &UuidCreate;
