// 属性栏: shows and sets the properties of what is chosen.
#pragma once

#include "ui/designer/properties.h"

#include <QScrollArea>

class QFormLayout;
class QLabel;

namespace jxc::ui {

class PropertyPanel : public QWidget {
 public:
  explicit PropertyPanel(DesignDocument& document, QWidget* parent = nullptr);

  /// Puts the cursor into the editor with this caption; false when what is chosen has none.
  bool focusOn(const QString& caption);
  /// The editor with this caption, null without: tests.
  QWidget* editor(const QString& caption) const;

 private:
  struct Row {
    Property property;
    QWidget* editor = nullptr;
    std::function<void(const QVariant&)> show;
  };
  void refresh();
  void rebuild();
  Row makeRow(Property property);
  void set(const Property& property, const QVariant& value);

  DesignDocument& document_;
  QLabel* title_;
  QScrollArea* area_;
  std::vector<Row> rows_;
  QString shape_;  // which rows are there
  bool showing_ = false;
};

}  // namespace jxc::ui
