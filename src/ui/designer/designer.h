// 设计器: canvas, lists, properties and live preview as one widget with its tools; the window around it saves and
// leaves.
#pragma once

#include "ui/designer/design_document.h"
#include "ui/designer/live_preview.h"

#include <QWidget>

class QToolBar;
class QComboBox;

namespace jxc::ui {

class DataTree;
class DesignCanvas;
class PropertyPanel;

class Designer : public QWidget {
 public:
  explicit Designer(QWidget* parent = nullptr);
  ~Designer() override;

  DesignDocument& document() { return document_; }
  DesignCanvas& canvas() { return *canvas_; }
  PropertyPanel& properties() { return *properties_; }
  DataTree& data() { return *data_; }
  LivePreview& preview() { return *preview_; }
  /// Most of the display: paper, lists and properties stand side by side.
  QSize sizeHint() const override;

 private:
  void makeTools(QToolBar& tools);
  void addColumnMenu(QToolBar& tools);
  void addInsert(QToolBar& tools, const QString& text, const QString& key, const report::Item& pattern);
  void copy();

  DesignDocument document_;
  DesignCanvas* canvas_;
  PropertyPanel* properties_;
  DataTree* data_;
  LivePreview* preview_;
  QComboBox* zoom_ = nullptr;
};

}  // namespace jxc::ui
