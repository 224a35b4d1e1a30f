// 单据导入屏幕: lines from an .xlsx or .xls file: judged row by row, imported as far as they pass.
#pragma once

#include "stock/line_import.h"
#include "ui/screen.h"

#include <functional>
#include <string_view>

namespace jxc {

class LineImportScreen : public ui::Screen {
 public:
  /// Rules of the lines of the document with this number, or of what else takes many.
  using LinesOf = std::function<const ManyLines&(const QString& number)>;
  LineImportScreen(std::string_view name, const LineImport& wanted, LinesOf lines);

  /// Imports into a draft, a waiting document, or what else the place names. What was done: no lines when it was left.
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

  const LineImport wanted_;
  const LinesOf linesOf_;
  LinePlace place_;
  Lines target_ = Lines::Draft;
  std::vector<ImportLine> lines_;
  CopyResult result_;
};

/// Makes the dialog known under its name: "F_Cgjh_Import". A document registers its own.
struct RegisteredImport {
  RegisteredImport(std::string_view name, const DocumentRules& (*rules)()) {
    ui::registerScreen(name, [=] {
      const auto lines = [rules](const QString& number) -> const ManyLines& { return rules().of(number).lines(); };
      return static_cast<ui::Screen*>(new LineImportScreen(name, rules().family().import, lines));
    });
  }
  /// Of what is no document.
  RegisteredImport(std::string_view name, const LineImport& wanted, const ManyLines& (*lines)()) {
    ui::registerScreen(name, [=] {
      const auto all = [lines](const QString&) -> const ManyLines& { return lines(); };
      return static_cast<ui::Screen*>(new LineImportScreen(name, wanted, all));
    });
  }
};

}  // namespace jxc
