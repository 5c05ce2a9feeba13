#pragma once

/// FONTENGINE_API marks what the library exports, the foundation's classes included: they are linked into the one
/// library that hosts load, and an exception thrown inside it has to be caught outside.
///
/// On ELF both sides of the border need the mark, since an exception's type information is shared between them. Where
/// objects are not ELF only the side that builds the library exports; consumers import without a mark.
#if defined(__ELF__)
#define FONTENGINE_API __attribute__((visibility("default")))
#elif defined(FONTENGINE_BUILD)
#define FONTENGINE_API __declspec(dllexport)
#else
#define FONTENGINE_API
#endif
