// 演示账套的库存业务: what moves within the house: transfers, losses, surplus, sets put together and taken apart,
// counts.
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "inventory/conversions.h"
#include "maintenance/demo_trade.h"
#include "stock/document.h"
#include "stock/ledger.h"

#include <algorithm>
#include <stdexcept>

namespace jxc::demo {

bool Trade::transfer() {
  std::vector<Pick> lines;
  std::vector<int> later;
  for (const int index : wantedInBranch_) {
    const Article& goods = article(index);
    const int quantity = std::max(1, std::min(goods.batch / 2, goods.stock[0] / 2));
    if (goods.stock[0] < 2) {
      wantMore(index, 0);  // first the main shop gets some
      continue;
    }
    if (lines.size() < 16)
      lines.push_back({.article = index, .quantity = quantity, .price = goods.sell});
    else
      later.push_back(index);
  }
  wantedInBranch_ = std::move(later);
  if (lines.empty()) return false;
  return saveTransfer(lines);
}

/// A document within the house as its screen writes it: lines under number and operator, then the head. Its number.
QString Trade::saveWithin(const DocumentFamily& family, const std::vector<Pick>& lines, const LineWriter& writeLine,
                          std::initializer_list<Field> head) {
  workAs(staff_.buyer);
  const QString number = usableDraftNumber(family, newDocumentNumber(family, today()), today());
  for (const Pick& pick : lines) {
    const QString& goods = article(pick.article).number;
    const double cost = getGoodsCost(goods, staff_.warehouses[0], today());
    const std::int64_t id = insertRow(family.lines, {{"gl_djh", number},
                                                     {"g_sn", goods},
                                                     {"a_name", session().a_name},
                                                     {"t_ph", u""},
                                                     {"t_scrq", u""},
                                                     {"t_yxq", u""}});
    writeLine(id, pick, cost);
  }
  const auto writeHead = [&](const QString& taken) {
    const std::int64_t id = insertRow(family.head, {{family.number, taken},
                                                    {family.date, today()},
                                                    {family.status, 0},
                                                    {family.checker, u""},
                                                    {family.checkDate, u""},
                                                    {"a_name", session().a_name}});
    updateRow(family.head, id, head);
  };
  const SaveResult saved = saveDocument(family, {.number = number, .date = today(), .writeHead = writeHead}, prompt_);
  if (!saved) throw std::logic_error("demonstration: document within the house not saved");
  ++documents_;
  return saved.number;
}

void Trade::takeAway(const std::vector<Pick>& lines) {
  for (const Pick& pick : lines) {
    article(pick.article).stock[0] -= pick.quantity;
    wantMore(pick.article, 0);
  }
}

bool Trade::saveTransfer(const std::vector<Pick>& lines) {
  const auto writeLine = [](std::int64_t id, const Pick& pick, double cost) {
    updateRow(
        "jxc_dbsp", id,
        {{"db_sl", pick.quantity}, {"db_dj", cost}, {"db_sj", pick.price}, {"db_zje", wholeFen(cost * pick.quantity)}});
  };
  const QString number = saveWithin(families::transfer, lines, writeLine,
                                    {{"ck_out", staff_.warehouses[0]},
                                     {"ck_in", staff_.warehouses[1]},
                                     {"u_sn", staff_.employees[2]},
                                     {"db_note", u"补货"}});
  takeAway(lines);
  for (const Pick& pick : lines)
    arrivals_[number].push_back({pick.article, 1, pick.quantity});
  return true;
}

bool Trade::writeOffDamage() {
  const int index = random_.below(static_cast<int>(catalogue_.articles.size()));
  if (article(index).stock[0] < 2) return false;
  const auto writeLine = [](std::int64_t id, const Pick& pick, double cost) {
    updateRow("jxc_bssp", id,
              {{"bs_sl", pick.quantity}, {"bs_dj", cost}, {"bs_zje", cost * pick.quantity}, {"bs_note", u"加工损坏"}});
  };
  const std::vector<Pick> lines{{.article = index, .quantity = 1}};
  saveWithin(families::loss, lines, writeLine,
             {{"ck_sn", staff_.warehouses[0]}, {"u_sn", staff_.employees[5]}, {"bs_note", u"割边损坏"}});
  takeAway(lines);
  return true;
}

bool Trade::bookSurplus() {
  const int index = catalogue_.byKind[static_cast<std::size_t>(Kind::Sundry)].draw(random_);
  const auto writeLine = [](std::int64_t id, const Pick& pick, double cost) {
    updateRow(
        "jxc_bysp", id,
        {{"by_sl", pick.quantity}, {"by_dj", cost}, {"by_zje", cost * pick.quantity}, {"by_note", u"供货商多发"}});
  };
  const QString number =
      saveWithin(families::overflow, {{.article = index, .quantity = random_.between(1, 3)}}, writeLine,
                 {{"ck_sn", staff_.warehouses[0]}, {"u_sn", staff_.employees[5]}, {"by_note", u"整理货架时发现"}});
  const double pieces = lookupNumber("select by_sl from jxc_bysp where gl_djh=?", number);
  arrivals_[number].push_back({index, 0, static_cast<int>(pieces)});
  return true;
}

ConversionDraft Trade::beginConversion(const ConversionRules& rules, int sets, Word note) {
  workAs(staff_.buyer);
  ConversionDraft draft = rules.fresh({});
  draft.warehouse = staff_.warehouses[0];
  draft.salesperson = staff_.employees[2];
  draft.note = words(note);
  draft.goods = article(catalogue_.set).number;
  draft.quantity = sets;
  draft.number = rules.keepWhole(draft);
  return draft;
}

void Trade::addParts(const ConversionRules& rules, const ConversionDraft& draft, int each) {
  const LinePlace place{.number = draft.number, .date = draft.date, .warehouse = draft.warehouse};
  for (const int part : catalogue_.setParts) {
    LineDraft line = rules.lines().newLine(article(part).number, place, false);
    line.amounts.setQuantity(each);
    if (rules.takesApart()) line.amounts.setPrice(article(part).buy);
    if (!rules.lines().mayWrite(line, place, prompt_) || !rules.lines().addLine(Lines::Draft, place, line, prompt_))
      throw std::logic_error("demonstration: part not added");
  }
}

QString Trade::saveConversion(const ConversionRules& rules, const ConversionDraft& draft) {
  const SaveResult saved = rules.hasParts(draft, prompt_) ? rules.save(draft, prompt_) : SaveResult{};
  if (!saved) throw std::logic_error("demonstration: conversion not saved");
  ++documents_;
  return saved.number;
}

bool Trade::bundleSets() {
  const int sets = random_.between(3, 8);
  for (const int part : catalogue_.setParts)
    if (article(part).stock[0] < 2 * sets) return false;
  const ConversionDraft draft = beginConversion(conversions::bundle(), sets, u"护理套装促销");
  addParts(conversions::bundle(), draft, sets);
  const QString number = saveConversion(conversions::bundle(), draft);
  for (const int part : catalogue_.setParts)
    takeAway({{.article = part, .quantity = sets}});
  arrivals_[number].push_back({catalogue_.set, 0, sets});
  return true;
}

bool Trade::splitSets() {
  const int sets = random_.between(1, 2);
  Article& set = article(catalogue_.set);
  if (set.stock[0] < sets + 1) return false;
  const ConversionDraft draft = beginConversion(conversions::split(), sets, u"套装拆零销售");
  addParts(conversions::split(), draft, sets);
  const QString number = saveConversion(conversions::split(), draft);
  set.stock[0] -= sets;
  for (const int part : catalogue_.setParts)
    arrivals_[number].push_back({part, 0, sets});
  return true;
}

bool Trade::countSundries() {
  std::vector<Pick> lines;
  std::vector<int> differences;
  for (std::size_t i = 0; i < catalogue_.articles.size(); ++i) {
    const Article& each = catalogue_.articles[i];
    if (each.kind != Kind::Sundry || each.stock[0] <= 0) continue;
    constexpr int found[] = {0, 0, 0, 0, 0, -1, -2, 1};
    // One thing is missing whatever the luck: a count that finds nothing has nothing to show.
    const int difference = lines.empty() ? -1 : std::max(random_.oneOf(found), -each.stock[0]);
    lines.push_back({.article = static_cast<int>(i), .quantity = each.stock[0] + difference});
    differences.push_back(difference);
  }
  if (lines.empty()) return false;
  const auto writeLine = [this](std::int64_t id, const Pick& pick, double cost) {
    const double book = article(pick.article).stock[0];  // nothing waits: what may be promised is what lies there
    updateRow("jxc_kcpdsp", id,
              {{"pd_sl", pick.quantity},
               {"kc_sl", book},
               {"kc_zsl", book},
               {"pd_dj", cost},
               {"pd_zje", wholeFen((pick.quantity - book) * cost)}});
  };
  const QString number =
      saveWithin(families::stocktake, lines, writeLine,
                 {{"ck_sn", staff_.warehouses[0]}, {"u_sn", staff_.employees[2]}, {"pd_note", u"护理与配件月度盘点"}});
  refreshWaitingTotals(families::stocktake, number);
  workAs(staff_.manager);
  if (checkDj(families::stocktake, number, prompt_) != AuditOutcome::Audited)
    throw std::logic_error("demonstration: count not audited");
  for (std::size_t i = 0; i < lines.size(); ++i)
    article(lines[i].article).stock[0] += differences[i];
  return true;
}

}  // namespace jxc::demo
