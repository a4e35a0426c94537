#pragma once
// The mouse operations an action stores in its `button` field and a back end performs.

namespace autoscene::platform {

enum class MouseOp : int {
    Invalid = 0,
    LeftClick = 1,
    RightClick = 2,
    Move = 3,
    LeftDown = 4,
    LeftUp = 5,
    RightDown = 6,
    RightUp = 7,
};

// The operation of a stored `button` value; Invalid outside 1..7.
constexpr MouseOp mouseOpOf(int button) {
    return button >= int(MouseOp::LeftClick) && button <= int(MouseOp::RightUp) ? MouseOp(button)
                                                                                : MouseOp::Invalid;
}

}  // namespace autoscene::platform
