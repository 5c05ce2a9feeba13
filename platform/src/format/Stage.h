#pragma once

namespace platform {

/// The stages in which a text is laid out, in their order. A change is named by the first that it undoes: those behind
/// it are undone with it. What only decorates the text undoes nothing.
enum class Stage { Shaping, Breaking, Placing, Done };

} // namespace platform
