#pragma once

#include <unknwn.h>

/// Adds the fonts in a folder and the folders in it to the installed ones, for this process only.
///
/// `folder` is a path in the encoding of the file system, borrowed for the call. Its fonts are in the system font
/// collection from then on, and stand in for others as installed fonts do. Files in it that are no fonts are ignored,
/// and so are pipes, sockets and devices.
///
/// To be called before the first question about fonts: E_FAIL after it, when the collection has been read, because
/// families and fonts that were handed out do not change. E_INVALIDARG for a null pointer and for what is no folder.
/// Any thread may call. Where the platform's own text stack is used there is no such call; fonts are installed there.
PLATFORM_EXPORT HRESULT WINAPI AddFontFolder(const char* folder);
