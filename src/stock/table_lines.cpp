#include "stock/table_lines.h"

#include "core/period_lock.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/stocktake.h"

namespace jxc {
namespace table_lines_detail {

/// The two lists of an `insert … select`: columns of a table of lines, and expressions over rows `a`.
struct CopiedColumns {
  std::string into, from;
  void addExpression(std::string_view column, std::string_view expression) {
    if (column.empty()) return;
    into.append(into.empty() ? "" : ",").append(column);
    from.append(from.empty() ? "" : ",").append(expression);
  }
  void add(std::string_view column, std::string_view source) {
    if (!source.empty()) addExpression(column, compose("a.{}", {source}));
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
    if (!a.lent.empty()) add(a.lent, b.quantity);
    add(to.retail, source.retail);
    add(to.shownCost, source.shownCost);
    for (const auto& [own, staged] : {std::pair(to.rent, source.rent), std::pair(to.deposit, source.deposit),
                                      std::pair(to.account, source.account)})
      if (!own.empty()) add(own, staged);
    addExpression(to.kind, "'" + std::string(to.kindText) + "'");
    add(to.entryTotal, b.total);
    for (const std::string_view zero : to.zeros)
      addExpression(zero, "0");
    add("t_ph", "t_ph");
    add("t_scrq", "t_scrq");
    add(to.expires, source.expires);
    if (!to.source.empty()) add(to.source, source.source);
    if (!to.sourceLine.empty()) addExpression(to.sourceLine, compose("clng(a.{})", {source.sourceLine}));
  }
};

}  // namespace table_lines_detail

// ---- one line ----------------------------------------------------------------------------------------------------

LineDraft TableLines::newLine(const QString& goods, const LinePlace& place, bool) const {
  LineDraft draft;
  draft.goods = goods;
  draft.warehouse = place.warehouse;
  draft.amounts.setPrice(description_.price(goods, place));
  if (const LineTable& table = family().line; !table.retail.empty())
    draft.retail = lookupNumber(compose("select {} from jxc_goods where g_sn=?", {description_.retailOf}), goods);
  if (goesByRetail()) draft.amounts.setWorth(draft.retail);
  takeCounted(draft, place.warehouse);
  return draft;
}

void TableLines::takeCounted(LineDraft& draft, const QString& warehouse) const {
  if (family().line.countedShelf.empty()) return;
  const RowSet balance =
      openSelect("select kc_sl,kc_zsl from jxc_kcsp where g_sn=? and ck_sn=?", draft.goods, warehouse);
  draft.shelf = balance.isEmpty() ? 0 : balance.number(0, 0);
  draft.book = balance.isEmpty() ? 0 : balance.number(0, 1);
  draft.amounts.setBook(draft.shelf);
}

QString TableLines::noteOf(const LineDraft& draft) const {
  return sanitizeText(draft.note.trimmed()).left(family().line.noteWidth);
}

LineFigures TableLines::figuresIn(const Row& row, const LineTable& table) const {
  LineFigures line = readFigures(row, *table.columns);
  if (goesByRetail()) line.worth = row.number(table.retail);
  if (!table.countedShelf.empty()) line.book = row.number(table.countedShelf);
  return line;
}

RowSet TableLines::stored(Lines where, std::int64_t id) const {
  return openSelect(compose("select a.* from {} a where a.id=?", {tableOf(where).columns->table}) +
                        (where == Lines::Draft ? ofDraft(family(), "a") : std::string()),
                    id);
}

std::optional<LineDraft> TableLines::loadLine(Lines where, std::int64_t id) const {
  const LineTable& table = tableOf(where);
  const RowSet rows = stored(where, id);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
  const auto text = [&](std::string_view column) { return column.empty() ? QString() : row.text(column); };
  const LineFigures figures = figuresIn(row, table);
  LineDraft draft;
  draft.goods = row.text("g_sn");
  draft.amounts = LineAmounts(AmountRules::current(), figures);
  draft.note = text(table.note);
  draft.batch = text("t_ph");
  draft.produced = text("t_scrq");
  draft.expires = text(table.expires);
  // A staging row keeps in the same places what other documents have there.
  if (!family().line.source.empty()) {
    draft.source = text(table.source);
    draft.sourceLine = row.text(table.sourceLine).toLongLong();
  }
  draft.cost = figures.cost;
  draft.retail = table.retail.empty() ? 0 : row.number(table.retail);
  draft.gift = text(table.gift);
  draft.warehouse = text(table.warehouse);
  draft.rent = table.rent.empty() ? 0 : row.number(table.rent);
  draft.deposit = table.deposit.empty() ? 0 : row.number(table.deposit);
  draft.account = text(table.account);
  if (!table.countedShelf.empty()) draft.shelf = row.number(table.countedShelf);
  if (!table.countedBook.empty()) draft.book = row.number(table.countedBook);
  return draft;
}

bool TableLines::stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                             PickingMemory* memory) const {
  const LineDescription& line = description_;
  if (isTooMany(quantity, prompt)) return false;
  if (line.shortQuestion.empty() || quantity <= 0) return true;  // below zero goods come back
  if (!isBeyondStock(goods, quantity, place.warehouse)) return true;
  if (memory && memory->goesShort) return *memory->goesShort;
  const bool allowed = line.shortRefusal.empty() || strIsTrue(session().cs_kc);
  if (!allowed) {
    // Among many that were marked somebody has to find the one.
    const QString which = memory ? namedGoods(goods) : QString();
    isRefused({words(line.shortRefusal) + which, Subject::Quantity, goods}, prompt);
  }
  const bool goesShort = allowed && prompt.ask(words(line.shortQuestion));
  if (memory) memory->goesShort = goesShort;
  return goesShort;
}

bool TableLines::mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const {
  const double quantity = draft.amounts.quantity();
  if (!description_.quantityRefusal.empty() &&
      refused({{!quantities().has(quantity), words(description_.quantityRefusal), Subject::Quantity}}, prompt))
    return false;
  return stockAllows(draft.goods, quantity, place, prompt);
}

bool TableLines::cellAllows(const QString& value, QStringView field, Lines where, std::int64_t id,
                            const LinePlace& place, Prompt& prompt) const {
  if (lineFieldNamed(field) != LineField::Quantity) return true;
  const double quantity = cellValue(LineField::Quantity, value, quantities());
  if (!description_.everyChangeIsTested) return !isTooMany(quantity, prompt);
  const RowSet rows = stored(where, id);
  return rows.isEmpty() || stockAllows(rows.front().text("g_sn"), quantity, place, prompt);
}

TableLines::Head TableLines::headOf(Lines where, const QString& number) const {
  if (where != Lines::Waiting) return {};
  const DocumentFamily& f = family();
  const std::string_view atOnce = f.allMoved.empty() ? f.status : f.allMoved;
  const PeriodLock lock;
  const RowSet heads =
      openSelect(compose("select top 1 {} as status,{} as atonce,{} as rq from {} where {}=? order by {} desc,id",
                         {f.status, atOnce, f.date, f.head, f.number, f.status}),
                 number);
  if (heads.isEmpty() || heads.front().integer("status") == 1) return {.closed = changedMeanwhile(number)};
  return {.closed = lock.against(heads.front().text("rq")), .movesAtOnce = heads.front().flag("atonce")};
}

QString TableLines::numberOf(Lines where, const Row& row) const {
  return where == Lines::Staging ? QString() : row.text(family().number);
}

double TableLines::moved(Lines where, const Head& head, double quantity) const {
  const LineColumns& c = *tableOf(where).columns;
  // What comes back waits for no document of its own.
  return !c.movedLater || !c.movedLater() || head.movesAtOnce || quantity < 0 ? quantity : 0;
}

std::optional<LineFigures> TableLines::figuresOf(const LineDraft& draft) const {
  std::optional<LineFigures> line = draft.amounts.settled(quantities().zero);
  if (line) {
    line->cost = draft.cost;
    settle(*line, description_.rounding.typed, AmountRules::current());
  }
  return line;
}

std::int64_t TableLines::insert(Lines where, const QString& number, const QString& owner, const LineDraft& draft,
                                const LineFigures& line) const {
  const LineTable& table = tableOf(where);
  const LineColumns& c = *table.columns;
  const auto zero = [&](std::size_t i) { return i < table.zeros.size() ? table.zeros[i] : std::string_view(); };
  return insertRow(c.table, {{where == Lines::Staging ? std::string_view() : family().number, number},
                             {"g_sn", draft.goods},
                             {"a_name", owner},
                             {c.price, line.price},
                             {c.quantity, line.quantity},
                             {c.net, line.net},
                             {c.tax, line.tax},
                             {c.taxedPrice, line.taxedPrice},
                             {c.taxAmount, line.taxAmount},
                             {c.total, line.total},
                             {c.discount, line.discount},
                             {c.moved, line.moved},
                             {c.lent, line.quantity},
                             {c.cost, line.cost},
                             {c.costAmount, line.costAmount},
                             {table.shownCost, draft.cost},
                             {table.retail, draft.retail},
                             {table.entryTotal, line.total},
                             {draft.source.isEmpty() ? table.gift : std::string_view(), draft.gift},
                             {table.warehouse, draft.warehouse},
                             {table.countedShelf, draft.shelf},
                             {table.countedBook, draft.book},
                             {table.note, noteOf(draft)},
                             {"t_ph", draft.batch},
                             {"t_scrq", draft.produced},
                             {table.expires, draft.expires},
                             {draft.source.isEmpty() ? std::string_view() : table.source, draft.source},
                             {draft.source.isEmpty() ? std::string_view() : table.sourceLine, draft.sourceLine},
                             {table.rent, draft.rent},
                             {table.deposit, draft.deposit},
                             {table.account, draft.account},
                             {table.kind, words(table.kindText)},
                             {zero(0), 0},
                             {zero(1), 0},
                             {zero(2), 0},
                             {zero(3), 0},
                             {zero(4), 0}});
}

LineResult TableLines::addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt& prompt) const {
  if (!figuresOf(draft)) return {.number = place.number};
  const AddedLines added = *addLines(where, place, {&draft, 1});
  isRefused(added.closed, prompt);
  return {.id = added.last, .number = added.number};
}

std::optional<AddedLines> TableLines::addLines(Lines where, const LinePlace& place, std::span<const LineDraft> drafts,
                                               const LineProgress& progress) const {
  AddedLines added;
  added.number = place.number;
  Transaction transaction(accountDb());
  const Head head = headOf(where, place.number);
  added.closed = head.closed;
  if (head.closed) return added;
  // A draft's number may have been taken meanwhile; a waiting document's is its own.
  if (where == Lines::Draft) added.number = usableDraftNumber(family(), place.number, place.date);
  const QString owner = where == Lines::Waiting ? ownerOf(family(), added.number) : session().a_name;
  for (std::size_t i = 0; i < drafts.size(); ++i) {
    if (!goesOn(progress, i + 1, drafts.size())) return std::nullopt;
    std::optional<LineFigures> line = figuresOf(drafts[i]);
    if (!line) continue;
    line->moved = moved(where, head, line->quantity);
    added.last = insert(where, added.number, owner, drafts[i], *line);
    ++added.lines;
  }
  if (where == Lines::Waiting) refreshWaitingTotals(family(), added.number);
  transaction.commit();
  return added;
}

bool TableLines::changeLine(Lines where, std::int64_t id, const LinePlace& place, const LineDraft& draft,
                            Prompt& prompt) const {
  std::optional<LineFigures> line = figuresOf(draft);
  if (!line) return false;
  const LineTable& table = tableOf(where);
  return write(where, id, place.number, prompt, [&](const Row&, const Head& head) {
    line->moved = moved(where, head, line->quantity);
    updateRow(table.columns->table, id,
              {{table.shownCost, draft.cost},
               {table.warehouse, draft.warehouse},
               {table.note, noteOf(draft)},
               {table.rent, draft.rent},
               {table.deposit, draft.deposit},
               {table.account, draft.account},
               {"t_ph", draft.batch},
               {"t_scrq", draft.produced},
               {table.expires, draft.expires}});
    return *line;
  });
}

double TableLines::setChange(const QString& value, QStringView field, Lines where, std::int64_t id,
                             Prompt& prompt) const {
  const std::optional<LineField> which = lineFieldNamed(field);
  if (!which) return 0;
  const double taken = cellValue(*which, value, quantities());
  const bool written = write(where, id, {}, prompt, [&](const Row& row, const Head& head) {
    LineFigures line = figuresIn(row, tableOf(where));
    setCell(line, *which, taken, AmountRules::current(), description_.rounding.cells);
    if (*which == LineField::Quantity) line.moved = moved(where, head, taken);
    return line;
  });
  return written ? taken : 0;
}

bool TableLines::write(Lines where, std::int64_t id, QString number, Prompt& prompt, const Change& change) const {
  Refusal closed = changedMeanwhile(number);
  {
    Transaction transaction(accountDb());
    const RowSet rows = stored(where, id);
    if (!rows.isEmpty()) {
      const Row row = rows.front();
      number = numberOf(where, row);
      const Head head = headOf(where, number);
      closed = head.closed;
      if (!closed) {
        writeFigures(*tableOf(where).columns, id, change(row, head));
        if (where == Lines::Waiting) refreshWaitingTotals(family(), number);
        transaction.commit();
      }
    }
  }
  return !isRefused(closed, prompt);
}

// ---- barcode -----------------------------------------------------------------------------------------------------

TableLines::Coded TableLines::goodsOfBarcode(const QString& barcode, const LinePlace& place) const {
  using enum BarcodesOf;
  const bool anywhere = description_.barcodes == Catalogue;
  Sql goods("select top 1 a.g_sn from jxc_goods a where a.g_sptm=?", barcode);
  if (!anywhere) {
    // Asked of each goods of the code: a join would begin with all goods of the warehouse.
    goods.add(" and exists (select b.id from jxc_kcsp b where b.g_sn=a.g_sn and b.ck_sn=?", place.warehouse);
    goods.add(description_.barcodes == Stock && !strIsTrue(session().cs_kc) ? " and b.kc_sl>0)" : ")");
  }
  const RowSet found = barcode.isEmpty() ? RowSet() : openSelect(goods.add(" order by a.g_sn"));
  if (!found.isEmpty()) return {found.text(0, 0)};
  return {{},
          {anywhere ? u"没有找到与该条码匹配的商品，请检查！"_qs : u"当前仓库中没有找到与该条码匹配的商品，请检查！"_qs,
           Subject::Barcode}};
}

ScanResult TableLines::enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods,
                                    Prompt& prompt) const {
  ScanResult result;
  result.number = place.number;
  const QString barcode = sanitizeText(code.trimmed());
  const Coded coded = goodsOfBarcode(barcode, place);
  if (!coded.refusal) return enterGoods(place, coded.goods, oncePerGoods, prompt);
  result.refusal = coded.refusal;
  result.unknown = !exists("select id from jxc_goods where g_sptm=?", barcode);
  return result;
}

ScanResult TableLines::enterGoods(const LinePlace& place, const QString& goods, bool oncePerGoods,
                                  Prompt& prompt) const {
  ScanResult result;
  result.number = place.number;
  if (oncePerGoods && goodsOnDocument(family(), place.number, goods, true)) {
    result.outcome = Scan::AlreadyThere;
    result.refusal = alreadyOnDocument(goods);
    return result;
  }
  const LineColumns& columns = *family().line.columns;
  // What comes back stands on a line of its own, and so does a gift.
  const auto sameLine = [&](const QString& number) {
    if (!strIsTrue(session().cs_possk) && !goodsStandOnce()) return RowSet();
    Sql same(compose("select top 1 a.* from {} a where a.{}=? and a.g_sn=? and a.a_name=? and a.{}",
                     {family().lines, family().number, columns.quantity}) +
                 (quantities().zero ? ">=0" : ">0") + (family().line.gift.empty() ? "" : " and a.t_zp=''"),
             number, goods, session().a_name);
    same.add(ofDraft(family(), "a"));
    if (!family().line.warehouse.empty()) same.add(compose(" and a.{}=?", {family().line.warehouse}), place.warehouse);
    return openSelect(same.add(" order by a.id"));
  };
  const RowSet before = description_.everyChangeIsTested ? sameLine(place.number) : RowSet();
  const double there = before.isEmpty() ? 0 : before.front().number(columns.quantity);
  if (!stockAllows(goods, there + 1, place, prompt)) return result;

  Transaction transaction(accountDb());
  result.number = usableDraftNumber(family(), place.number, place.date);
  const AmountRules rules = AmountRules::current();
  const RowSet same = sameLine(result.number);
  LineFigures line;
  if (!same.isEmpty()) {
    line = figuresIn(same.front(), family().line);
    addScanned(line, description_.rounding.scans, rules);
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
    settle(line, description_.rounding.scans, rules);
    line.moved = moved(Lines::Draft, {}, 1);
    result.id = insert(Lines::Draft, result.number, session().a_name, draft, line);
    result.outcome = Scan::Added;
  }
  transaction.commit();
  return result;
}

// ---- staging -----------------------------------------------------------------------------------------------------

bool TableLines::mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                          Prompt& prompt) const {
  const bool staged =
      !lookupValue("select top 1 id from jxc_tempspxf where g_sn=? and a_name=?", goods, session().a_name).isEmpty();
  if (!staged && !goodsOnDocument(family(), place.number, goods, target == Lines::Draft)) return true;
  if (goodsStandOnce()) {
    memory.passedOver << goods;
    return false;
  }
  if (memory.refuseRepeats) return false;
  if (prompt.ask(u"该商品已添加，需要重复添加吗？"_qs)) return true;
  memory.refuseRepeats = true;
  return false;
}

std::int64_t TableLines::stageGoods(const QString& goods, double quantity, const LinePlace& place, Lines target,
                                    PickingMemory& memory, Prompt& prompt) const {
  if (!mayStage(goods, place, target, memory, prompt)) return 0;
  if (!stockAllows(goods, quantity, place, prompt, &memory)) return 0;
  LineDraft draft = newLine(goods, place, true);
  draft.amounts.setQuantity(quantity);
  return addLine(Lines::Staging, place, draft, prompt).id;
}

CopyResult TableLines::copyStaged(const LinePlace& place, Lines target) const {
  using namespace table_lines_detail;
  CopyResult result;
  result.number = place.number;
  const LineTable& table = family().line;
  Transaction transaction(accountDb());
  const Head head = headOf(target, place.number);
  result.closed = head.closed;
  if (head.closed) return result;
  CopiedColumns columns;
  const LineTable& staging = *description_.staging;
  columns.addFigures(table, staging);
  if (!table.note.empty()) columns.addExpression(table.note, "left(a.ts_note," + std::to_string(table.noteWidth) + ")");
  columns.addExpression(table.gift, "iif(a.t_zp is null,'',a.t_zp)");
  const std::string_view staged = staging.columns->quantity;
  columns.addExpression(table.columns->moved, moved(target, head, 1) != 0
                                                  ? compose("a.{}", {staged})
                                                  : compose("iif(a.{}<0,a.{},0)", {staged, staged}));
  columns.addExpression(table.countedShelf, "iif(k.kc_sl is null,0,k.kc_sl)");
  columns.addExpression(table.countedBook, "iif(k.kc_zsl is null,0,k.kc_zsl)");
  Sql from(" from jxc_tempspxf a");
  if (!table.countedShelf.empty() || description_.knownGoodsOnly)
    from.add(" left join (select g_sn,kc_sl,kc_zsl from jxc_kcsp where ck_sn=?) k on a.g_sn=k.g_sn", place.warehouse);
  from.add(" where a.a_name=?", session().a_name);

  execSql("delete from jxc_tempspxf where (g_sn='' or g_sn is null) and a_name=?", session().a_name);
  if (target == Lines::Draft) result.number = usableDraftNumber(family(), place.number, place.date);
  const QString owner = target == Lines::Waiting ? ownerOf(family(), result.number) : session().a_name;
  if (description_.knownGoodsOnly) {
    const RowSet unknown = openSelect(Sql("select g_sn,g_name from jxc_goods where g_sn in (select a.g_sn")
                                          .add(from)
                                          .add(" and k.g_sn is null) order by g_sn"));
    for (const Row row : unknown)
      result.leftOff << row.text("g_sn") + u' ' + row.text("g_name");
    from.add(" and k.g_sn is not null");
  }
  const bool apart = !table.warehouse.empty();  // lines have warehouses of their own: these that of the list
  Sql copy(compose("insert into {} ({},a_name,", {family().lines, family().number}) +
               (apart ? compose("{},", {table.warehouse}) : std::string()) + columns.into + ") select ?,?,",
           result.number, owner);
  if (apart) copy.add("?,", place.warehouse);
  result.lines = static_cast<int>(execSql(copy.add(columns.from).add(from).add(" order by a.id")));
  if (!table.countedShelf.empty()) settleCounted(result.number, owner);
  clearStaging();
  if (target == Lines::Waiting) refreshWaitingTotals(family(), result.number);
  transaction.commit();
  return result;
}

/// Staging rows do not know what is there: a count is worth its difference once it stands on the document.
void TableLines::settleCounted(const QString& number, const QString& owner) const {
  const DocumentFamily& f = family();
  const LineColumns& c = *f.line.columns;
  execSql(compose("update {} set {}=", {f.lines, c.total}) +
              stock_count::valueExpression(compose("{}-{}", {c.quantity, f.line.countedShelf}), c.price) +
              compose(" where {}=? and a_name=?", {f.number}),
          number, owner);
}

void TableLines::moveDraftTo(const LinePlace& place) const {
  const LineTable& table = family().line;
  Transaction transaction(accountDb());
  const RowSet lines =
      openSelect(compose("select a.* from {} a where a.{}=? and a.a_name=?", {family().lines, family().number}) +
                     ofDraft(family(), "a") + " order by a.id",
                 place.number, session().a_name);
  for (const Row row : lines) {
    LineDraft line = newLine(row.text("g_sn"), place, false);
    line.amounts.setQuantity(row.number(table.columns->quantity));
    const std::optional<LineFigures> figures = figuresOf(line);
    if (!figures) continue;
    writeFigures(*table.columns, row.integer("id"), *figures);
    if (!table.countedShelf.empty())
      updateRow(table.columns->table, row.integer("id"),
                {{table.countedShelf, line.shelf}, {table.countedBook, line.book}});
  }
  transaction.commit();
}

namespace table_lines_detail {

/// Of a line whose rest was cancelled only what really moved goes back: its pieces, and what the return of the rest has
/// left of its amounts. `row` is of the source, `id` its copy.
void leaveOutCancelled(const DocumentFamily& from, const Row& row, const DocumentFamily& to, std::int64_t id) {
  LineFigures left = readFigures(row, *from.line.columns);
  left.quantity -= row.number(from.line.closed);
  if (left.quantity == 0) return void(execSql(compose("delete from {} where id=?", {to.lines}), id));
  const LineColumns& c = *to.line.columns;
  for (const Row rest :
       openSelect(compose("select a.* from {} a,{} b where a.{}=b.{} and b.{}=1 and a.{}=? and a.g_sn=?",
                          {to.lines, to.head, to.number, to.number, to.status, to.line.link}),
                  row.integer(from.line.link), row.text("g_sn"))) {
    const LineFigures gone = readFigures(rest, c);
    left.net -= gone.net;
    left.taxAmount -= gone.taxAmount;
    left.total -= gone.total;
    left.costAmount -= gone.costAmount;
  }
  writeFigures(c, id, left);
  if (!to.line.entryTotal.empty()) updateRow(to.lines, id, {{to.line.entryTotal, left.total}});
}

}  // namespace table_lines_detail

void copyWholeDocument(const DocumentFamily& from, const QString& source, const DocumentFamily& to,
                       const QString& number) {
  table_lines_detail::CopiedColumns columns;
  columns.addFigures(to.line, from.line);
  columns.add(to.line.note, from.line.note);
  execSql(compose("insert into {} ({},a_name,", {to.lines, to.number}) + columns.into + ") select ?,?," + columns.from +
              compose(" from {} a where a.{}=? order by a.id", {from.lines, from.number}),
          number, session().a_name, source);
  if (from.line.closed.empty()) return;
  const RowSet lines =
      openSelect(compose("select a.* from {} a where a.{}=? order by a.id", {from.lines, from.number}), source);
  const RowSet copies =
      openSelect(compose("select a.id from {} a where a.{}=? and a.a_name=? order by a.id", {to.lines, to.number}),
                 number, session().a_name);
  for (int i = 0; i < lines.rowCount(); ++i)
    if (lines[i].number(from.line.closed) != 0)
      table_lines_detail::leaveOutCancelled(from, lines[i], to,
                                            copies.integer(copies.rowCount() - lines.rowCount() + i, 0));
}

}  // namespace jxc
