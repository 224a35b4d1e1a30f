// 结构与数据: what a template is made of, and what it can print: lists beside the canvas.
#pragma once

#include "ui/designer/design_document.h"

#include <QTreeWidget>

#include <functional>

namespace jxc::ui {

/// Page, bands and objects; chooses, and shows what is chosen.
class StructureTree : public QTreeWidget {
 public:
  explicit StructureTree(DesignDocument& document, QWidget* parent = nullptr);

 private:
  void refresh();
  void chosenHere();
  DesignDocument& document_;
  QStringList shown_;
  bool quiet_ = false;
};

/// Variables, fields, sums and page numbers with a sample; Enter, double click and dragging put one on the paper.
class DataTree : public QTreeWidget {
 public:
  explicit DataTree(DesignDocument& document, QWidget* parent = nullptr);
  void onPicked(std::function<void(const QString& content)> hook) { picked_ = std::move(hook); }

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void refresh();
  DesignDocument& document_;
  std::vector<report::Variable> variables_;
  std::vector<report::DetailField> fields_;
  std::function<void(const QString&)> picked_;
};

}  // namespace jxc::ui
