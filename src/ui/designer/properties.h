// 属性: what can be set of what is chosen, as rows: caption, kind of editor, how to read it and how to write it.
#pragma once

#include "ui/designer/design_document.h"

#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

namespace jxc::ui {

enum class Editor : std::uint8_t {
  Text,
  Expression,
  Number,
  Integer,
  Flag,
  Choice,
  OpenChoice,
  Colour,
  Sides,
  Heading
};

/// One row of the property panel. Values are QVariant: QString, double, int (also a choice's place and the sides of a
/// frame), bool, QColor (invalid: none).
struct Property {
  QString caption;
  Editor editor = Editor::Text;
  QStringList choices = {};
  double least = 0, most = 1000;
  std::function<QVariant(const report::Template&)> get = {};
  std::function<void(report::Template&, const QVariant&)> set = {};
};

/// Of the chosen objects what they have in common, of a band with its group, or of the page. Setting a property of
/// several objects sets it on each; reading takes the leading one.
std::vector<Property> propertiesOf(const DesignDocument& document);
/// "文本 t3", "3 个对象", "明细行", "页面".
QString titleOf(const DesignDocument& document);

}  // namespace jxc::ui
