// 购销单据商品行: lines, grid edits, barcode and staging of stock/trading_rules.h.
#include "core/numbers.h"
#include "core/rounding.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "stock/ledger.h"
#include "stock/trading_rules.h"

namespace jxc {
namespace trading_lines_detail {

constexpr double kTolerance = 0.000001;  // quantities have six decimals

constexpr std::string_view kReceiptZeros[] = {"jh_qxsl", "id2", "id3"};
constexpr std::string_view kReturnZeros[] = {"id2"};
constexpr std::string_view kSaleZeros[] = {"ls_qxsl", "ls_dhbz", "ls_dhdj", "id2", "id3"};

/// Goods reach the shelf, or leave it, by a document of their own: nothing has moved yet.
double moved(const LineColumns& columns, double quantity) {
  return columns.movedLater && columns.movedLater() ? 0 : quantity;
}

/// The two lists of an `insert … select`.
struct CopiedColumns {
  std::string into, from;
  void add(std::string_view column, std::string_view source) {
    if (column.empty() || source.empty()) return;
    into.append(into.empty() ? "" : ",").append(column);
    from.append(from.empty() ? "" : ",").append(source);
  }
  void addFigures(const LineTable& to, const LineTable& source) {
    const LineColumns& a = *to.columns;
    const LineColumns& b = *source.columns;
    add("g_sn", "g_sn");
    add(a.price, b.price);
    add(a.quantity, b.quantity);
    add(a.net, b.net);
    add(a.tax, b.tax);
    add(a.taxedPrice, b.taxedPrice);
    add(a.taxAmount, b.taxAmount);
    add(a.total, b.total);
    add(a.discount, b.discount);
    add(a.cost, b.cost);
    add(a.costAmount, b.costAmount);
    add(to.retail, source.retail);
    add(to.shownCost, source.shownCost);
    add(to.entryTotal, b.total);
    for (const std::string_view zero : to.zeros)
      add(zero, "0");
    add("t_ph", "t_ph");
    add("t_scrq", "t_scrq");
    add("t_yxq", "t_yxq");
  }
};

}  // namespace trading_lines_detail

const LineTable receiptLineTable = {
    .columns = &receiptLineColumns, .note = "jh_bz", .zeros = trading_lines_detail::kReceiptZeros};
const LineTable purchaseReturnLineTable = {
    .columns = &purchaseReturnLineColumns, .note = "th_bz", .zeros = trading_lines_detail::kReturnZeros};
const LineTable saleLineTable = {.columns = &saleLineColumns,
                                 .note = "ls_bz",
                                 .retail = "ls_lsj",
                                 .shownCost = "ls_cbj2",
                                 .entryTotal = "ls_zhje",
                                 .gift = "t_zp",
                                 .zeros = trading_lines_detail::kSaleZeros};
const LineTable saleReturnLineTable = {.columns = &saleReturnLineColumns,
                                       .note = "th_bz",
                                       .retail = "th_lsj",
                                       .entryTotal = "th_zhje",
                                       .zeros = trading_lines_detail::kReturnZeros};
const LineTable stagingLineTable = {
    .columns = &stagingLineColumns, .note = "ts_note", .retail = "ts_lsj", .shownCost = "ts_cbj2", .gift = "t_zp"};

// ---- one line ----------------------------------------------------------------------------------------------------

LineDraft TradingLines::newLine(const QString& goods, const LinePlace& place, bool staged) const {
  LineDraft draft;
  draft.goods = goods;
  draft.amounts.setTax(proposedTax(staged));
  draft.amounts.setPrice(proposedPrice(goods, place));
  if (!document_.lines->columns->cost.empty()) {
    draft.cost = roundMoney(getGoodsCost(goods, place.warehouse, place.date));
    draft.retail = lookupNumber("select g_lsj from jxc_goods where g_sn=?", goods);
  }
  return draft;
}

std::optional<LineDraft> TradingLines::loadLine(Lines where, std::int64_t id) const {
  const LineTable& table = tableOf(where);
  const LineColumns& c = *table.columns;
  const RowSet rows = openSelect(compose("select * from {} where id=?", {c.table}), id);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
  const auto text = [&](std::string_view column) { return column.empty() ? QString() : row.text(column); };
  const auto number = [&](std::string_view column) { return column.empty() ? 0.0 : row.number(column); };
  LineDraft draft;
  draft.goods = row.text("g_sn");
  draft.amounts = LineAmounts(AmountRules::current(), {.price = row.number(c.price),
                                                       .taxedPrice = row.number(c.taxedPrice),
                                                       .quantity = row.number(c.quantity),
                                                       .discount = row.number(c.discount),
                                                       .tax = row.number(c.tax),
                                                       .net = row.number(c.net),
                                                       .taxAmount = row.number(c.taxAmount),
                                                       .total = row.number(c.total)});
  draft.note = text(table.note);
  draft.batch = text("t_ph");
  draft.produced = text("t_scrq");
  draft.expires = text("t_yxq");
  draft.cost = number(c.cost);
  draft.retail = number(table.retail);
  draft.gift = text(table.gift);
  return draft;
}

bool TradingLines::stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                               PickingMemory* memory) const {
  if (document_.shortRefusal.empty()) return true;
  if (quantity - getStockQty(goods, place.warehouse).toDouble() < trading_lines_detail::kTolerance) return true;
  if (memory && memory->goesShort) return *memory->goesShort;
  const bool allowed = strIsTrue(session().cs_kc);
  if (!allowed) prompt.notice(words(document_.shortRefusal));
  const bool goesShort = allowed && prompt.ask(words(document_.shortQuestion));
  if (memory) memory->goesShort = goesShort;
  return goesShort;
}

bool TradingLines::mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const {
  return stockAllows(draft.goods, draft.amounts.quantity(), place, prompt);
}

bool TradingLines::isClosed(Lines where, const QString& number) const {
  if (where != Lines::Waiting) return false;
  return !lookupValue(
              compose("select top 1 id from {} where {}=1 and {}=?", {family().head, family().status, family().number}),
              number)
              .isEmpty();
}

QString TradingLines::numberOf(Lines where, std::int64_t id) const {
  if (where == Lines::Staging) return {};
  return lookupValue(compose("select {} from {} where id=?", {family().number, family().lines}), id);
}

void TradingLines::write(Lines where, std::int64_t id, const LineDraft& draft, const LineFigures& line) const {
  const LineTable& table = tableOf(where);
  const LineColumns& c = *table.columns;
  updateRow(c.table, id,
            {{c.price, line.price},
             {c.quantity, line.quantity},
             {c.net, line.net},
             {c.tax, line.tax},
             {c.taxedPrice, line.taxedPrice},
             {c.taxAmount, line.taxAmount},
             {c.total, line.total},
             {c.discount, line.discount},
             {table.note, sanitizeText(draft.note.trimmed()).left(64)},
             {"t_ph", draft.batch},
             {"t_scrq", draft.produced},
             {"t_yxq", draft.expires}});
  if (!c.moved.empty()) updateRow(c.table, id, {{c.moved, trading_lines_detail::moved(c, line.quantity)}});
  if (!c.cost.empty())
    updateRow(c.table, id, {{c.cost, draft.cost}, {c.costAmount, roundTotalIfSeparate(draft.cost * line.quantity)}});
  if (!table.shownCost.empty()) updateRow(c.table, id, {{table.shownCost, draft.cost}});
}

std::int64_t TradingLines::insert(Lines where, const QString& number, const LineDraft& draft,
                                  const LineFigures& line) const {
  const LineTable& table = tableOf(where);
  const LineColumns& c = *table.columns;
  const std::int64_t id = insertRow(c.table, {{"g_sn", draft.goods}, {"a_name", session().a_name}});
  write(where, id, draft, line);
  if (where != Lines::Staging) updateRow(c.table, id, {{family().number, number}});
  if (!table.retail.empty()) updateRow(c.table, id, {{table.retail, draft.retail}});
  if (!table.entryTotal.empty()) updateRow(c.table, id, {{table.entryTotal, line.total}});
  if (!table.gift.empty()) updateRow(c.table, id, {{table.gift, draft.gift}});
  for (const std::string_view zero : table.zeros)
    updateRow(c.table, id, {{zero, 0}});
  return id;
}

LineResult TradingLines::addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt&) const {
  LineResult result;
  result.number = place.number;
  const std::optional<LineFigures> line = draft.amounts.settled();
  if (!line || isClosed(where, place.number)) return result;
  Transaction transaction(accountDb());
  // A draft's number may have been taken meanwhile; a waiting document's is its own.
  if (where == Lines::Draft) result.number = usableDraftNumber(family(), place.number, place.date);
  result.id = insert(where, result.number, draft, *line);
  if (where == Lines::Waiting) refreshWaitingTotals(family(), result.number);
  transaction.commit();
  return result;
}

bool TradingLines::changeLine(Lines where, std::int64_t id, const LinePlace&, const LineDraft& draft, Prompt&) const {
  const std::optional<LineFigures> line = draft.amounts.settled();
  Transaction transaction(accountDb());
  const QString number = numberOf(where, id);
  if (!line || !rowExists(tableOf(where).columns->table, "id", id) || isClosed(where, number)) return false;
  write(where, id, draft, *line);
  if (where == Lines::Waiting) refreshWaitingTotals(family(), number);
  transaction.commit();
  return true;
}

double TradingLines::setChange(const QString& value, QStringView field, Lines where, std::int64_t id, Prompt&) const {
  const std::optional<LineField> which = lineFieldNamed(field);
  const QString number = numberOf(where, id);
  if (!which || isClosed(where, number)) return 0;
  Transaction transaction(accountDb());
  const double written = setLineField(*tableOf(where).columns, id, *which, value);
  if (where == Lines::Waiting) refreshWaitingTotals(family(), number);
  transaction.commit();
  return written;
}

// ---- barcode -----------------------------------------------------------------------------------------------------

QString TradingLines::goodsOfBarcode(const QString& barcode, const LinePlace&, QString& refusal) const {
  QString goods;
  if (!barcode.isEmpty()) goods = lookupValue("select top 1 g_sn from jxc_goods where g_sptm=? order by g_sn", barcode);
  if (goods.isEmpty()) refusal = u"没有找到与该条码匹配的商品，请检查！"_qs;
  return goods;
}

void TradingLines::increaseByOne(std::int64_t id) const {
  const LineColumns& c = *document_.lines->columns;
  const AmountRules rules = AmountRules::current();
  // Without digits of their own totals keep what the database holds: six decimals.
  const int digits = rules.roundTotals ? rules.totalDigits : 6;
  const auto amount = [&](std::string_view column, std::string_view factor,
                          std::initializer_list<std::string_view> of) {
    execSql(compose("update {} set {}=", {c.table, column}) +
                compose("round(" + std::string(factor) + "+0.000000001,?) where id=?", of),
            digits, id);
  };
  if (document_.totalsByRate)
    amount(c.total, "{}*{}*(1+{}/100.00)*({}+1)", {c.price, c.discount, c.tax, c.quantity});
  else
    amount(c.total, "{}*{}*({}+1)", {c.taxedPrice, c.discount, c.quantity});
  amount(c.net, "{}*{}*({}+1)", {c.price, c.discount, c.quantity});
  amount(c.taxAmount, "({}-{})*{}*({}+1)", {c.taxedPrice, c.price, c.discount, c.quantity});
  if (!c.cost.empty()) amount(c.costAmount, "{}*({}+1)", {c.cost, c.quantity});
  if (!c.moved.empty() && trading_lines_detail::moved(c, 1) != 0)
    execSql(compose("update {} set {}={}+1 where id=?", {c.table, c.moved, c.moved}), id);
  execSql(compose("update {} set {}={}+1 where id=?", {c.table, c.quantity, c.quantity}), id);
}

ScanResult TradingLines::enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                                      Prompt& prompt) const {
  ScanResult result;
  result.number = place.number;
  const QString barcode = sanitizeText(code.trimmed());
  const QString goods = goodsOfBarcode(barcode, place, result.refusal);
  if (goods.isEmpty()) return result;
  if (oncePerGoods && goodsOnDocument(family(), place.number, goods, true)) {
    result.outcome = Scan::AlreadyThere;
    result.refusal = u"该商品已添加，不能重复添加，\r\n\r\n可以修改已添加商品的数量！"_qs;
    return result;
  }
  if (!stockAllows(goods, 1, place, prompt)) return result;

  Transaction transaction(accountDb());
  result.number = usableDraftNumber(family(), place.number, place.date);
  const std::int64_t same =
      strIsTrue(session().cs_possk)
          ? static_cast<std::int64_t>(lookupNumber(
                compose("select top 1 a.id from {} a,jxc_goods b where a.g_sn=b.g_sn and a.{}=? and a.g_sn=? and "
                        "b.g_sptm=? and a.a_name=?",
                        {family().lines, family().number}) +
                    (document_.lines->gift.empty() ? "" : " and a.t_zp=''") + " order by a.id",
                result.number, goods, barcode, session().a_name))
          : 0;
  if (same != 0) {
    increaseByOne(same);
    result.id = same;
    result.outcome = Scan::Increased;
  } else {
    LinePlace here = place;
    here.number = result.number;
    LineDraft draft = newLine(goods, here, false);
    draft.amounts.setQuantity(1);
    result.id = addLine(Lines::Draft, here, draft, prompt).id;
    if (document_.totalsByRate && draft.amounts.tax() != 0)
      updateRow(family().lines, result.id,
                {{document_.lines->columns->taxAmount,
                  roundTotalIfSeparate(draft.amounts.price() * draft.amounts.tax() / 100)}});
    result.outcome = Scan::Added;
  }
  transaction.commit();
  return result;
}

// ---- staging -----------------------------------------------------------------------------------------------------

bool TradingLines::mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                            Prompt& prompt) const {
  const bool staged =
      !lookupValue("select top 1 id from jxc_tempspxf where g_sn=? and a_name=?", goods, session().a_name).isEmpty();
  if (!staged && !goodsOnDocument(family(), place.number, goods, target == Lines::Draft)) return true;
  if (memory.refuseRepeats) return false;
  if (prompt.ask(u"该商品已添加，需要重复添加吗？"_qs)) return true;
  memory.refuseRepeats = true;
  return false;
}

std::int64_t TradingLines::stageGoods(const QString& goods, double quantity, const LinePlace& place, Lines target,
                                      PickingMemory& memory, Prompt& prompt) const {
  if (!mayStage(goods, place, target, memory, prompt)) return 0;
  if (!stockAllows(goods, quantity, place, prompt, &memory)) return 0;
  LineDraft draft = newLine(goods, place, true);
  draft.amounts.setQuantity(quantity);
  return addLine(Lines::Staging, place, draft, prompt).id;
}

CopyResult TradingLines::copyStaged(const LinePlace& place, Lines target) const {
  CopyResult result;
  result.number = place.number;
  if (isClosed(target, place.number)) return result;
  const LineTable& table = *document_.lines;
  trading_lines_detail::CopiedColumns columns;
  columns.addFigures(table, stagingLineTable);
  columns.add("a_name", "a_name");
  columns.add(table.note, "left(ts_note,64)");
  columns.add(table.gift, "iif(t_zp is null,'',t_zp)");

  Transaction transaction(accountDb());
  execSql("delete from jxc_tempspxf where (g_sn='' or g_sn is null) and a_name=?", session().a_name);
  if (target == Lines::Draft) result.number = usableDraftNumber(family(), place.number, place.date);
  const double last = lookupNumber(compose("select max(id) from {}", {family().lines}));
  result.lines =
      static_cast<int>(execSql(compose("insert into {} ({},", {family().lines, family().number}) + columns.into +
                                   ") select ?," + columns.from + " from jxc_tempspxf where a_name=? order by id",
                               result.number, session().a_name));
  if (const LineColumns& c = *table.columns; !c.moved.empty())
    execSql(compose("update {} set {}={}*? where id>? and {}=? and a_name=?",
                    {family().lines, c.moved, c.quantity, family().number}),
            trading_lines_detail::moved(c, 1), last, result.number, session().a_name);
  clearStaging();
  if (target == Lines::Waiting) refreshWaitingTotals(family(), result.number);
  transaction.commit();
  return result;
}

void copyWholeDocument(const TradingDescription& from, const QString& source, const TradingDescription& to,
                       const QString& number) {
  trading_lines_detail::CopiedColumns columns;
  columns.addFigures(*to.lines, *from.lines);
  columns.add(to.lines->note, from.lines->note);
  execSql(compose("insert into {} ({},a_name,", {to.family->lines, to.family->number}) + columns.into +
              ") select ?,?," + columns.from +
              compose(" from {} where {}=? order by id", {from.family->lines, from.family->number}),
          number, session().a_name, source);
}

}  // namespace jxc
