#include "masterdata/quotations.h"

#include "core/clock.h"
#include "core/deletion.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/goods_to_pick.h"

#include <set>

namespace jxc::quotations {
namespace quotations_detail {

constexpr qsizetype kNoteWidth = 200;

/// The columns of the table of one side.
struct Columns {
  std::string_view price, date, note;
};
const Columns& columnsOf(const PartnerSide& side) {
  static constexpr Columns promised{"kb_bj", "kb_bjrq", "kb_note"}, offered{"gb_bj", "gb_bjrq", "gb_note"};
  return side.isCustomer() ? promised : offered;
}

/// A price of nothing would sell for nothing.
bool isNoPrice(double yuan, Prompt& prompt) {
  return refused({{roundMoney(yuan) <= 0, u"报价必须大于0！"_qs, Subject::Price},
                  {yuan >= kDearest, u"报价不正确，请重新输入！"_qs, Subject::Price}},
                 prompt);
}

/// Goods of this operator that are picked already take the new price; `picked` are all of them.
void write(const QString& goods, double yuan, const std::set<QString>& picked) {
  if (picked.contains(goods))
    execSql("update jxc_tempspxf set ts_dj=? where g_sn=? and a_name=?", roundMoney(yuan), goods, session().a_name);
  else
    insertRow("jxc_tempspxf", {{"g_sn", goods}, {"a_name", session().a_name}, {"ts_dj", roundMoney(yuan)}});
}

std::set<QString> picked() {
  std::set<QString> goods;
  for (const Row row : openSelect("select g_sn from jxc_tempspxf where a_name=?", session().a_name))
    goods.insert(row.text("g_sn"));
  return goods;
}

class QuotedGoods final : public ManyLines {
 public:
  LineDraft newLine(const QString& goods, const LinePlace&, bool) const override {
    LineDraft line;
    line.goods = goods;
    return line;
  }
  bool goodsStandOnce() const override { return true; }
  Sql goodsToPick(const LinePlace&, const PickFilter& wanted) const override { return goodsToQuote(wanted); }
  bool mayStage(const QString&, const LinePlace&, Lines, PickingMemory&, Prompt&) const override { return true; }
  bool stockAllows(const QString&, double, const LinePlace&, Prompt&, PickingMemory*) const override { return true; }
  std::optional<AddedLines> addLines(Lines, const LinePlace& place, std::span<const LineDraft> drafts,
                                     const LineProgress& progress) const override {
    AddedLines added{.number = place.number};
    Transaction transaction(accountDb());
    const std::set<QString> before = picked();
    for (const LineDraft& line : drafts) {
      write(line.goods, line.amounts.price(), before);
      if (!goesOn(progress, static_cast<std::size_t>(++added.lines), drafts.size())) return std::nullopt;
    }
    transaction.commit();
    return added;
  }
};

}  // namespace quotations_detail

const LineImport sheet = {.title = "报价导入",
                          .templateFile = "报价模板.xlsx",
                          .hasNote = false,
                          .priceAlone = true,
                          .price = u"报价",
                          .notOffered = u"该商品不能报价",
                          .repeated = u"商品重复"};

Sql list(const PartnerSide& side, const Criteria& criteria) {
  const auto& columns = quotations_detail::columnsOf(side);
  Filter filter;
  addPeriod(filter, criteria, "a." + std::string(columns.date));
  addChoice(filter, "a." + std::string(side.sn), criteria.partner);
  addChoice(filter, "a.u_sn", criteria.employee);
  addKey(filter, criteria, {"a.g_sn", "b.g_name", "b.g_jm", "b.g_sptm", "b.gg_name"});
  if (!criteria.kind.isEmpty())
    filter.add(compose("a.{} like ?", {columns.note}), u'%' + sanitizeKeyword(criteria.kind) + u'%');
  if (criteria.has(kOnlyLast))
    filter.add(compose("not exists (select x.id from {} x where x.g_sn=a.g_sn and x.{}=a.{} and x.id>a.id)",
                       {side.quotes, side.sn, side.sn}));
  return Sql(compose("select a.id,a.{} as rq,a.g_sn,b.g_name,b.gg_name,b.color_name,b.dw_name,a.{} as bj,b.g_jj,b.g_sj,"
                     "a.{} as sn,c.{} as name,d.u_name,a.{} as note,a.a_name from (({} a inner join jxc_goods b "
                     "on a.g_sn=b.g_sn) inner join {} c on a.{}=c.{}) left join jxc_user d on a.u_sn=d.u_sn",
                     {columns.date, columns.price, side.sn, side.name, columns.note, side.quotes, side.table, side.sn,
                      side.sn}))
      .where(filter)
      .add(" order by a.id");
}

std::optional<Proposal> propose(const PartnerSide& side, const QString& partner, const QString& goods) {
  const RowSet known = openSelect("select g_name,g_jj,g_sj from jxc_goods where g_sn=?", goods);
  if (known.isEmpty()) return {};
  const Row row = known.front();
  const RowSet last = openSelect(compose("select top 1 {} from {} where g_sn=? and {}=? order by id desc",
                                         {quotations_detail::columnsOf(side).price, side.quotes, side.sn}),
                                 goods, partner);
  const double bought = row.number("g_jj"), sold = row.number("g_sj");
  return Proposal{row.text("g_name"), bought, sold,
                  !last.isEmpty()     ? last.number(0, 0)
                  : side.isCustomer() ? sold
                                      : bought};
}

Sql goodsToQuote(const PickFilter& wanted) {
  Filter filter;
  addGoodsConditions(filter, goodsFilterOf(wanted));
  return Sql("select a.* from jxc_goods a").where(filter).add(" order by a.g_sn");
}

bool stage(const QString& goods, double yuan, Prompt& prompt) {
  if (quotations_detail::isNoPrice(yuan, prompt)) return false;
  Transaction transaction(accountDb());
  quotations_detail::write(goods, yuan, quotations_detail::picked());
  transaction.commit();
  return true;
}

std::optional<int> save(const PartnerSide& side, const Quotation& head, Prompt& prompt) {
  const QString noun = QStringView(side.noun).toString();
  const auto isKnown = [&] {
    return exists(compose("select {} from {} where {}=?", {side.sn, side.table, side.sn}), head.partner);
  };
  const auto& columns = quotations_detail::columnsOf(side);
  if (refused({{head.name.trimmed().isEmpty(), noun + u"名称必须填写！"_qs, Subject::Partner},
               {head.partner.isEmpty() || !isKnown(), noun + u"名称不正确，重新填写！"_qs, Subject::Partner},
               {head.date.isEmpty(), u"报价日期必须填写！"_qs, Subject::Date},
               {!exists(stagedLines()), u"没有选择报价商品，不能保存！"_qs, Subject::Goods}},
              prompt))
    return {};
  Transaction transaction(accountDb());
  const std::int64_t quoted = execSql(
      compose("insert into {} (g_sn,{},{},{},{},a_name,u_sn) select g_sn,ts_dj,?,?,?,a_name,? from jxc_tempspxf where "
              "a_name=? order by id",
              {side.quotes, columns.price, columns.date, columns.note, side.sn}),
      head.date, sanitizeKeyword(head.note).left(quotations_detail::kNoteWidth), head.partner, head.employee,
      session().a_name);
  clearStaging();
  transaction.commit();
  return static_cast<int>(quoted);
}

bool change(const PartnerSide& side, std::int64_t id, double yuan, const QString& note, Prompt& prompt) {
  if (quotations_detail::isNoPrice(yuan, prompt)) return false;
  const auto& columns = quotations_detail::columnsOf(side);
  updateRow(
      side.quotes, id,
      {{columns.price, roundMoney(yuan)}, {columns.note, sanitizeKeyword(note).left(quotations_detail::kNoteWidth)}});
  return true;
}

bool remove(const PartnerSide& side, std::int64_t id, Prompt& prompt) {
  return deleteAsking(
      {.table = side.quotes, .question = u"您确定要删除该"_qs + QStringView(side.noun).toString() + u"报价信息吗！"_qs},
      id, prompt);
}

const ManyLines& lines() {
  static const quotations_detail::QuotedGoods all;
  return all;
}

}  // namespace jxc::quotations
