#include "maintenance/closing_kept.h"

#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "maintenance/closing_tables.h"
#include "stock/document_family.h"
#include "stock/loans.h"
#include "stock/partial_movement.h"

#include <array>
#include <vector>

namespace jxc::closing {
namespace closing_kept_detail {

QString endOf(const QString& day) {
  return day + u" 23:59:59"_qs;
}

constexpr std::array<const PartialMovement*, 2> parts{&partial::putaway, &partial::issue};

/// Audited heads `c` and lines `b` of a source up to the day, of which a line is open.
std::string openSources(const PartialMovement& m) {
  const DocumentFamily& s = *m.source;
  return compose(" from {} b,{} c where b.{}=c.{} and c.{}=1 and c.{}<=? and b.g_sn<>'00000000' and ",
                 {s.lines, s.head, s.number, s.number, s.status, s.date}) +
         partial::isOpen(m, "b");
}
constexpr char lentOut[] =
    " from jxc_khjhsp b,jxc_khjh c where b.gl_djh=c.gl_djh and c.jh_status=1 and c.jh_flag='jh' and c.jh_rq<=? and ";

/// What stays, and what has to stay with it.
class Search {
 public:
  explicit Search(const Request& request) : request_(request), until_(endOf(request.day)) {}

  QSet<QString> run() {
    if (request_.keepsUnfinished) {
      for (const DocumentTable& table : documentTables())
        if (!table.status.empty())
          keepAll(
              compose("select {} from {} where {}<>1 and {}<=?", {table.number, table.head, table.status, table.date}));
      keepAll("select distinct b.gl_djh" + std::string(lentOut) + partial::isOpen(partial::lending, "b"));
    }
    for (const PartialMovement* m : parts)
      keepSources(*m);
    // What came back after the day can be taken back, and is open again then.
    keepAll(
        "select distinct a.gl_djh from jxc_khjhsp a,jxc_khjhsp b,jxc_khjh c where b.id2=a.id and b.id<>a.id and "
        "b.gl_djh=c.gl_djh and c.jh_rq>?");
    for (std::size_t at = 0; at < found_.size(); ++at)
      keepBehind(QString(found_[at]));
    return numbers_;
  }

 private:
  void keep(const QString& number) {
    if (number.isEmpty() || numbers_.contains(number)) return;
    numbers_.insert(number);
    found_.push_back(number);
  }
  void keepRows(const RowSet& rows) {
    for (int row = 0; row < rows.rowCount(); ++row)
      keep(rows.text(row, 0));
  }
  void keepAll(const std::string& select) { keepRows(openSelect(select, until_)); }

  void keepSources(const PartialMovement& m) {
    const DocumentFamily &s = *m.source, &f = *m.family, &back = *m.back;
    keepAll(compose("select distinct b.{}", {s.number}) + openSources(m));
    keepAll(compose("select distinct a.{} from {} a,{} b where a.{}=b.{} and b.{}>?",
                    {f.line.source, f.lines, f.head, f.number, f.number, f.date}));
    // A rest that never comes is closed by a return; taken back, it opens the line again.
    keepAll(
        compose("select distinct a.{} from {} a,{} b,{} c where b.{}=c.{} and c.{}>? and b.{}<>0 and a.{}=b.{} and "
                "a.g_sn=b.g_sn and a.{}>0",
                {s.number, s.lines, back.lines, back.head, back.number, back.number, back.date, back.line.link,
                 s.line.link, back.line.link, m.cancelled()}));
  }

  /// A source is proved by its parts, a loan by its returns; either may touch others. A sale that a customer made of a
  /// loan goes only with it.
  void keepBehind(const QString& number) {
    const DocumentFamily* const family = findFamily(number);
    if (!family) return;
    for (const PartialMovement* m : parts) {
      const DocumentFamily& f = *m->family;
      if (family == m->source)
        keepRows(openSelect(compose("select distinct a.{} from {} a,{} b where a.{}=b.{} and b.{}=1 and a.{}=?",
                                    {f.number, f.lines, f.head, f.number, f.number, f.status, f.line.source}),
                            number));
      if (family == &f)
        keepRows(
            openSelect(compose("select distinct {} from {} where {}=?", {f.line.source, f.lines, f.number}), number));
    }
    if (family == &families::loan)
      keepRows(openSelect(
          "select distinct b.gl_djh from jxc_khjhsp a,jxc_khjhsp b where b.id2=a.id and b.id<>a.id and a.gl_djh=?",
          number));
    if (family == &families::loanReturn)
      keepRows(openSelect(
          "select distinct a.gl_djh from jxc_khjhsp a,jxc_khjhsp b where b.id2=a.id and b.id<>a.id and b.gl_djh=?",
          number));
    if (family == &families::sale)
      if (const QString back = loans::conversionOf(number); !back.isEmpty()) keep(back);
  }

  const Request& request_;
  QString until_;
  QSet<QString> numbers_;
  std::vector<QString> found_;
};

const QString stays = QStringLiteral("保留"), goes = QStringLiteral("删除"),
              goesCarried = QStringLiteral("删除，余额结转");

Unfinished told(const QString& what, const RowSet& sums, const QString& fate) {
  return {what, sums.number(0, 0), sums.number(0, 1), sums.number(0, 2), fate};
}

}  // namespace closing_kept_detail

QSet<QString> numbersThatStay(const Request& request) {
  return closing_kept_detail::Search(request).run();
}

void stageNumbers(const QSet<QString>& numbers) {
  clearStaging();
  for (const QString& number : numbers)
    insertRow("jxc_tempspxf", {{"g_sn", number}, {"a_name", session().a_name}});
}

std::vector<Unfinished> unfinished(const Request& request) {
  using namespace closing_kept_detail;
  const QString until = endOf(request.day);
  const QString& byBox = request.keepsUnfinished ? stays : goes;
  std::vector<Unfinished> all;
  for (const DocumentFamily& f : documentFamilies()) {
    if (f.sharesTables) continue;
    const std::string money = f.hasMoney() ? compose("sum({})", {f.due}) : std::string("0");
    const RowSet sums = openSelect(
        "select count(*),0," + money + compose(" from {} where {}<>1 and {}<=?", {f.head, f.status, f.date}), until);
    Unfinished waiting = told(u"未审核的"_qs + words(f.name), sums, byBox);
    waiting.money *= f.headSign;
    all.push_back(waiting);
  }
  for (const PartialMovement* m : parts) {
    const DocumentFamily& s = *m->source;
    const std::string open = partial::openPieces(*m, "b");
    RowSet sums = openSelect("select count(distinct_number),sum(pieces),sum(money) from (select " +
                                 compose("b.{} as distinct_number,sum(", {s.number}) + open + ") as pieces,sum(" +
                                 open + compose("*b.{}) as money", {s.line.columns->price}) + openSources(*m) +
                                 compose(" group by b.{}) x", {s.number}),
                             until);
    all.push_back(told(u"待"_qs + words(m->doing) + u"的"_qs + words(m->sourceWord), sums, stays));
  }
  const std::string open = partial::openPieces(partial::lending, "b");
  const std::string isLent = lentOut + partial::isOpen(partial::lending, "b");
  all.push_back(told(u"未还清的客户借货单"_qs,
                     openSelect("select count(djh),sum(pieces),sum(money) from (select b.gl_djh as djh,sum(" + open +
                                    ") as pieces,sum(" + open + "*b.jh_dj) as money" + isLent + " group by b.gl_djh) x",
                                until),
                     byBox));
  all.push_back(told(u"其中未退的押金"_qs,
                     openSelect("select count(djh),0,sum(money) from (select b.gl_djh as djh,sum(" +
                                    loans::depositLeft("b") + ") as money" + isLent +
                                    " group by b.gl_djh) x where "
                                    "money>0",
                                until),
                     byBox));
  for (const DocumentFamily& f : documentFamilies()) {
    if (!f.hasMoney()) continue;
    const std::string rest = compose("{}-{}-{}", {f.due, f.paid, f.collected});
    const RowSet sums = openSelect(
        "select count(*),0,sum(" + rest + ")" +
            compose(" from {} where {}=1 and {}<>0 and {}<=? and abs(", {f.head, f.status, f.settlement, f.date}) +
            rest + ")>0.005",
        until);
    Unfinished owed = told(u"未结清的"_qs + words(f.name), sums, goesCarried);
    owed.money *= f.headSign;
    all.push_back(owed);
  }
  const auto waiting = [&](const QString& what, const std::string& select, const QString& fate) {
    all.push_back(told(what, openSelect(select, until), fate));
  };
  waiting(u"未审核的现金银行收付"_qs, "select count(*),0,sum(xj_je) from jxc_xjyh where xj_chk<>'1' and xj_rq<=?",
          byBox);
  waiting(u"未审核的应收应付与收付款单"_qs,
          "select count(*),0,sum(k_yfje)+sum(k_sfje) from jxc_ysyfk_dj where k_check=0 and k_rq<=?", byBox);
  waiting(u"未审核的费用及收入"_qs, "select count(*),0,sum(fy_je) from jxc_yyfy where fy_chk<>'1' and fy_rq<=?", byBox);
  waiting(u"未审核的发票"_qs,
          "select count(*),0,sum(fp_yfje)+sum(fp_kpje) from jxc_fpdjb where fp_check=0 and fp_rq<=?", byBox);
  waiting(u"POS销售单"_qs, "select count(*),0,sum(pos_yfje) from jxc_posxsd where pos_xsrq<=?", goes);
  std::erase_if(all, [](const Unfinished& each) { return each.documents == 0; });
  return all;
}

}  // namespace jxc::closing
