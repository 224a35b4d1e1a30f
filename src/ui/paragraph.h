// 段落: a text of a screen that is written while it is open, as long as it comes, and can be copied.
#pragma once

#include <QLabel>

namespace jxc::ui {

/// A label below `parent`, found under `name`: it takes more lines rather than widen the window.
inline QLabel* paragraph(QWidget* parent, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(QLatin1StringView(name));
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

}  // namespace jxc::ui
