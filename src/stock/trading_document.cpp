#include "stock/trading_document.h"

#include "core/session.h"
#include "core/statements.h"

#include <QDate>

namespace jxc {
namespace trading_document_detail {

// No draft is older than this many lines: so the search stays short in an account set of millions.
constexpr std::int64_t recentLines = 2000;

}  // namespace trading_document_detail

bool LineRules::cellMayChange(QStringView goods, bool isGift, QStringView field) const {
  if (goods == u"00000000") return false;  // the balancing line comes from the settlement
  if (isGift) return field == u"sl";
  return (field != u"dj" && field != u"taxdj") || priceMayChange();
}

RowSet stagedLines() {
  return openSelect(
      "select a.*,b.g_name,b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm,b.g_kc from jxc_tempspxf a,jxc_goods b "
      "where a.g_sn=b.g_sn and a.a_name=? order by a.id",
      session().a_name);
}

void unstage(std::int64_t id) {
  execSql("delete from jxc_tempspxf where id=? and a_name=?", id, session().a_name);
}

QString unsavedDraft(const DocumentFamily& family) {
  const double last = lookupNumber(compose("select max(id) from {}", {family.lines}));
  return lookupValue(
      compose("select top 1 {} from {} where id>? and a_name=? and {} like ? and {} not in (select {} from {} where {} "
              "like ?) order by id desc",
              {family.number, family.lines, family.number, family.number, family.number, family.head, family.number}),
      last - static_cast<double>(trading_document_detail::recentLines), session().a_name, words(family.prefix) + u'%',
      words(family.prefix) + u'%');
}

QString dateOfNumber(const QString& number) {
  const QDate date = QDate::fromString(u"20"_qs + number.mid(2, 6), u"yyyyMMdd"_qs);
  return date.isValid() ? date.toString(u"yyyy-MM-dd"_qs) : QString();
}

}  // namespace jxc
