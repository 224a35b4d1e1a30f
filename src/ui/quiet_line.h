// 安静的一行: what was done, told at the foot of a window without a box, and spoken by a screen reader.
#pragma once

#include <QStatusBar>

namespace jxc::ui {

/// A status bar whose messages are heard: readers pass the changes of a plain one by.
class QuietLine : public QStatusBar {
  Q_OBJECT

 public:
  explicit QuietLine(QWidget* parent);
};

}  // namespace jxc::ui
