#pragma once

#include <string>

#include "Editor.h"

/// Writes the editor as it looks on a screen, text, selection and caret, to a PNG file. Throws std::runtime_error when
/// that fails.
void writePng(const Editor& editor, const std::string& file);
