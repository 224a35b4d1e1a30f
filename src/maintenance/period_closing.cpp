#include "maintenance/period_closing.h"

#include "accounts/running_balance.h"
#include "core/clock.h"
#include "core/log.h"
#include "core/period_lock.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/bulk.h"
#include "engine/waiting.h"
#include "maintenance/closing_balances.h"
#include "maintenance/closing_kept.h"
#include "maintenance/closing_tables.h"

#include <QDate>

#include <algorithm>
#include <utility>
#include <vector>

namespace jxc::closing {
namespace period_closing_detail {

/// Thrown when the operator stops; the transaction takes all back.
struct Stopped {};

QString endOf(const QString& day) {
  return day + u" 23:59:59"_qs;
}

/// What `whatGoes` tells, with what stays staged.
RowSet listed(const Request& request, const std::vector<ItemFigures>& sums) {
  RowSet list({"id", "xm", "ds", "sl", "je", "cl"});
  std::int64_t id = 0;
  const auto add = [&](const QString& what, double documents, double quantity, double money, const QString& fate) {
    list.addInteger(++id);
    list.addText(what.toStdString());
    list.addReal(documents);
    list.addReal(quantity);
    list.addReal(money);
    list.addText(fate.toStdString());
  };
  for (const ItemFigures& sum : sums)
    if (sum.documents != 0) add(words(sum.item->name), sum.documents, sum.quantity, sum.money, u"删除"_qs);
  for (const Unfinished& each : unfinished(request))
    add(each.what, each.documents, each.quantity, each.money, each.fate);
  return list;
}

/// What becomes of what, and "3 张，数量 14，金额 80.00".
using Figures = std::pair<QString, QString>;
std::vector<Figures> figuresOf(const RowSet& list) {
  std::vector<Figures> all;
  for (const Row row : list)
    all.emplace_back(
        row.text("xm") + u"（"_qs + row.text("cl") + u'）',
        u"%1 张，数量 %2，金额 %3"_qs.arg(QString::number(row.integer("ds")), numberText(roundEps(row.number("sl"), 6)),
                                          QString::number(row.number("je"), 'f', 2)));
  return all;
}

/// One closing, inside its transaction. Every statement takes what is dated up to `until_`.
class Closing {
 public:
  Closing(const Request& request, const Progress& progress, const std::optional<RowSet>& agreed)
      : request_(request), until_(endOf(request.day)), progress_(progress), agreed_(agreed) {}

  RowSet run(const QString& archive) {
    step(2, u"记下结算前的余额"_qs);
    const Balances before(until_);
    step(10, u"查找要保留的单据"_qs);
    stageNumbers(numbersThatStay(request_));
    step(14, u"汇总单据"_qs);
    summarise();
    deleteDocuments();
    deleteMonths();
    carryStock();
    step(70, u"结转发票"_qs);
    carryInvoices();
    step(74, u"结转现金银行账"_qs);
    carryCash();
    step(78, u"结转往来账"_qs);
    carryPartners();
    step(84, u"清理费用"_qs);
    deleteRest();
    step(90, u"核对结算后的余额"_qs);
    const Balances after(until_);
    if (const auto differs = before.differs(after)) refuse(*differs);
    step(96, u"清理日志"_qs);
    takeLog();
    // Nothing may be written any more on what was carried; a later lock stays.
    if (PeriodLock().openFrom(request_.day) == request_.day) setPeriodLock(request_.day);
    insertRow("jxc_jsda", {{"da_time", clock::stamp()},
                           {"da_year", request_.day},
                           {"da_file", archive},
                           {"a_name", session().a_name},
                           {"da_ql", 0}});
    writeLog(u"数据结算，结算日期："_qs + request_.day);
    if (progress_) progress_(100, u"完成"_qs);  // not to be stopped any more: the file of the log is written
    return before.compared(after);
  }

 private:
  void step(int percent, const QString& doing) {
    if (progress_ && !progress_(percent, doing)) throw Stopped{};
  }

  [[noreturn]] static void refuse(const QString& why) {
    throw ClosingDiffers((u"结算没有进行，数据没有改变：\r\n\r\n"_qs + why).toStdString());
  }

  void summarise() {
    const QString today = clock::today();
    const std::vector<ItemFigures> sums = sumItems(until_);
    // Not every program that writes is one that is kept out: a till, a hand on the server.
    if (agreed_)
      if (const QString changed = changesBetween(*agreed_, listed(request_, sums)); !changed.isEmpty())
        refuse(u"确认以后结算内容又有了变化，请重新操作。\r\n\r\n"_qs + changed);
    for (const ItemFigures& sum : sums)
      insertRow("jxc_nj", {{"nj_jsrq", today},
                           {"nj_year", request_.day},
                           {"nj_xm", words(sum.item->name)},
                           {"nj_ds", sum.documents},
                           {"nj_sl", sum.quantity},
                           {"nj_je", sum.money}});
    execSql("delete from jxc_nj where nj_sl=0 and nj_ds=0");
  }

  void deleteDocuments() {
    const std::vector<DocumentTable> tables = documentTables();
    for (std::size_t i = 0; i < tables.size(); ++i) {
      const DocumentTable& t = tables[i];
      step(18 + static_cast<int>(i), u"删除单据"_qs);
      Filter filter;
      filter.add(compose("{}<=?", {t.date}), until_);
      if (!t.number.empty()) filter.add(notStaged(t.number));
      if (!t.lines.empty())
        execSql(Sql(compose("delete from {} where {} in (select {} from {}", {t.lines, t.number, t.number, t.head}))
                    .where(filter)
                    .add(")"));
      execSql(Sql(compose("delete from {}", {t.head})).where(filter));
    }
    // Contracts stay; those of documents that went are tied to none.
    execSql(
        "update jxc_htgl set gl_djh='' where gl_djh<>'' and gl_djh not in (select j_sn from jxc_jhd) and gl_djh not "
        "in (select gl_djh from jxc_lsxsd)");
  }

  /// The row of a month holds the stock at its end: that of the closing day's own month is still to be written.
  void deleteMonths() {
    const QDate day = QDate::fromString(request_.day, Qt::ISODate);
    const bool isLast = day.day() == day.daysInMonth();
    execSql(isLast ? "delete from jxc_kcjs where js_rq<=?" : "delete from jxc_kcjs where js_rq<?",
            request_.day.left(7));
  }

  /// The last row of each goods in each warehouse becomes its opening row, in its place: what follows it follows it
  /// still.
  void carryStock() {
    step(42, u"结转库存"_qs);
    clearStaging();
    // The balancing lines of documents are no goods: nothing of them is carried.
    execSql(
        "insert into jxc_tempspxf (rid,a_name) select max(x.id),? from jxc_goodslist x,(select max(gl_kdrq) as "
        "kdrq,g_sn,ck_sn from jxc_goodslist where gl_kdrq<=? and g_sn<>'00000000' group by g_sn,ck_sn) y where "
        "x.g_sn=y.g_sn and x.ck_sn=y.ck_sn and x.gl_kdrq=y.kdrq group by x.g_sn,x.ck_sn",
        session().a_name, until_);
    deleteLedgerRows();
    execSql(
        "update jxc_goodslist set gl_sl=gl_kc,gl_dj=gl_pjjj,gl_zje=gl_kczje,gl_je=gl_kczje,gl_sqje=gl_kczje,"
        "gl_sqsl=gl_kc,gl_djh='',gl_djh2='',gl_flag='qc',ghs_sn='',ghs_name=?,gl_note=?,gl_kdrq=?,gl_lr=0,gl_cbj=0,"
        "gl_zcb=0,gl_tax=0,gl_taxdj=gl_pjjj,gl_taxje=0,gl_dzl=1,gl_fdmc='' where gl_kdrq<=?",
        words(carriedWords), words(carriedWords), request_.day, until_);
    // With few digits of totals the value may have lost what the cost still has: a row that is replayed divides them.
    execSql(
        "update jxc_goodslist set gl_je=gl_kc*gl_pjjj,gl_zje=gl_kc*gl_pjjj where gl_flag='qc' and gl_kdrq=? and "
        "gl_note=? and round(iif(gl_kc=0,gl_pjjj,abs(gl_kczje/iif(gl_kc=0,1,gl_kc)))+0.000000001,?)<>gl_pjjj",
        request_.day, words(carriedWords), moneyDigits());
  }

  /// Month by month, so that the operator sees it go on and can stop it.
  void deleteLedgerRows() {
    const QDate last = QDate::fromString(request_.day, Qt::ISODate);
    const QString first = lookupValue("select min(gl_kdrq) from jxc_goodslist where gl_kdrq<>''").left(10);
    QDate end = QDate::fromString(first, Qt::ISODate);
    if (!end.isValid() || end > last) end = last;
    const double months = static_cast<double>(end.daysTo(last)) / 30 + 1;
    for (int month = 0;; ++month) {
      end = month == 0 ? QDate(end.year(), end.month(), end.daysInMonth()) : end.addDays(1).addMonths(1).addDays(-1);
      const bool isLast = end >= last;
      step(44 + static_cast<int>(26 * month / months), u"结转库存"_qs);
      execSql("delete from jxc_goodslist where gl_kdrq<=? and id not in (select rid from jxc_tempspxf where a_name=?)",
              isLast ? until_ : endOf(end.toString(Qt::ISODate)), session().a_name);
      if (isLast) return;
    }
  }

  void carryInvoices() {
    clearStaging();
    execSql(
        "insert into jxc_tempspxf (rid,a_name) select max(x.id),? from jxc_fpdjb x,(select max(fp_rq) as rq,"
        "fp_type,fp_ghskh from jxc_fpdjb where fp_check<>0 and fp_rq<=? group by fp_type,fp_ghskh) y where "
        "x.fp_check<>0 and x.fp_type=y.fp_type and x.fp_ghskh=y.fp_ghskh and x.fp_rq=y.rq group by "
        "x.fp_type,x.fp_ghskh",
        session().a_name, until_);
    deleteUnstaged("jxc_fpdjb", "fp_rq", "fp_check<>0");
    execSql("delete from jxc_fpdjb where fp_ljje=0 and fp_check<>0 and fp_rq<=?", until_);
    execSql(
        "update jxc_fpdjb set gl_djh='',fp_no='',fp_yfje=fp_ljje,fp_sfje=0,fp_kpje=0,fp_qcje=0,fp_kprq='',"
        "fp_djlx=?,fp_djtxt=?,fp_note=?,fp_rq=? where fp_check<>0 and fp_rq<=?",
        words(carriedKind), words(carriedWords), words(carriedWords), request_.day, until_);
  }

  void carryCash() {
    clearStaging();
    execSql(
        "insert into jxc_tempspxf (rid,a_name) select max(x.id),? from jxc_xjyh x,(select max(xj_rq) as kdrq,"
        "xj_kmmc from jxc_xjyh where xj_chk='1' and xj_rq<=? group by xj_kmmc) y where x.xj_chk='1' and "
        "x.xj_kmmc=y.xj_kmmc and x.xj_rq=y.kdrq group by x.xj_kmmc",
        session().a_name, until_);
    deleteUnstaged("jxc_xjyh", "xj_rq", "xj_chk='1'");
    execSql(
        "update jxc_xjyh set xj_je=xj_ljje,gl_djh='',xj_note=?,xj_rq=?,xj_dlx=?,ghs_name='',ghs_sn='' where "
        "xj_chk='1' and xj_rq<=?",
        words(carriedWords), request_.day, words(carriedWords), until_);
  }

  void carryPartners() {
    clearStaging();
    execSql(
        "insert into jxc_tempspxf (rid,a_name) select max(x.id),? from jxc_ysyfk x,(select max(k_rq) as rq,k_type,"
        "k_ghskh from jxc_ysyfk where k_rq<=? group by k_type,k_ghskh) y where x.k_type=y.k_type and "
        "x.k_ghskh=y.k_ghskh and x.k_rq=y.rq group by x.k_type,x.k_ghskh",
        session().a_name, until_);
    deleteUnstaged("jxc_ysyfk", "k_rq", {});
    execSql("delete from jxc_ysyfk where k_ljje=0 and k_rq<=?", until_);
    execSql(
        "update jxc_ysyfk set gl_djh='',gl_djh2='',k_fkfs='',k_yfje=k_ljje,k_sfje=0,k_yhje=0,k_qcje=0,k_djlx=?,"
        "k_djtxt=?,k_note=?,k_rq=? where k_rq<=?",
        words(carriedKind), words(carriedWords), words(carriedWords), request_.day, until_);
    clearStaging();
  }

  /// Rows up to the day that are not staged. What waits stays by the box: `counted` is what rows that count are known
  /// by, empty where all do.
  void deleteUnstaged(std::string_view table, std::string_view date, std::string_view counted) {
    Filter filter;
    filter.add(compose("{}<=?", {date}), until_)
        .add("id not in (select rid from jxc_tempspxf where a_name=?)", session().a_name);
    if (!counted.empty() && request_.keepsUnfinished) filter.add(counted);
    execSql(Sql(compose("delete from {}", {table})).where(filter));
  }

  void deleteRest() {
    const auto remove = [this](std::string_view table, std::string_view date, std::string_view counted) {
      Filter filter;
      filter.add(compose("{}<=?", {date}), until_);
      if (request_.keepsUnfinished) filter.add(counted);
      execSql(Sql(compose("delete from {}", {table})).where(filter));
    };
    remove("jxc_ysyfk_dj", "k_rq", "k_check<>0");
    remove("jxc_yyfy", "fy_rq", "fy_chk='1'");
  }

  /// The file with the rows of the log is written last: nothing of it is there when the closing fails.
  void takeLog() { takeLogRows(accountDb(), u"数据结算"_qs, until_); }

  const Request& request_;
  QString until_;
  const Progress& progress_;
  const std::optional<RowSet>& agreed_;
};

}  // namespace period_closing_detail

Refusal dayRefusal(const QString& day) {
  if (!QDate::fromString(day, Qt::ISODate).isValid()) return {u"请选择结算日期！"_qs, Subject::Date};
  if (day > clock::today()) return {u"结算日期不能在今天以后！"_qs, Subject::Date};
  const QString until = period_closing_detail::endOf(day);
  for (const char* statement :
       {"select top 1 id from jxc_goodslist where gl_kdrq<=?", "select top 1 id from jxc_xjyh where xj_rq<=?",
        "select top 1 id from jxc_ysyfk where k_rq<=?", "select top 1 id from jxc_fpdjb where fp_rq<=?",
        "select top 1 id from jxc_yyfy where fy_rq<=?"})
    if (exists(statement, until)) return {};
  return {day + u" 及以前没有数据，不需要结算！"_qs, Subject::Date};
}

QString proposedDay() {
  const QDate today = QDate::fromString(clock::today(), Qt::ISODate);
  const QString year = QDate(today.year() - 1, 12, 31).toString(Qt::ISODate);
  if (!dayRefusal(year) && closedAlready(year).isEmpty()) return year;
  return QDate(today.year(), today.month(), 1).addDays(-1).toString(Qt::ISODate);
}

QString closedAlready(const QString& day) {
  const QString told = lookupValue("select max(nj_year) from jxc_nj where nj_year>=?", day);
  return std::max(told, lookupValue("select max(da_year) from jxc_jsda where da_ql=0 and da_year>=?", day));
}

RowSet whatGoes(const Request& request) {
  // What stays is put aside for the sums, and taken back at the end with the transaction.
  const Transaction looking(accountDb());
  stageNumbers(numbersThatStay(request));
  return period_closing_detail::listed(request, sumItems(period_closing_detail::endOf(request.day)));
}

QString changesBetween(const RowSet& before, const RowSet& now) {
  using namespace period_closing_detail;
  auto was = figuresOf(before);
  QStringList lines;
  const auto tell = [&lines](const QString& item, const QString& old, const QString& figures) {
    if (old != figures) lines << u"%1：%2 → %3"_qs.arg(item, old.isEmpty() ? u"没有"_qs : old, figures);
  };
  for (const auto& [item, figures] : figuresOf(now)) {
    const auto same = std::ranges::find(was, item, &Figures::first);
    tell(item, same == was.end() ? QString() : same->second, figures);
    if (same != was.end()) was.erase(same);
  }
  for (const auto& [item, figures] : was)
    tell(item, figures, u"没有了"_qs);
  return lines.join(u"\r\n"_qs);
}

std::optional<RowSet> closeBooks(const Request& request, const QString& archive, const Progress& progress,
                                 const std::optional<RowSet>& agreed) {
  const LongWork longWork;
  const DeletingMuch deleting(accountDb());
  try {
    Transaction transaction(accountDb());
    RowSet sheet = period_closing_detail::Closing(request, progress, agreed).run(archive);
    transaction.commit();
    return sheet;
  } catch (const period_closing_detail::Stopped&) {
    return {};
  }
}

Sql summaries() {
  return Sql("select * from jxc_nj order by nj_year desc,id");
}
Sql archives() {
  return Sql("select id,da_time,da_year,da_file,a_name from jxc_jsda order by id desc");
}

}  // namespace jxc::closing
