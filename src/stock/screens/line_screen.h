// 商品明细屏幕: one line of a document: quantity, price, tax, discount and total keep in step.
#pragma once

#include "stock/document_rules.h"
#include "ui/screen.h"

#include <optional>

class QGridLayout;
class QLabel;

namespace jxc {

/// What the line dialog of one document is. Its fields are "tsl", and where the document has them the price and the
/// cost by their own names, "tdzl", "ttax", "ttaxdj", "tzje", "comCk" (warehouse of the line; goods that are being
/// picked stand in that of the list), of goods on loan "tzj", "tyj" and "comYhzh", "tnote", of a count what the books
/// have ("tkcsl" on the shelf, "tkczsl" with what is not put away); its grids, with their tabs, "gridHistory" and
/// "gridQuotes".
struct LineScreenSpec {
  ui::ScreenSpec screen;
  const DocumentRules& (*rules)();
  std::string_view price = {};                 // name of the price input: "tgpjjj"
  std::string_view historyTitle, quotesTitle;  // the two tabs
  std::string_view historyPrice, quotesPrice;  // columns whose price a row offers on Enter
  std::string_view cost;                       // name of the cost input: shown by right, changed by parameter and right
  void (*askPrice)(const QString& goods, double& price) = nullptr;  // "btnSpsj" offers another price of the goods
};

class LineScreen : public ui::Screen {
 public:
  explicit LineScreen(const LineScreenSpec& spec);

  struct Request {
    Lines where = Lines::Draft;
    std::int64_t id = 0;  // 0: a new line of `goods`
    QString goods;
    std::optional<double> quantity = 1;  // that a new line proposes; none: what the rules propose
    LinePlace place;
  };
  /// Opens on a new line or an existing row. Nothing was written: id 0.
  LineResult edit(const Request& request);

  ui::Field& tsl = field("tsl");
  QPushButton& btnOK = command("btnOK");

 protected:
  void activate() override;

 private:
  /// An input that the document may have; null without.
  ui::Field* optional(std::string_view name) { return hasField(name) ? &field(name) : nullptr; }
  void build();
  void placeInputs();
  void bind(std::string_view input, void (LineAmounts::*set)(double));
  void offerPrice(ui::Grid& grid, std::string_view column);
  void showWarehouse();
  void takeWarehouse(const QString& warehouse);
  /// Shows the amounts, but for the input that the operator is typing in.
  void showAmounts(const ui::Field* typing = nullptr);
  void saveValue();
  void showByParameters();
  bool hidesStock() const;
  const LineRules& lines() const { return rules_.of(request_.place.number).lines(); }

  const LineScreenSpec description_;
  const DocumentRules& rules_;
  QLabel* goods_;
  QGridLayout* raster_ = nullptr;  // of the inputs, where parameters leave some out
  ui::Panel tabs_;
  Request request_;
  LineDraft draft_;
  LineResult result_;
};

}  // namespace jxc
