// An area that scrolls where its content is larger, without a frame and without being a stop of Tab.
#pragma once

#include <QScrollArea>

namespace jxc::ui {

inline QScrollArea* scrolling(QWidget* content, QWidget* parent = nullptr) {
  auto* scroll = new QScrollArea(parent);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(content);
  return scroll;
}

}  // namespace jxc::ui
