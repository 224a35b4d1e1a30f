#include "maintenance/demo_offers.h"

#include "accounts/contracts.h"
#include "accounts/fixed_assets.h"
#include "core/clock.h"
#include "core/rounding.h"
#include "core/small_lookups.h"
#include "core/text.h"
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

void makeBelongings(const Staff& staff, QDate first, QDate last, Prompt& prompt) {
  using namespace demo_offers_detail;
  struct Thing {
    const char16_t *number, *name, *kind, *model, *department;
    double yuan;
    int months;
    QDate bought;
  };
  for (const Thing& thing : {Thing{u"ZC001", u"综合验光台", u"验光设备", u"RT-5100", u"验光室", 86000, 96, first},
                             Thing{u"ZC002", u"电脑验光仪", u"验光设备", u"KR-800", u"验光室", 48000, 96, first},
                             Thing{u"ZC003", u"自动磨边机", u"加工设备", u"LE-1200", u"加工间", 69800, 72, first},
                             Thing{u"ZC004", u"收银电脑", u"办公设备", u"", u"前台", 4600, 36, first},
                             Thing{u"ZC003", u"自动磨边机", u"加工设备", u"砂轮组", u"加工间", 3200, 24, last}})
    need(assets::saveAsset({.number = words(thing.number),
                            .name = words(thing.name),
                            .date = thing.bought.toString(Qt::ISODate),
                            .kind = words(thing.kind),
                            .unit = QStringLiteral("台"),
                            .amount = thing.yuan,
                            .department = words(thing.department),
                            .supplier = {},
                            .insideClass = {},
                            .model = words(thing.model),
                            .months = thing.months,
                            .employee = staff.employeeNames[0],
                            .note = {}},
                           prompt));
  const auto sign = [&](const PartnerSide& side, const QString& partner, QDate day, const char16_t* name,
                        const char16_t* content) {
    need(contracts::saveContract(side,
                                 {.number = {},
                                  .name = words(name),
                                  .date = day.toString(Qt::ISODate),
                                  .partner = partner,
                                  .employee = staff.employees[0],
                                  .content = words(content),
                                  .file = {}},
                                 prompt)
             .has_value());
  };
  sign(supplierSide, staff.suppliers.front(), first, u"年度供货协议", u"月结30天，镜片按季度返利，破损包换。");
  sign(customerSide, staff.institutions.front(), last, u"团体配镜协议", u"协议价按报价单执行，每月15日前开票结算。");
}

}  // namespace jxc::demo
