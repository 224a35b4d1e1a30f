// 单据商品行规则: lines of any document, kept in its table of lines. What differs between documents is one value; what
// a value cannot say is overridden.
#pragma once

#include "stock/document_rules.h"

#include <string_view>

namespace jxc {

/// Goods that stand on the document already: added again after a question, or never.
enum class Repeats : char { Asked, Never };
/// Where the goods behind a barcode are looked for: among all, among those that the warehouse has a balance of, or
/// among those that lie there (all of its balances where stock may fall below zero, `cs_kc`).
enum class BarcodesOf : char { Catalogue, KnownGoods, Stock };

/// What the lines of a document are to their rules. Where they stand is told by the family's `line`: a column that the
/// table does not have is left out.
struct LineDescription {
  const DocumentFamily* family;

  /// Yuan a unit of a new line; null where the rules override `newLine`.
  double (*price)(const QString& goods, const LinePlace& place) = nullptr;
  bool priceIsTyped = true;             // false: it comes from the warehouse, no dialog and no cell changes it
  std::string_view retailOf = "g_lsj";  // price of the goods that `line.retail` keeps
  bool (*retailCounts)() = nullptr;     // true: the total goes by it instead of the price
  LineRoundings rounding = {};

  QuantityRange quantities = {};
  std::u16string_view quantityRefusal = {};  // of the line dialog, for another quantity; empty: none is written
  // A quantity beyond the stock of the warehouse: refused, or asked about where negative stock is allowed (`cs_kc`).
  // Without a refusal it is always asked about; without both nothing is tested: goods come in.
  std::u16string_view shortRefusal = {}, shortQuestion = {};
  bool everyChangeIsTested = false;  // also cells and further scans of a line, which otherwise wait for save
  Repeats repeats = Repeats::Asked;
  BarcodesOf barcodes = BarcodesOf::Catalogue;
  bool knownGoodsOnly = false;  // picked goods without a balance in the warehouse are left off, and named
  bool takesNewGoods = true;    // articles that the lens sheet makes for the document
  const LineTable* staging = &stagingLineTable;  // where staged rows keep what this document's lines have
};

/// Lines over their description: dialog, cells, barcode, staging and spreadsheet, of drafts and of waiting documents.
class TableLines : public LineRules {
 public:
  explicit TableLines(const LineDescription& lines) : description_(lines) {}

  LineDraft newLine(const QString& goods, const LinePlace& place, bool staged) const override;
  std::optional<LineDraft> loadLine(Lines where, std::int64_t id) const override;
  bool mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const override;
  LineResult addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt& prompt) const override;
  std::optional<AddedLines> addLines(Lines where, const LinePlace& place, std::span<const LineDraft> drafts,
                                     const LineProgress& progress = {}) const override;
  bool changeLine(Lines where, std::int64_t id, const LinePlace& place, const LineDraft& draft,
                  Prompt& prompt) const override;
  bool cellAllows(const QString& value, QStringView field, Lines where, std::int64_t id, const LinePlace& place,
                  Prompt& prompt) const override;
  double setChange(const QString& value, QStringView field, Lines where, std::int64_t id,
                   Prompt& prompt) const override;
  ScanResult enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                          Prompt& prompt) const override;
  ScanResult enterGoods(const LinePlace& place, const QString& goods, bool oncePerGoods, Prompt& prompt) const override;
  bool mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                Prompt& prompt) const override;
  std::int64_t stageGoods(const QString& goods, double quantity, const LinePlace& place, Lines target,
                          PickingMemory& memory, Prompt& prompt) const override;
  CopyResult copyStaged(const LinePlace& place, Lines target) const override;
  void moveDraftTo(const LinePlace& place) const override;

  QuantityRange quantities() const override { return description_.quantities; }
  bool priceMayChange() const override { return description_.priceIsTyped; }
  bool takesNewGoods() const override { return description_.takesNewGoods; }
  bool goodsStandOnce() const override { return description_.repeats == Repeats::Never; }
  bool stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                   PickingMemory* memory = nullptr) const override;

 protected:
  /// What a barcode means here: goods, or what stands against them.
  struct Coded {
    QString goods;
    Refusal refusal = {};
  };
  virtual Coded goodsOfBarcode(const QString& barcode, const LinePlace& place) const;

  const LineTable& tableOf(Lines where) const {
    return where == Lines::Staging ? *description_.staging : family().line;
  }
  const DocumentFamily& family() const { return *description_.family; }
  bool goesByRetail() const { return description_.retailCounts && description_.retailCounts(); }
  const LineDescription description_;

 private:
  /// What the head of a waiting document says of its lines; a draft has none.
  struct Head {
    Refusal closed = {};  // why it takes no change any more: audited or deleted meanwhile, or its day is locked
    bool movesAtOnce = false;
  };
  Head headOf(Lines where, const QString& number) const;
  /// The row of a line as it stands; none: it is gone, or its draft was saved at another station.
  RowSet stored(Lines where, std::int64_t id) const;
  QString numberOf(Lines where, const Row& row) const;
  /// Writes a line anew, with the head that it follows, unless it or its document was taken away meanwhile: told then.
  using Change = std::function<LineFigures(const Row& row, const Head& head)>;
  bool write(Lines where, std::int64_t id, QString number, Prompt& prompt, const Change& change) const;
  LineFigures figuresIn(const Row& row, const LineTable& table) const;
  double moved(Lines where, const Head& head, double quantity) const;
  /// What is written of a line that was typed. Nothing for a quantity of zero.
  std::optional<LineFigures> figuresOf(const LineDraft& draft) const;
  std::int64_t insert(Lines where, const QString& number, const QString& owner, const LineDraft& draft,
                      const LineFigures& line) const;
  void takeCounted(LineDraft& draft, const QString& warehouse) const;
  void settleCounted(const QString& number, const QString& owner) const;
  QString noteOf(const LineDraft& draft) const;
};

/// Copies all lines of a document into this operator's draft, in their order: a return of the whole of it.
void copyWholeDocument(const DocumentFamily& from, const QString& source, const DocumentFamily& to,
                       const QString& number);

}  // namespace jxc
