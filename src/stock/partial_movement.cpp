#include "stock/partial_movement.h"

#include "core/fillers.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/cancel_checks.h"
#include "stock/document.h"
#include "stock/document_rules.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"

#include <map>
#include <set>
#include <vector>

namespace jxc::partial {
namespace partial_movement_detail {

/// Heads `c` that say that something of them is open, their open lines `b`, the goods `a`.
std::string openTables(const PartialMovement& m) {
  return compose("({} c inner join {} b on c.{}=b.{}) inner join jxc_goods a on b.g_sn=a.g_sn",
                 {m.source->head, m.source->lines, m.source->number, m.source->number});
}

/// Heads that say that something of them is open. Without a flag a head does not say so itself, and may stand among
/// those of another kind: loans and their returns.
Filter openHeads(const DocumentFamily& s) {
  Filter filter;
  if (s.allMoved.empty())
    filter.add(compose("c.{} like ?", {s.number}), words(s.prefix) + u'%');
  else
    filter.add(compose("c.{}=0", {s.allMoved}));
  return filter;
}

Filter conditions(const PartialMovement& m, const OpenLines& wanted) {
  const DocumentFamily& s = *m.source;
  Filter filter = openHeads(s);
  // Of one document, by its number: as a range the state does not tempt SQLite to walk through all that are audited.
  filter.add(compose(wanted.source.isEmpty() ? "c.{}=1" : "c.{}>0", {s.status})).add(isOpen(m, "b"));
  addChoice(filter, compose("c.{}", {s.partner}), wanted.partner);
  addChoice(filter, compose("c.{}", {s.warehouse}), wanted.warehouse);
  addChoice(filter, compose("c.{}", {s.number}), wanted.source);
  addChoice(filter, "a.g_sptm", wanted.barcode);
  if (wanted.id != 0) filter.add(compose("b.{}=?", {s.line.link}), wanted.id);
  addKey(filter, {.key = wanted.key}, {"c." + std::string(s.number), "a.g_sn", "a.g_name", "a.g_jm", "a.g_sptm"});
  return filter;
}

struct Head {
  QString number, date, warehouse, checker;
};
Ahead askHead(const PartialMovement& m, const QString& number) {
  const DocumentFamily& f = *m.family;
  return sendAhead(compose("select * from {} where {}=1 and {}=? order by id", {f.head, f.status, f.number}), number);
}
std::optional<Head> headIn(const PartialMovement& m, const RowSet& rows) {
  const DocumentFamily& f = *m.family;
  if (rows.isEmpty()) return {};
  const Row row = rows.front();
  return Head{row.text(f.number), row.text(f.date), row.text(f.warehouse), row.text(f.checker)};
}

/// What a document moves: pieces of goods, of lines of its sources, and the sources.
struct Moves {
  std::map<QString, double> goods;
  std::map<std::int64_t, double> lines;
  std::set<QString> sources;
  std::int64_t count = 0;
};
Ahead askMoves(const PartialMovement& m, const QString& number) {
  const DocumentFamily& f = *m.family;
  return sendAhead(compose("select g_sn,{} as sl,{} as source,{} as line from {} where {}=? and g_sn<>'00000000' order "
                           "by id",
                           {f.line.columns->quantity, f.line.source, f.line.sourceLine, f.lines, f.number}),
                   number);
}
Moves movesIn(const RowSet& rows) {
  Moves moves;
  for (const Row row : rows) {
    moves.goods[row.text("g_sn")] += row.number("sl");
    moves.lines[row.integer("line")] += row.number("sl");
    moves.sources.insert(row.text("source"));
    ++moves.count;
  }
  return moves;
}
std::optional<Head> readHead(const PartialMovement& m, const QString& number) {
  return headIn(m, askHead(m, number).rows());
}

/// The shelf and the goods master, by so many pieces; a balance that is missing is made.
void moveGoods(const std::map<QString, double>& goods, const Head& head, int direction) {
  std::vector<std::pair<const QString*, Ahead>> balances;
  for (const auto& [sn, pieces] : goods) {
    balances.emplace_back(&sn, sendAhead("update jxc_kcsp set kc_sl=kc_sl+(?) where ck_sn=? and g_sn=?",
                                         direction * pieces, head.warehouse, sn));
    postSql("update jxc_goods set g_kc=g_kc+(?) where g_sn=?", direction * pieces, sn);
  }
  for (const auto& [sn, balance] : balances)
    if (balance.changed() == 0)
      postSql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,0)",
              direction * goods.at(*sn), getGoodsCost(*sn, head.warehouse, head.date), *sn, head.warehouse);
}

/// A return that closed the rest of a line that this document moved a part of.
std::optional<QString> returnBehind(const PartialMovement& m, const QString& number) {
  const DocumentFamily &f = *m.family, &back = *m.back;
  const QString found = lookupValue(
      compose("select top 1 b.{} from {} a,{} b,{} c where a.{}=b.{} and a.g_sn=b.g_sn and b.{}=c.{} and c.{}=1 and "
              "a.{}=? and a.g_sn<>'00000000' order by a.id",
              {back.number, f.lines, back.lines, back.head, f.line.sourceLine, back.line.link, back.number, back.number,
               back.status, f.number}),
      number);
  if (found.isEmpty()) return {};
  const QString doing = words(m.doing);
  return doing + u"单："_qs + number + u"，至少有一种商品做了取消"_qs + doing + u"，\r\n\r\n请先取消审核退货单："_qs +
         found + u"，\r\n\r\n然后才能取消审核该"_qs + doing + u"单！"_qs;
}

/// What lay on the shelf through this document may have left it since.
Refusal shortWhenGone(const PartialMovement& m, const Head& head) {
  if (m.direction < 0) return {};
  return checkStockShort(head.number, head.warehouse, QStringView(m.family->prefix));
}

void undo(const PartialMovement& m, const Head& head) {
  const DocumentFamily &f = *m.family, &s = *m.source;
  writeLog(words(f.cancelledLog) + head.number);
  postSql(compose("delete from {} where {}=0 and {}=?", {f.head, f.status, f.number}), head.number);
  const Moves moves = movesIn(askMoves(m, head.number).rows());
  moveGoods(moves.goods, head, -m.direction);
  for (const auto& [line, pieces] : moves.lines)
    postSql(compose("update {} set {}=iif({}<?,0,{}-(?)) where {}=?",
                    {s.lines, m.moved(), m.moved(), m.moved(), s.line.link}),
            pieces, pieces, line);
  for (const QString& source : moves.sources)
    postSql(compose("update {} set {}=0", {s.head, s.allMoved}) +
                (m.emptied.empty() ? std::string() : compose(",{}=''", {m.emptied})) +
                compose(" where {}=?", {s.number}),
            source);
  postSql(compose("update {} set {}=0,{}='',{}='' where {}=?", {f.head, f.status, f.checkDate, f.checker, f.number}),
          head.number);
  refreshMonthStock(head.warehouse, head.date.left(7));
}

}  // namespace partial_movement_detail

const PartialMovement* behind(const DocumentFamily& source) {
  for (const PartialMovement* each : {&putaway, &issue})
    if (each->source == &source) return each;
  return nullptr;
}

std::string isOpen(const PartialMovement& m, std::string_view line) {
  const std::string a(line);
  return compose("{}>{}+{}", {a + '.' + std::string(m.quantity()), a + '.' + std::string(m.moved()),
                              a + '.' + std::string(m.cancelled())});
}

std::string openPieces(const PartialMovement& m, std::string_view line) {
  const std::string a(line);
  return compose("({}-{}-{})", {a + '.' + std::string(m.quantity()), a + '.' + std::string(m.moved()),
                                a + '.' + std::string(m.cancelled())});
}

std::string giftMark(const DocumentFamily& f, std::string_view line) {
  if (!f.partial || f.partial->source->line.gift.empty()) return {};
  const DocumentFamily& s = *f.partial->source;
  const std::string a(line);
  return compose(" & (select max(gift.{}) from {} gift where gift.{}={} and gift.g_sn={})",
                 {s.line.gift, s.lines, s.line.link, a + '.' + std::string(f.line.sourceLine), a + ".g_sn"});
}

Sql openLines(const PartialMovement& m, const OpenLines& wanted) {
  const DocumentFamily& s = *m.source;
  const std::string gift =
      s.line.gift.empty() ? "''" : compose("iif(b.{} is null,'',b.{})", {s.line.gift, s.line.gift});
  return Sql(compose("select b.id,b.{} as lid,c.{} as djh,c.{} as rq,c.{} as partner,c.ck_sn,b.g_sn,",
                     {s.line.link, s.number, s.date, s.partner}) +
             "a.g_name & " + gift + " as g_name,a.g_jm,a.gg_name,a.color_name,a.dw_name,a.g_sptm," +
             compose("b.{} as sl,b.{} as movedsl,", {m.quantity(), m.moved()}) + openPieces(m, "b") +
             " as opensl,iif(k.kc_sl is null,0,k.kc_sl) as kc_sl from (" + partial_movement_detail::openTables(m) +
             compose(") left join jxc_kcsp k on k.g_sn=b.g_sn and k.ck_sn=c.{}", {s.warehouse}))
      .where(partial_movement_detail::conditions(m, wanted))
      .add(compose(" order by c.{},c.id,b.id", {s.date}));
}

Sql openOf(const PartialMovement& m, const Criteria& criteria, const Warehouses& warehouses) {
  const DocumentFamily& s = *m.source;
  Filter filter = partial_movement_detail::openHeads(s);
  filter.add(compose("c.{}=1", {s.status})).add(isOpen(m, "b")).add("b.g_sn<>'00000000'");
  addChoice(filter, "b.g_sn", criteria.goods);
  warehouses.restrict(filter, compose("c.{}", {s.warehouse}));
  return Sql(compose("{} c inner join {} b on c.{}=b.{}", {s.head, s.lines, s.number, s.number})).where(filter);
}

Sql waitingSources(const PartialMovement& m, const OpenLines& wanted) {
  const DocumentFamily& s = *m.source;
  const DocumentPartner& partner = partnerOf(s);
  const std::string heads = compose("c.id,c.{},c.{},c.{},p.{},c.{},d.ck_name,c.u_sn,e.u_name,c.{}",
                                    {s.number, s.date, s.partner, partner.name, s.warehouse, s.note});
  Filter filter = partial_movement_detail::conditions(m, wanted);
  addWarehouseBinding(filter, "d.ck_asn");
  return Sql(compose("select c.id,c.{} as djh,c.{} as rq,c.{} as partner,p.{} as partner_name,c.{} as ck_sn,d.ck_name,"
                     "c.u_sn,e.u_name,c.{} as dnote,count(*) as openlines,sum(",
                     {s.number, s.date, s.partner, partner.name, s.warehouse, s.note}) +
             openPieces(m, "b") + ") as opensl from (((" + partial_movement_detail::openTables(m) +
             compose(") left join {} p on c.{}=p.{}) left join jxc_ckxx d on c.{}=d.ck_sn) left join jxc_user e on "
                     "c.u_sn=e.u_sn",
                     {partner.table, s.partner, partner.key, s.warehouse}))
      .where(filter)
      .add(" group by " + heads + compose(" order by c.{},c.id", {s.date}));
}

void markEmptied(const PartialMovement& m, const QString& source, const QString& day) {
  const DocumentFamily& s = *m.source;
  const std::string where = compose(" where {}=0 and {}=? and not exists (select b.id from {} b where b.{}=? and ",
                                    {s.allMoved, s.number, s.lines, s.number}) +
                            isOpen(m, "b") + ")";
  if (m.emptied.empty() || day.isEmpty())
    postSql(compose("update {} set {}=1", {s.head, s.allMoved}) + where, source, source);
  else
    postSql(compose("update {} set {}=1,{}=?", {s.head, s.allMoved, m.emptied}) + where, day, source, source);
}

double takenBy(const PartialMovement& m, const QString& number, std::int64_t sourceLine, std::int64_t except) {
  const DocumentFamily& f = *m.family;
  return lookupNumber(compose("select sum({}) from {} where {}=? and {}=? and id<>?",
                              {f.line.columns->quantity, f.lines, f.number, f.line.sourceLine}),
                      number, sourceLine, except);
}

std::optional<QString> standsAgainst(const PartialMovement& m, const QString& number) {
  const DocumentFamily &f = *m.family, &s = *m.source;
  const std::string_view quantity = f.line.columns->quantity;
  const auto place = [&](const RowSet& line) {
    return words(m.sourceWord) + u'【' + line.text(0, 0) + u"】的商品【"_qs + line.text(0, 1) + u"】\r\n\r\n"_qs;
  };
  const Ahead askedGone = sendAhead(
      compose("select top 1 b.{},b.g_sn from ({} b inner join {} h on b.{}=h.{}) left join {} a on a.{}=b.{} and "
              "a.g_sn=b.g_sn and a.{}=b.{} where b.{}=? and (a.id is null or not exists (select c.id from {} c where "
              "c.{}=b.{} and c.{}=1 and c.{}=h.{} and c.{}=h.{})) order by b.id",
              {f.line.source, f.lines, f.head, f.number, f.number, s.lines, s.line.link, f.line.sourceLine, s.number,
               f.line.source, f.number, s.head, s.number, f.line.source, s.status, s.warehouse, f.warehouse, s.partner,
               f.partner}),
      number);
  const Ahead askedOver = sendAhead(
      compose(
          "select top 1 x.djh,x.g_sn from (select {} as djh,{} as lid,g_sn,sum({}) as sl,min(id) as firstid from {} "
          "where {}=? and g_sn<>'00000000' group by {},{},g_sn) x,{} a where a.{}=x.lid and a.g_sn=x.g_sn and "
          "a.{}=x.djh and a.{}<a.{}+a.{}+x.sl-0.0000001 order by x.firstid",
          {f.line.source, f.line.sourceLine, quantity, f.lines, f.number, f.line.source, f.line.sourceLine, s.lines,
           s.line.link, s.number, m.quantity(), m.moved(), m.cancelled()}),
      number);
  const RowSet &gone = askedGone.rows(), &over = askedOver.rows();
  if (!gone.isEmpty())
    return place(gone) + u"已取消审核，或不是该往来单位、该仓库的单据，\r\n\r\n不能"_qs + words(m.doing) +
           u"，请检查！"_qs;
  if (over.isEmpty()) return {};
  const QString doing = words(m.doing);
  return place(over) + u"已经完成"_qs + doing + u'或' + doing + u"数量大于"_qs + words(m.sourceDeed) +
         u"数量或已经取消"_qs + doing + u"，\r\n\r\n不能重复"_qs + doing + u"，请检查！"_qs;
}

void post(const PartialMovement& m, const QString& number) {
  using namespace partial_movement_detail;
  const DocumentFamily& s = *m.source;
  const Ahead asked = askHead(m, number);
  const Moves moves = movesIn(askMoves(m, number).rows());
  const std::optional<Head> head = headIn(m, asked.rows());
  moveGoods(moves.goods, *head, m.direction);
  for (const auto& [line, pieces] : moves.lines)
    postSql(compose("update {} set {}={}+(?) where {}=?", {s.lines, m.moved(), m.moved(), s.line.link}), pieces, line);
  writeLog(words(m.auditLog) + number +
           (m.auditLogEnd.empty() ? QString() : u"，共%1"_qs.arg(moves.count) + words(m.auditLogEnd)));
  for (const QString& source : moves.sources)
    markEmptied(m, source, head->date);
  refreshMonthStock(head->warehouse, head->date.left(7));
}

bool takeBack(const PartialMovement& m, const QString& number, Prompt& prompt, CancelMode mode) {
  using namespace cancel_checks;
  namespace detail = partial_movement_detail;
  const DocumentFamily& family = *m.family;
  if (!hasCancelRight(family, prompt)) return false;
  if (isRefused(detail::returnBehind(m, number), prompt)) return false;
  std::optional<detail::Head> head = detail::readHead(m, number);
  if (!head || !isFreeOfChecker(family, number, head->checker, prompt) || !passesGate(number, head->date, prompt) ||
      !isConfirmed(usualQuestion(number), prompt, mode))
    return false;
  const auto agreed = detail::shortWhenGone(m, *head);
  if (!mayGoShort(agreed, prompt)) return false;

  Refusal changed;
  const bool done = onDocument(number, u"取消审核", [&] {
    Transaction transaction(accountDb());
    const PeriodLock lock;
    head = detail::readHead(m, number);
    changed = head ? lock.against(head->date, OnDay::Booked) : Refusal(changedMeanwhile(number));
    if (!changed) changed = detail::returnBehind(m, number);
    if (!changed) {
      const auto now = detail::shortWhenGone(m, *head);
      if (now != agreed) changed = now;
    }
    if (!changed) {
      detail::undo(m, *head);
      transaction.commit();
    }
    return !changed;
  });
  return !isRefused(changed, prompt) && done;
}

}  // namespace jxc::partial
