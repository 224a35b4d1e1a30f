#include "maintenance/period_locking.h"

#include "core/clock.h"
#include "core/period_lock.h"
#include "core/posting.h"
#include "core/rights.h"
#include "core/text.h"
#include "stock/document_family.h"

#include <QDate>

#include <algorithm>

namespace jxc::period_locking {
namespace period_locking_detail {

/// Rows of money that wait, where they stand.
struct MoneyKind {
  std::u16string_view name;
  const char* count;  // value: the day with "~" behind it, which sorts after every time of that day
};
constexpr MoneyKind kMoney[] = {
    {u"现金银行", "select count(*) from (select distinct gl_djh from jxc_xjyh where xj_chk='0' and xj_rq<=?) a"},
    {u"收付款、应收应付", "select count(*) from jxc_ysyfk_dj where k_check=0 and k_rq<=?"},
    {u"费用及收入", "select count(*) from jxc_yyfy where fy_chk='0' and fy_rq<=?"},
    {u"发票", "select count(*) from jxc_fpdjb where fp_check=0 and fp_rq<=?"},
};

Refusal refusal(const QString& day, const QString& before) {
  return {!QDate::fromString(day, Qt::ISODate).isValid() || day > clock::today() || day == before,
          day == before          ? u"账目已经锁定到 %1！"_qs.arg(before)
          : day > clock::today() ? u"锁定日期不能晚于今天！"_qs
                                 : u"请输入锁定日期！"_qs,
          Subject::Date};
}

QString question(const QString& day, const QString& before, const std::vector<Waiting>& waiting) {
  QString text =
      u"账目将锁定到 %1：\r\n\r\n这一天及以前的单据和账目不能再保存、更改日期、审核、取消审核和删除。"_qs.arg(day);
  if (day < before) text += u"\r\n\r\n原来锁定到 %1，这一天以后的账目将重新开放。"_qs.arg(before);
  if (day == clock::today()) text += u"\r\n\r\n今天也被锁定：到明天才能再开单！"_qs;
  if (!waiting.empty()) {
    text += u"\r\n\r\n其中还没有审核的，锁定后只能删除，或改到以后的日期再审核：\r\n"_qs;
    for (const Waiting& each : waiting)
      text += u"\r\n%1　%2 张"_qs.arg(each.kind).arg(each.count);
  }
  return text + u"\r\n\r\n确认锁定吗？"_qs;
}

/// False, and nothing is written, where another station has changed meanwhile what the operator agreed to.
bool write(const QString& day, const QString& before, const std::vector<Waiting>& waiting = {}) {
  Transaction transaction(accountDb());
  if (PeriodLock().day() != before || (!day.isEmpty() && waitingUpTo(day) != waiting)) return false;
  setPeriodLock(day);
  transaction.commit();
  return true;
}

QString changed() {
  return u"账目锁定或未审核的单据已被其他电脑改动，没有锁定，请重新操作！"_qs;
}

}  // namespace period_locking_detail

std::vector<Waiting> waitingUpTo(const QString& day) {
  if (day.isEmpty()) return {};
  const QString end = day + u'~';
  std::vector<std::pair<QString, Ahead>> asked;
  for (const DocumentFamily& family : documentFamilies())
    if (!family.sharesTables)
      asked.emplace_back(words(family.name), sendAhead(compose("select count(*) from {} where {}=0 and {}<=?",
                                                               {family.head, family.status, family.date}),
                                                       end));
  for (const auto& money : period_locking_detail::kMoney)
    asked.emplace_back(words(money.name), sendAhead(money.count, end));
  std::vector<Waiting> waiting;
  for (const auto& [kind, count] : asked)
    if (count.number() > 0) waiting.push_back({kind, static_cast<std::int64_t>(count.number())});
  return waiting;
}

QString lockedDay() {
  return PeriodLock().day();
}

Sql history() {
  return Sql(
      "select id,sd_rq,sd_time,a_name,iif(sd_rq='','解除锁定','锁定到 ' & sd_rq) as what from jxc_zmsd order by id "
      "desc");
}

QString proposedDay() {
  const QDate today = QDate::fromString(clock::today(), Qt::ISODate);
  const QString monthEnd = today.addDays(-today.day()).toString(Qt::ISODate);
  return monthEnd > PeriodLock().day() ? monthEnd : QString();
}

bool lockUpTo(const QString& day, Prompt& prompt) {
  using namespace period_locking_detail;
  if (!isAllowedToAdministrators(prompt)) return false;
  const QString before = PeriodLock().day();
  if (isRefused(refusal(day, before), prompt)) return false;
  if (const QString closed = closedDay(); day < closed)
    return !isRefused({u"数据结算已做到 %1，锁定日期不能早于这一天！"_qs.arg(closed), Subject::Date}, prompt);
  const std::vector<Waiting> waiting = waitingUpTo(day);
  if (!prompt.ask(question(day, before, waiting))) return false;
  return !refused({{!write(day, before, waiting), changed()}}, prompt);
}

bool open(Prompt& prompt) {
  using namespace period_locking_detail;
  if (!isAllowedToAdministrators(prompt)) return false;
  const QString before = PeriodLock().day(), closed = closedDay();
  if (refused({{before.isEmpty(), u"账目没有锁定！"_qs},
               {before <= closed, u"数据结算已做到 %1，这些日期的账目不能解除锁定！"_qs.arg(closed)}},
              prompt))
    return false;
  const QString which = closed.isEmpty() ? u"这些日期"_qs : closed + u" 以后"_qs;
  if (!prompt.ask(u"账目锁定到 %1，解除后%2的单据和账目又可以改动，\r\n\r\n确认解除锁定吗？"_qs.arg(before, which)))
    return false;
  return !refused({{!write({}, before), changed()}}, prompt);
}

}  // namespace jxc::period_locking
