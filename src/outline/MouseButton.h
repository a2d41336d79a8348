#pragma once

namespace qvnd::outline {

// As the mouse events of the trees count the buttons.
enum class MouseButton { left = 1, right = 2 };

} // namespace qvnd::outline
