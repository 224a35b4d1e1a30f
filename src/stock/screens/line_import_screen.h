// 单据导入屏幕: lines of a trading document from an .xlsx or .xls file: judged row by row, imported as far as they
// pass.
#pragma once

#include "stock/line_import.h"
#include "ui/screen.h"

#include <string_view>

namespace jxc {

struct LineImportSpec {
  std::string_view name, title;  // "F_Cgjh_Import", "采购单据导入"
  const DocumentRules& (*rules)();
  LineImport wanted;
  std::string_view templateFile;  // below 模板文件
};

class LineImportScreen : public ui::Screen {
 public:
  explicit LineImportScreen(const LineImportSpec& spec);

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

  const LineImportSpec description_;
  LinePlace place_;
  Lines target_ = Lines::Draft;
  std::vector<ImportLine> lines_;
  CopyResult result_;
};

}  // namespace jxc
