#include "desktop/MouseSteps.h"

namespace autoscene::platform {
namespace {

// What an operation does with its button once the pointer is at the point.
enum class ButtonUse { None, Click, Down, Up };

struct MouseOpRow {
    MouseOp op = MouseOp::Invalid;
    MouseButton button = MouseButton::Left;
    ButtonUse use = ButtonUse::None;
};

constexpr MouseOpRow kMouseOps[] = {
    {MouseOp::LeftClick, MouseButton::Left, ButtonUse::Click},
    {MouseOp::RightClick, MouseButton::Right, ButtonUse::Click},
    {MouseOp::Move, MouseButton::Left, ButtonUse::None},
    {MouseOp::LeftDown, MouseButton::Left, ButtonUse::Down},
    {MouseOp::LeftUp, MouseButton::Left, ButtonUse::Up},
    {MouseOp::RightDown, MouseButton::Right, ButtonUse::Down},
    {MouseOp::RightUp, MouseButton::Right, ButtonUse::Up},
};

// Invalid and values outside the enumeration use no button.
MouseOpRow rowOf(MouseOp op) {
    for (const MouseOpRow& row : kMouseOps) {
        if (row.op == op) {
            return row;
        }
    }
    return MouseOpRow{};
}

std::vector<MouseStep> stepsOf(const MouseOpRow& row, Point point) {
    const auto step = [&](MouseStepKind kind) { return MouseStep{kind, row.button, point}; };
    switch (row.use) {
        case ButtonUse::Click:
            return {step(MouseStepKind::Down), step(MouseStepKind::Hold),
                    step(MouseStepKind::Release)};
        case ButtonUse::Down:
            return {step(MouseStepKind::Down)};
        case ButtonUse::Up:
            return {step(MouseStepKind::Up)};
        case ButtonUse::None:
            break;
    }
    return {};
}

}  // namespace

std::vector<MouseStep> foregroundMouseSteps(MouseOp op, Point point) {
    return stepsOf(rowOf(op), point);
}

std::vector<MouseStep> backgroundMouseSteps(MouseOp op, Point point, PressedPoints& pressed) {
    const MouseOpRow row = rowOf(op);
    std::vector<MouseStep> steps = stepsOf(row, point);
    if (row.use == ButtonUse::Click && row.button == MouseButton::Right) {
        steps.back().kind = MouseStepKind::Down;
    }
    if (row.use == ButtonUse::Up) {
        steps.back().point = pressed.take();
    } else if (row.use == ButtonUse::Down || row.op == MouseOp::Move) {
        pressed.record(point);
    }
    return steps;
}

}  // namespace autoscene::platform
