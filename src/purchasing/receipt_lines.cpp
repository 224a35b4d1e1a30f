// 采购进货商品行: lines, grid edits, barcode and staging of purchasing/receipt.h.
#include "core/numbers.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "purchasing/receipt.h"

namespace jxc::receipt {
namespace receipt_lines_detail {

const DocumentFamily& family() {
  return families::purchaseReceipt;
}

/// With putaway in use goods reach the shelf by a document of their own.
double putAway(double quantity) {
  return strIsTrue(session().cs_sprk) ? 0 : quantity;
}

QString lineNote(const QString& typed) {
  return sanitizeText(typed.trimmed()).left(64);
}

const LineColumns& columnsOf(Lines where) {
  return where == Lines::Staging ? stagingLineColumns : receiptLineColumns;
}

std::int64_t insertLine(const QString& number, const QString& goods, const LineFigures& line, const LineDraft& draft) {
  return insertRow("jxc_jhsp", {{"j_sn", number},
                                {"g_sn", goods},
                                {"a_name", session().a_name},
                                {"jh_dj", line.price},
                                {"jh_sl", line.quantity},
                                {"jh_je", line.net},
                                {"jh_tax", line.tax},
                                {"jh_taxdj", line.taxedPrice},
                                {"jh_taxje", line.taxAmount},
                                {"jh_zje", line.total},
                                {"jh_rksl", putAway(line.quantity)},
                                {"jh_qxsl", 0.0},
                                {"jh_dzl", line.discount},
                                {"gl_djh2", QString()},
                                {"jh_bz", lineNote(draft.note)},
                                {"id2", 0},
                                {"id3", 0},
                                {"t_ph", draft.batch},
                                {"t_scrq", draft.produced},
                                {"t_yxq", draft.expires}});
}

std::int64_t insertStaged(const LineFigures& line, const LineDraft& draft) {
  return insertRow("jxc_tempspxf", {{"g_sn", draft.goods},
                                    {"a_name", session().a_name},
                                    {"ts_dj", line.price},
                                    {"ts_sl", line.quantity},
                                    {"ts_je", line.net},
                                    {"ts_tax", line.tax},
                                    {"ts_taxdj", line.taxedPrice},
                                    {"ts_taxje", line.taxAmount},
                                    {"ts_zje", line.total},
                                    {"ts_dzl", line.discount},
                                    {"ts_note", lineNote(draft.note)},
                                    {"t_ph", draft.batch},
                                    {"t_scrq", draft.produced},
                                    {"t_yxq", draft.expires}});
}

QString numberOfLine(std::int64_t id) {
  return lookupValue("select j_sn from jxc_jhsp where id=?", id);
}

void refreshIfWaiting(Lines where, const QString& number) {
  if (where == Lines::Waiting) refreshWaitingTotals(family(), number);
}

/// Number that the line may take: a draft's number may have been taken meanwhile, a waiting document's is its own.
QString numberFor(Lines where, const QString& number, const QString& date) {
  return where == Lines::Draft ? usableDraftNumber(family(), number, date) : number;
}

bool isStaged(const QString& goods) {
  return !lookupValue("select top 1 id from jxc_tempspxf where g_sn=? and a_name=?", goods, session().a_name).isEmpty();
}

/// The same barcode once more: one piece more on its line.
void increaseByOne(std::int64_t id) {
  if (const AmountRules rules = AmountRules::current(); rules.roundTotals)
    execSql(
        "update jxc_jhsp set jh_sl=jh_sl+1,jh_je=round(jh_dj*(jh_sl+1)*jh_dzl+0.000000001,?),"
        "jh_zje=round(jh_taxdj*(jh_sl+1)*jh_dzl+0.000000001,?),"
        "jh_taxje=round((jh_taxdj-jh_dj)*(jh_sl+1)*jh_dzl+0.000000001,?) where id=?",
        rules.totalDigits, rules.totalDigits, rules.totalDigits, id);
  else
    execSql(
        "update jxc_jhsp set jh_sl=jh_sl+1,jh_je=jh_dj*(jh_sl+1)*jh_dzl,jh_zje=jh_taxdj*(jh_sl+1)*jh_dzl,"
        "jh_taxje=(jh_taxdj-jh_dj)*(jh_sl+1)*jh_dzl where id=?",
        id);
  if (!strIsTrue(session().cs_sprk)) execSql("update jxc_jhsp set jh_rksl=jh_rksl+1 where id=?", id);
}

}  // namespace receipt_lines_detail

// ---- lines -------------------------------------------------------------------------------------------------------

double defaultPrice(const QString& goods) {
  const RowSet row = openSelect("select g_pjjj,g_scjj,g_jj from jxc_goods where g_sn=?", goods);
  if (row.isEmpty()) return 0;
  const char* field = session().cs_cgdj == u"1" ? "g_scjj" : session().cs_cgdj == u"2" ? "g_jj" : "g_pjjj";
  return roundMoney(row.front().number(field));
}

LineDraft newLine(const QString& goods, bool staged) {
  LineDraft draft;
  draft.goods = goods;
  if (!staged) draft.amounts.setTax(session().cs_tax.toDouble());
  draft.amounts.setPrice(defaultPrice(goods));
  return draft;
}

std::optional<LineDraft> loadLine(Lines where, std::int64_t id) {
  const LineColumns& c = receipt_lines_detail::columnsOf(where);
  const RowSet rows = openSelect(compose("select * from {} where id=?", {c.table}), id);
  if (rows.isEmpty()) return std::nullopt;
  const Row row = rows.front();
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
  draft.note = row.text(where == Lines::Staging ? "ts_note" : "jh_bz");
  draft.batch = row.text("t_ph");
  draft.produced = row.text("t_scrq");
  draft.expires = row.text("t_yxq");
  return draft;
}

LineResult addLine(Lines where, const QString& number, const QString& date, const LineDraft& draft) {
  using namespace receipt_lines_detail;
  LineResult result;
  result.number = number;
  const std::optional<LineFigures> line = draft.amounts.settled();
  if (!line) return result;
  if (where == Lines::Staging) {
    result.id = insertStaged(*line, draft);
    return result;
  }
  Transaction transaction(accountDb());
  result.number = numberFor(where, number, date);
  result.id = insertLine(result.number, draft.goods, *line, draft);
  refreshIfWaiting(where, result.number);
  transaction.commit();
  return result;
}

bool changeLine(Lines where, std::int64_t id, const LineDraft& draft) {
  using namespace receipt_lines_detail;
  const std::optional<LineFigures> line = draft.amounts.settled();
  if (!line) return false;
  const LineColumns& c = columnsOf(where);
  Transaction transaction(accountDb());
  if (!rowExists(c.table, "id", id)) return false;
  updateRow(c.table, id,
            {{c.price, line->price},
             {c.quantity, line->quantity},
             {c.net, line->net},
             {c.tax, line->tax},
             {c.taxedPrice, line->taxedPrice},
             {c.taxAmount, line->taxAmount},
             {c.total, line->total},
             {c.discount, line->discount},
             {where == Lines::Staging ? "ts_note" : "jh_bz", lineNote(draft.note)},
             {"t_ph", draft.batch},
             {"t_scrq", draft.produced},
             {"t_yxq", draft.expires}});
  if (where != Lines::Staging) updateRow(c.table, id, {{c.moved, putAway(line->quantity)}});
  refreshIfWaiting(where, where == Lines::Waiting ? numberOfLine(id) : QString());
  transaction.commit();
  return true;
}

double setChange(const QString& value, QStringView field, Lines where, std::int64_t id) {
  using namespace receipt_lines_detail;
  const std::optional<LineField> which = lineFieldNamed(field);
  if (!which) return 0;
  Transaction transaction(accountDb());
  const double written = setLineField(columnsOf(where), id, *which, value);
  refreshIfWaiting(where, where == Lines::Waiting ? numberOfLine(id) : QString());
  transaction.commit();
  return written;
}

// ---- barcode -----------------------------------------------------------------------------------------------------

ScanResult enterBarcode(const QString& number, const QString& date, const QString& code, bool oncePerGoods) {
  using namespace receipt_lines_detail;
  ScanResult result;
  result.number = number;
  const QString barcode = sanitizeText(code.trimmed());
  const QString goods =
      barcode.isEmpty() ? QString() : lookupValue("select g_sn from jxc_goods where g_sptm=?", barcode);
  if (goods.isEmpty()) {
    result.refusal = u"没有找到与该条码匹配的商品，请检查！"_qs;
    return result;
  }
  if (oncePerGoods && goodsOnDocument(family(), number, goods, true)) {
    result.outcome = Scan::AlreadyThere;
    result.refusal = u"该商品已添加，不能重复添加，\r\n\r\n可以修改已添加商品的数量！"_qs;
    return result;
  }

  Transaction transaction(accountDb());
  result.number = numberFor(Lines::Draft, number, date);
  const QString sameCode = strIsTrue(session().cs_possk)
                               ? lookupValue(
                                     "select a.id from jxc_jhsp a,jxc_goods b where a.g_sn=b.g_sn and a.j_sn=? and "
                                     "b.g_sptm=? and a.a_name=? "
                                     "order by a.id",
                                     result.number, barcode, session().a_name)
                               : QString();
  if (sameCode.isEmpty()) {
    LineDraft draft = newLine(goods);
    draft.amounts.setQuantity(1);
    result.id = addLine(Lines::Draft, result.number, date, draft).id;
    result.outcome = Scan::Added;
  } else {
    result.id = sameCode.toLongLong();
    increaseByOne(result.id);
    result.outcome = Scan::Increased;
  }
  transaction.commit();
  return result;
}

// ---- staging -----------------------------------------------------------------------------------------------------

bool mayStage(const QString& goods, const QString& number, Lines target, PickingMemory& memory, Prompt& prompt) {
  using namespace receipt_lines_detail;
  if (!isStaged(goods) && !goodsOnDocument(family(), number, goods, target == Lines::Draft)) return true;
  if (memory.refuseRepeats) return false;
  if (prompt.ask(u"该商品已添加，需要重复添加吗？"_qs)) return true;
  memory.refuseRepeats = true;
  return false;
}

std::int64_t stageGoods(const QString& goods, double quantity, const QString& number, Lines target,
                        PickingMemory& memory, Prompt& prompt) {
  if (!mayStage(goods, number, target, memory, prompt)) return 0;
  LineDraft draft = newLine(goods, true);
  draft.amounts.setQuantity(quantity);
  return addLine(Lines::Staging, number, {}, draft).id;
}

CopyResult copyStaged(const QString& number, const QString& date, Lines target) {
  using namespace receipt_lines_detail;
  CopyResult result;
  Transaction transaction(accountDb());
  execSql("delete from jxc_tempspxf where (g_sn='' or g_sn is null) and a_name=?", session().a_name);
  result.number = numberFor(target, number, date);
  const std::int64_t copied = execSql(
      "insert into jxc_jhsp (j_sn,jh_dj,jh_sl,jh_zje,g_sn,a_name,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_rksl,jh_qxsl,jh_dzl,"
      "gl_djh2,jh_bz,id2,id3,t_ph,t_scrq,t_yxq) "
      "select ?,ts_dj,ts_sl,ts_zje,g_sn,a_name,ts_je,ts_tax,ts_taxdj,ts_taxje,ts_sl*?,0,ts_dzl,"
      "'',left(ts_note,64),0,0,t_ph,t_scrq,t_yxq from jxc_tempspxf where a_name=? order by id",
      result.number, putAway(1), session().a_name);
  result.lines = static_cast<int>(copied);
  clearStaging();
  refreshIfWaiting(target, result.number);
  transaction.commit();
  return result;
}

}  // namespace jxc::receipt
