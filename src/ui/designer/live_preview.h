// 即时预览: the template printed with sample data, a moment after each edit; faults of its expressions below.
#pragma once

#include "platform/report/pages.h"
#include "ui/designer/design_document.h"

#include <QScrollArea>
#include <QTimer>

#include <functional>

class QLabel;
class QPlainTextEdit;
class QToolButton;

namespace jxc::ui {

class LivePreview : public QWidget {
 public:
  /// Prints the template: with samples of its own, or with a document of the shop.
  using Maker = std::function<report::Pages(const report::Template&)>;

  explicit LivePreview(DesignDocument& document, QWidget* parent = nullptr);
  void setMaker(Maker maker);
  /// As shown now; prints at once what an edit has left waiting.
  const report::Pages& pages();

 private:
  class Paper;
  void later();
  void refresh();
  void turn(int step);

  DesignDocument& document_;
  Maker maker_;
  report::Pages pages_;
  report::Template shown_;  // what the pages were printed from
  bool stale_ = true;
  int page_ = 0;
  QTimer timer_;
  Paper* paper_;
  QLabel *place_, *faults_;
  QToolButton *back_, *on_;
};

}  // namespace jxc::ui
