#include "maintenance/demo_offers.h"

#include "core/clock.h"
#include "core/rounding.h"
#include "core/small_lookups.h"
#include "masterdata/gifts.h"
#include "masterdata/quotations.h"

#include <stdexcept>

namespace jxc::demo {
namespace demo_offers_detail {

void need(bool done) {
  if (!done) throw std::logic_error("demonstration: no offer made");
}

/// Quotes the first goods of a statement (g_sn, price) at so many percent of their price.
void quote(const PartnerSide& side, const QString& partner, const Staff& staff, const char* goods, int percent,
           const QString& note, Prompt& prompt) {
  clearStaging();
  for (const Row row : openSelect(goods))
    need(quotations::stage(row.text("g_sn"), roundMoney(row.number("price") * percent / 100), prompt));
  const QString name = lookupValue(compose("select {} from {} where {}=?", {side.name, side.table, side.sn}), partner);
  need(quotations::save(side, {name, partner, clock::today(), staff.employees.front(), note}, prompt).has_value());
}

}  // namespace demo_offers_detail

void makeOffers(const Staff& staff, Prompt& prompt) {
  using namespace demo_offers_detail;
  constexpr char sold[] =
      "select top 8 g_sn,g_sj as price from jxc_goods where g_jy=0 and g_sj>5 order by g_xspl desc,g_sn";
  constexpr char bought[] =
      "select top 10 g_sn,g_jj as price from jxc_goods where g_jy=0 and g_jj>1 order by g_cgpl desc,g_sn";
  for (const QString& institution : staff.institutions)
    quote(customerSide, institution, staff, sold, 85, QStringLiteral("年度协议价"), prompt);
  quote(customerSide, staff.institutions.front(), staff, sold, 80, QStringLiteral("续签协议价"), prompt);
  for (std::size_t i = 0; i < 2 && i < staff.suppliers.size(); ++i)
    quote(supplierSide, staff.suppliers[i], staff, bought, 97 + static_cast<int>(i), QStringLiteral("新季报价"),
          prompt);

  struct Item {
    const char16_t *number, *name;
    double points, pieces;
  };
  for (const Item& item : {Item{u"Z001", u"保温杯", 800, 30}, Item{u"Z002", u"折叠伞", 500, 40},
                           Item{u"Z003", u"帆布袋", 200, 100}, Item{u"Z004", u"台历", 100, 60}}) {
    need(gifts::save({0, QString::fromUtf16(item.number), QString::fromUtf16(item.name), 0, item.points}, {}, prompt));
    const auto id = lookupValue("select max(id) from jxc_zpxx").toLongLong();
    need(gifts::receive(id, {clock::today(), item.pieces, QStringLiteral("会员日备货")}, prompt));
  }
  bool uses = true;
  for (const Row row : openSelect("select id,g_sj from jxc_goods where g_iszp<>0 order by g_sn")) {
    if (uses) need(gifts::use(row.integer("id"), row.number("g_sj") * 10, prompt));
    uses = !uses;
  }
}

}  // namespace jxc::demo
