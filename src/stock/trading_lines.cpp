// 购销单据商品行: lines, grid edits, barcode and staging of stock/trading_rules.h.
#include "core/numbers.h"
#include "core/rounding.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/ledger.h"
#include "stock/trading_rules.h"

namespace jxc {
namespace trading_lines_detail {

constexpr double kTolerance = 0.000001;  // quantities have six decimals

QString noteOf(const LineDraft& draft) {
  return sanitizeText(draft.note.trimmed()).left(64);
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

// ---- one line ----------------------------------------------------------------------------------------------------

LineDraft TradingLines::newLine(const QString& goods, const LinePlace& place, bool staged) const {
  LineDraft draft;
  draft.goods = goods;
  draft.amounts.setTax(proposedTax(staged));
  draft.amounts.setPrice(proposedPrice(goods, place));
  if (!family().line.columns->cost.empty()) {
    draft.cost = roundMoney(getGoodsCost(goods, place.warehouse, place.date));
    draft.retail = lookupNumber("select g_lsj from jxc_goods where g_sn=?", goods);
  }
  return draft;
}

RowSet TradingLines::stored(Lines where, std::int64_t id) const {
  return openSelect(compose("select * from {} where id=?", {tableOf(where).columns->table}), id);
}

std::optional<LineDraft> TradingLines::loadLine(Lines where, std::int64_t id) const {
  const LineTable& table = tableOf(where);
  const RowSet rows = stored(where, id);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
  const auto text = [&](std::string_view column) { return column.empty() ? QString() : row.text(column); };
  const LineFigures figures = readFigures(row, *table.columns);
  LineDraft draft;
  draft.goods = row.text("g_sn");
  draft.amounts = LineAmounts(AmountRules::current(), figures);
  draft.note = text(table.note);
  draft.batch = text("t_ph");
  draft.produced = text("t_scrq");
  draft.expires = text("t_yxq");
  draft.cost = figures.cost;
  draft.retail = table.retail.empty() ? 0 : row.number(table.retail);
  draft.gift = text(table.gift);
  return draft;
}

bool TradingLines::stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                               PickingMemory* memory) const {
  if (document_.shortRefusal.empty() || quantity <= 0) return true;  // below zero goods come back
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

TradingLines::Head TradingLines::headOf(Lines where, const QString& number) const {
  if (where != Lines::Waiting) return {};
  const DocumentFamily& f = family();
  const std::string_view atOnce = f.allMoved.empty() ? f.status : f.allMoved;
  const RowSet heads =
      openSelect(compose("select top 1 {} as status,{} as atonce from {} where {}=? order by {} desc,id",
                         {f.status, atOnce, f.head, f.number, f.status}),
                 number);
  if (heads.isEmpty()) return {};
  return {.closed = heads.front().integer("status") == 1, .movesAtOnce = heads.front().flag("atonce")};
}

QString TradingLines::numberOf(Lines where, const Row& row) const {
  return where == Lines::Staging ? QString() : row.text(family().number);
}

double TradingLines::moved(Lines where, const Head& head, double quantity) const {
  const LineColumns& c = *tableOf(where).columns;
  // What comes back waits for no document of its own.
  return !c.movedLater || !c.movedLater() || head.movesAtOnce || quantity < 0 ? quantity : 0;
}

std::optional<LineFigures> TradingLines::figuresOf(const LineDraft& draft) const {
  std::optional<LineFigures> line = draft.amounts.settled();
  if (line) {
    line->cost = draft.cost;
    settle(*line, LineRounding::Typed, AmountRules::current());
  }
  return line;
}

std::int64_t TradingLines::insert(Lines where, const QString& number, const LineDraft& draft,
                                  const LineFigures& line) const {
  const LineTable& table = tableOf(where);
  const LineColumns& c = *table.columns;
  const auto zero = [&](std::size_t i) { return i < table.zeros.size() ? table.zeros[i] : std::string_view(); };
  return insertRow(c.table, {{where == Lines::Staging ? std::string_view() : family().number, number},
                             {"g_sn", draft.goods},
                             {"a_name", where == Lines::Waiting ? ownerOf(family(), number) : session().a_name},
                             {c.price, line.price},
                             {c.quantity, line.quantity},
                             {c.net, line.net},
                             {c.tax, line.tax},
                             {c.taxedPrice, line.taxedPrice},
                             {c.taxAmount, line.taxAmount},
                             {c.total, line.total},
                             {c.discount, line.discount},
                             {c.moved, line.moved},
                             {c.cost, line.cost},
                             {c.costAmount, line.costAmount},
                             {table.shownCost, draft.cost},
                             {table.retail, draft.retail},
                             {table.entryTotal, line.total},
                             {table.gift, draft.gift},
                             {table.note, trading_lines_detail::noteOf(draft)},
                             {"t_ph", draft.batch},
                             {"t_scrq", draft.produced},
                             {"t_yxq", draft.expires},
                             {zero(0), 0},
                             {zero(1), 0},
                             {zero(2), 0},
                             {zero(3), 0},
                             {zero(4), 0}});
}

LineResult TradingLines::addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt&) const {
  LineResult result;
  result.number = place.number;
  std::optional<LineFigures> line = figuresOf(draft);
  if (!line) return result;
  Transaction transaction(accountDb());
  const Head head = headOf(where, place.number);
  if (head.closed) return result;
  // A draft's number may have been taken meanwhile; a waiting document's is its own.
  if (where == Lines::Draft) result.number = usableDraftNumber(family(), place.number, place.date);
  line->moved = moved(where, head, line->quantity);
  result.id = insert(where, result.number, draft, *line);
  if (where == Lines::Waiting) refreshWaitingTotals(family(), result.number);
  transaction.commit();
  return result;
}

bool TradingLines::changeLine(Lines where, std::int64_t id, const LinePlace&, const LineDraft& draft, Prompt&) const {
  std::optional<LineFigures> line = figuresOf(draft);
  if (!line) return false;
  Transaction transaction(accountDb());
  const RowSet rows = stored(where, id);
  if (rows.isEmpty()) return false;
  const QString number = numberOf(where, rows.front());
  const Head head = headOf(where, number);
  if (head.closed) return false;
  line->moved = moved(where, head, line->quantity);
  const LineTable& table = tableOf(where);
  writeFigures(*table.columns, id, *line);
  updateRow(table.columns->table, id,
            {{table.shownCost, draft.cost},
             {table.note, trading_lines_detail::noteOf(draft)},
             {"t_ph", draft.batch},
             {"t_scrq", draft.produced},
             {"t_yxq", draft.expires}});
  if (where == Lines::Waiting) refreshWaitingTotals(family(), number);
  transaction.commit();
  return true;
}

double TradingLines::setChange(const QString& value, QStringView field, Lines where, std::int64_t id, Prompt&) const {
  const std::optional<LineField> which = lineFieldNamed(field);
  if (!which) return 0;
  Transaction transaction(accountDb());
  const RowSet rows = stored(where, id);
  if (rows.isEmpty()) return 0;
  const QString number = numberOf(where, rows.front());
  const Head head = headOf(where, number);
  if (head.closed) return 0;
  const LineColumns& columns = *tableOf(where).columns;
  const double taken = cellValue(*which, value, takesMinus());
  LineFigures line = readFigures(rows.front(), columns);
  setCell(line, *which, taken, AmountRules::current());
  if (*which == LineField::Quantity) line.moved = moved(where, head, taken);
  writeFigures(columns, id, line);
  if (where == Lines::Waiting) refreshWaitingTotals(family(), number);
  transaction.commit();
  return taken;
}

// ---- barcode -----------------------------------------------------------------------------------------------------

QString TradingLines::goodsOfBarcode(const QString& barcode, const LinePlace&, std::optional<QString>& refusal) const {
  QString goods;
  if (!barcode.isEmpty()) goods = lookupValue("select top 1 g_sn from jxc_goods where g_sptm=? order by g_sn", barcode);
  if (goods.isEmpty()) refusal = u"没有找到与该条码匹配的商品，请检查！"_qs;
  return goods;
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
  const LineColumns& columns = *family().line.columns;
  const AmountRules rules = AmountRules::current();
  // What comes back stands on a line of its own, and so does a gift.
  const RowSet same =
      strIsTrue(session().cs_possk)
          ? openSelect(compose("select top 1 a.* from {} a,jxc_goods b where a.g_sn=b.g_sn and a.{}=? and a.g_sn=? and "
                               "b.g_sptm=? and a.a_name=? and a.{}>0",
                               {family().lines, family().number, columns.quantity}) +
                           (family().line.gift.empty() ? "" : " and a.t_zp=''") + " order by a.id",
                       result.number, goods, barcode, session().a_name)
          : RowSet();
  LineFigures line;
  if (!same.isEmpty()) {
    line = readFigures(same.front(), columns);
    addScanned(line, document_.scans, rules);
    line.moved = moved(Lines::Draft, {}, line.quantity);
    result.id = same.front().integer("id");
    writeFigures(columns, result.id, line);
    result.outcome = Scan::Increased;
  } else {
    LinePlace here = place;
    here.number = result.number;
    LineDraft draft = newLine(goods, here, false);
    draft.amounts.setQuantity(1);
    line = *figuresOf(draft);
    settle(line, document_.scans, rules);
    line.moved = moved(Lines::Draft, {}, 1);
    result.id = insert(Lines::Draft, result.number, draft, line);
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
  const LineTable& table = family().line;
  Transaction transaction(accountDb());
  const Head head = headOf(target, place.number);
  if (head.closed) return result;
  trading_lines_detail::CopiedColumns columns;
  columns.addFigures(table, stagingLineTable);
  columns.add(table.note, "left(ts_note,64)");
  columns.add(table.gift, "iif(t_zp is null,'',t_zp)");
  const std::string_view staged = stagingLineTable.columns->quantity;
  columns.add(table.columns->moved,
              moved(target, head, 1) != 0 ? std::string(staged) : compose("iif({}<0,{},0)", {staged, staged}));

  execSql("delete from jxc_tempspxf where (g_sn='' or g_sn is null) and a_name=?", session().a_name);
  if (target == Lines::Draft) result.number = usableDraftNumber(family(), place.number, place.date);
  const QString owner = target == Lines::Waiting ? ownerOf(family(), result.number) : session().a_name;
  result.lines =
      static_cast<int>(execSql(compose("insert into {} ({},a_name,", {family().lines, family().number}) + columns.into +
                                   ") select ?,?," + columns.from + " from jxc_tempspxf where a_name=? order by id",
                               result.number, owner, session().a_name));
  clearStaging();
  if (target == Lines::Waiting) refreshWaitingTotals(family(), result.number);
  transaction.commit();
  return result;
}

void copyWholeDocument(const DocumentFamily& from, const QString& source, const DocumentFamily& to,
                       const QString& number) {
  trading_lines_detail::CopiedColumns columns;
  columns.addFigures(to.line, from.line);
  columns.add(to.line.note, from.line.note);
  execSql(compose("insert into {} ({},a_name,", {to.lines, to.number}) + columns.into + ") select ?,?," + columns.from +
              compose(" from {} where {}=? order by id", {from.lines, from.number}),
          number, session().a_name, source);
}

}  // namespace jxc
