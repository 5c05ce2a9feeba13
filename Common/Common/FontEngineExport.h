#pragma once

/// FONTENGINE_API marks what the library exports, the foundation's classes included: they are linked into the one
/// library that hosts load, and an exception thrown inside it has to be caught outside. FONTENGINE_MTEXT_API and
/// FONTENGINE_DXF_API mark what the two libraries over it export.
///
/// On ELF both sides of the border need the mark, since an exception's type information is shared between them. Where
/// objects are not ELF only the side that builds the library exports; consumers import without a mark.
///
/// Public headers include this one, whose name no host has, and not <Common/Export.h>.
#if defined(__ELF__)
#define FONTENGINE_EXPORTED __attribute__((visibility("default")))
#else
#define FONTENGINE_EXPORTED __declspec(dllexport)
#endif

#if defined(__ELF__) || defined(FONTENGINE_BUILD)
#define FONTENGINE_API FONTENGINE_EXPORTED
#else
#define FONTENGINE_API
#endif

#if defined(__ELF__) || defined(FONTENGINE_MTEXT_BUILD)
#define FONTENGINE_MTEXT_API FONTENGINE_EXPORTED
#else
#define FONTENGINE_MTEXT_API
#endif

#if defined(__ELF__) || defined(FONTENGINE_DXF_BUILD)
#define FONTENGINE_DXF_API FONTENGINE_EXPORTED
#else
#define FONTENGINE_DXF_API
#endif
