#pragma once

/// The version of these headers. Programs and libraries of one minor number fit each other, as long as the major
/// number is 0.
#define FONTENGINE_VERSION_MAJOR 0
#define FONTENGINE_VERSION_MINOR 1
#define FONTENGINE_VERSION_PATCH 0
/// The same as a text; the build reads it from here.
#define FONTENGINE_VERSION "0.1.0"
