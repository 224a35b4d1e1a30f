// 画布尺寸: what the mouse and the painting of the canvas must agree on.
#pragma once

#include <QRectF>

#include <array>
#include <utility>

namespace jxc::ui::canvas {

constexpr int kRuler = 20;  // pixels
constexpr int kGap = 12;    // around the paper
constexpr double kHandle = 7;

/// The eight handles, as parts of the width and height: corners and middles, clockwise from the upper left.
constexpr std::array<std::pair<double, double>, 8> kHandles{
    {{0, 0}, {.5, 0}, {1, 0}, {1, .5}, {1, 1}, {.5, 1}, {0, 1}, {0, .5}}};

inline QRectF handleRect(const QRectF& item, int handle) {
  const auto [fx, fy] = kHandles[handle];
  const QPointF middle(item.x() + fx * item.width(), item.y() + fy * item.height());
  return {middle.x() - kHandle / 2, middle.y() - kHandle / 2, kHandle, kHandle};
}

}  // namespace jxc::ui::canvas
