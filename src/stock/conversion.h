// 拆分捆绑规则: the rules of split and bundle: one goods becomes several, or several become one.
#pragma once

#include "stock/document_rules.h"

#include <QString>

#include <string_view>

namespace jxc {

/// The one goods is the whole of the document: its head is the line of it. The others are the parts.
struct ConversionDraft : DocumentDraft {
  QString goods;        // number of the whole
  double quantity = 0;  // of it, in pieces
};

/// What whole and parts are worth, as the screen shows it while it is made. Pieces and yuan.
struct ConversionFigures {
  double stock = 0;  // of the whole, in the warehouse of the document
  double cost = 0;   // of one whole: of a split what the warehouse has it at, of a bundle what goes into one
  double value = 0;  // of all of it
  double parts = 0;  // of all parts
  /// What the parts are worth more than the whole; less than half a fen is nothing.
  double difference() const;
};

/// What one piece costs that is made of parts worth `parts` yuan; six decimals. Of no piece at all it is the sum.
double unitCostOf(double parts, double quantity);

/// One of the two directions. Until the document is saved its whole stands among the lines of the draft with its
/// quantity below zero: so it takes every new number along, is thrown away with the draft and comes back with it when
/// the program was cut off. Lists, papers and tests of the parts leave it out.
class ConversionRules : public RulesOver<ConversionDraft> {
 public:
  /// In the words of the operator, who hears them in the order of the steps.
  struct Direction {
    const DocumentFamily* family;
    std::u16string_view noGoods, noQuantity;   // of the whole
    std::u16string_view intoItself;            // it stands among its parts
    std::u16string_view beyondStock, noParts;  // what leaves is not there; nothing was chosen
  };
  ConversionRules(const Direction& direction, const LineRules& lines) : direction_(direction), lines_(lines) {}

  const DocumentFamily& family() const override { return *direction_.family; }
  const LineRules& lines() const override { return lines_; }
  /// A split: the whole leaves and its parts come in. Of a bundle it is the other way.
  bool takesApart() const { return family().comesIn; }

  ConversionDraft fresh(const QString& lastDate) const override;
  /// Tests stock once more as `cs_kc` has it: what the steps have refused may have changed since.
  SaveResult save(const ConversionDraft& draft, Prompt& prompt) const override;

  /// Puts the whole among the lines of the draft, in place of the one before; one without goods only goes. The
  /// document's number now: another one when it had been taken.
  QString keepWhole(const ConversionDraft& draft) const;
  /// Reads it from there. False: none stands there.
  bool recallWhole(ConversionDraft& draft) const;

  /// Whether the first step is done: a whole, how many of it, and of a split that it lies in the warehouse. No
  /// parameter lets a split go below that.
  bool hasWhole(const ConversionDraft& draft, Prompt& prompt) const;
  /// The same of the second step: parts, none of them the whole, those of a bundle lying in their warehouses.
  bool hasParts(const ConversionDraft& draft, Prompt& prompt) const;

  ConversionFigures figures(const ConversionDraft& draft) const;
  /// What goes out and comes in of each goods in each warehouse, with its stock before and after: g_sn, g_name,
  /// ck_name, tmp_cksl, tmp_ckje, tmp_rksl, tmp_rkje, tmp_currkc, tmp_kc. The whole comes first.
  RowSet preview(const ConversionDraft& draft) const;

 protected:
  /// Both directions stand in one list.
  const DocumentFamily& shownAs() const override { return families::split; }

 private:
  std::int64_t partCount(const QString& number) const;
  bool isAmongItsParts(const ConversionDraft& draft) const;
  /// The warehouse of a line, where that has been deleted meanwhile.
  QString deletedWarehouse(const QString& number) const;

  const Direction direction_;
  const LineRules& lines_;
};

/// Number of the goods that this document takes apart or makes, saved or in the making; empty: not known yet.
QString wholeOf(const DocumentFamily& family, const QString& number);

}  // namespace jxc
