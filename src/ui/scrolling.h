// An area that scrolls where its content is larger, without a frame and without being a stop of Tab.
#pragma once

#include <QScrollArea>

namespace jxc::ui {

template <class Area = QScrollArea>
Area* scrolling(QWidget* content, QWidget* parent = nullptr) {
  auto* scroll = new Area(parent);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(content);
  return scroll;
}

}  // namespace jxc::ui
