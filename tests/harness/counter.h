// 柜台: what the operator of one of several stations does all day, at random, over goods that all stations share.
#pragma once

#include "core/prompt.h"
#include "stock/document_rules.h"
#include "stock/trading_rules.h"

#include <QString>

#include <functional>
#include <random>

namespace jxc::test {

/// Codes of goods by an index from 0.
QString goodsCode(int index);
/// A goods without stock; its cost in yuan.
void addGoods(int index, double cost);

/// Fifty goods of which a hundred pieces each are there, a second warehouse, and deliveries that come and go in parts.
void openShop(Prompt& prompt);

/// One operator at work. What is done of a document is told at once: 'S' saved, 'A' audited, 'C' cancelled, 'G' gone.
class Counter {
 public:
  struct Operator {
    Prompt& own;   // answers over his own drafts
    Prompt& late;  // over documents that another station may have been faster at
    std::function<void(char what, const QString& number)> tell;
  };
  Counter(unsigned seed, Operator his) : random_(seed), his_(std::move(his)) {}

  /// One command. What it throws comes out.
  void step();

 private:
  int upTo(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)); }
  void make(const TradingRules& rules, int lines);
  void makeWithin();
  /// What a customer pays for a loan, and leaves with the shop, in yuan.
  struct Terms {
    double rent = 0, deposit = 0;
  };
  template <class Draft>
  void keep(const RulesOver<Draft>& rules, const LineRules& lines, Draft draft, const Terms& terms = {});
  void movePart();
  void lend();
  void endLoan();
  void tellBorn(const QString& number);
  QString any(int status);
  void audit();
  void cancel();

  std::mt19937 random_;
  Operator his_;
};

}  // namespace jxc::test
