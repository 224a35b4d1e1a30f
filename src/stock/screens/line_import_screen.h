// 单据导入屏幕: lines of a trading document from an .xlsx or .xls file: judged row by row, imported as far as they
// pass.
#pragma once

#include "stock/line_import.h"
#include "ui/screen.h"

#include <string_view>

namespace jxc {

class LineImportScreen : public ui::Screen {
 public:
  LineImportScreen(std::string_view name, const DocumentRules& rules);

  /// Imports into a draft or a waiting document. What was done: no lines when it was left.
  CopyResult importInto(const LinePlace& place, Lines target);
  /// Reads and judges this file, as after it was chosen.
  void openFile(const QString& path);
  /// Asks where, and writes the empty template there.
  void btnMbClick();
  /// Writes the empty template there.
  void saveTemplate(const QString& path);

  QSize sizeHint() const override { return {1080, 620}; }

 protected:
  void activate() override;

 private:
  void btnOpenClick();
  void btnOKClick();
  void showLines();

  const LineImport& wanted() const { return rules_.family().import; }

  const DocumentRules& rules_;
  LinePlace place_;
  Lines target_ = Lines::Draft;
  std::vector<ImportLine> lines_;
  CopyResult result_;
};

/// Makes the dialog known under its name: "F_Cgjh_Import". A document registers its own.
struct RegisteredImport {
  RegisteredImport(std::string_view name, const DocumentRules& (*rules)()) {
    ui::registerScreen(name, [=] { return static_cast<ui::Screen*>(new LineImportScreen(name, rules())); });
  }
};

}  // namespace jxc
