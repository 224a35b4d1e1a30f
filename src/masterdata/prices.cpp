#include "masterdata/prices.h"

#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"

namespace jxc {
namespace prices_detail {

/// Column of the customer's level: the fourth character of "1001" … "1005" names it.
std::string levelColumn(const QString& level) {
  const bool graded = level != u"1000" && level.size() > 3 && level[3] >= u'1' && level[3] <= u'5';
  return graded ? "g_sj" + level.mid(3, 1).toStdString() : "g_sj";
}

QString levelPrice(const QString& level, const QString& goods) {
  return lookupValue(compose("select {} from jxc_goods where g_sn=?", {levelColumn(level)}), goods);
}

/// Empty when nothing proposes a price.
QString proposal(const QString& customer, const QString& goods) {
  QString price =
      lookupValue("select top 1 kb_bj from jxc_khbj where g_sn=? and kh_sn=? order by id desc", goods, customer);
  if (!price.isEmpty()) return price;
  const QString level = getKhLevel(customer);
  if (session().cs_xsdj == u"1") {
    price = lookupValue(
        "select top 1 a.ls_dj from jxc_lsxssp a,jxc_lsxsd b where b.ls_status=1 and a.gl_djh=b.gl_djh and b.kh_sn=? "
        "and a.g_sn=? and a.ls_sl>0 order by a.id desc",
        customer, goods);
    if (price.isEmpty()) price = levelPrice(level, goods);
  } else if (session().cs_xsdj == u"0" && level != u"1000") {
    price = levelPrice(level, goods);
  }
  return price.isEmpty() ? lookupValue("select g_sj from jxc_goods where g_sn=?", goods) : price;
}

}  // namespace prices_detail

double getSalePrice(const QString& customer, const QString& goods) {
  return roundMoney(prices_detail::proposal(customer, goods).toDouble());
}

std::vector<NamedPrice> goodsPrices(const QString& goods) {
  constexpr std::pair<const char16_t*, std::string_view> named[] = {{u"预设售价", "g_sj"},    {u"一级批发价", "g_sj1"},
                                                                    {u"二级批发价", "g_sj2"}, {u"三级批发价", "g_sj3"},
                                                                    {u"四级批发价", "g_sj4"}, {u"五级批发价", "g_sj5"}};
  const RowSet rows = openSelect("select g_sj,g_sj1,g_sj2,g_sj3,g_sj4,g_sj5 from jxc_goods where g_sn=?", goods);
  std::vector<NamedPrice> prices;
  if (rows.isEmpty()) return prices;
  for (const auto& [name, column] : named)
    prices.push_back({QString::fromUtf16(name), rows.front().number(column)});
  return prices;
}

}  // namespace jxc
