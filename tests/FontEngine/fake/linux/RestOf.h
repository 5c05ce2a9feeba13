#pragma once

namespace fake {

// An interface with everything implemented that the fake has no answer for. Here an
// interface has nothing that the fake does not answer.
template <typename Interface>
class RestOf : public Interface {};

} // namespace fake
