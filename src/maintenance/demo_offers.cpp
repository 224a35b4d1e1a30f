#include "maintenance/demo_offers.h"

#include "accounts/contracts.h"
#include "accounts/fixed_assets.h"
#include "core/clock.h"
#include "core/file_names.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/gifts.h"
#include "masterdata/partners.h"
#include "masterdata/quotations.h"

#include <QFile>
#include <QTemporaryDir>

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
}

void signContracts(Staff& staff, QDate first, Prompt& prompt) {
  using namespace demo_offers_detail;
  execSql("update jxc_xtcs set cs_ht=1");
  loadSession();
  const auto sign = [&](const PartnerSide& side, const QString& partner, const char16_t* name, const char16_t* content,
                        bool binds) {
    contracts::Draft draft;
    draft.name = words(name);
    draft.date = first.toString(Qt::ISODate);
    draft.partner = partner;
    draft.employee = staff.employees[0];
    draft.content = words(content);
    const auto number = contracts::saveContract(side, draft, prompt);
    need(number.has_value());
    if (binds) staff.contracts[words(side.type) + partner] = *number;
  };
  sign(supplierSide, staff.suppliers.front(), u"年度供货协议", u"月结30天，镜片按季度返利，破损包换。", true);
  sign(supplierSide, staff.suppliers.back(), u"镜架寄售协议", u"样架寄放总店展示，售出后月底结算。", false);
  for (const QString& institution : staff.institutions)
    sign(customerSide, institution, u"团体配镜协议", u"协议价按报价单执行，每月15日前开票结算。", true);
}

void attachContractFiles(Prompt& prompt) {
  using namespace demo_offers_detail;
  const QTemporaryDir folder;
  for (const PartnerSide* side : {&supplierSide, &customerSide}) {
    for (const Row row :
         openSelect("select top 2 * from jxc_htgl where ht_type=? and gl_djh<>'' order by id", words(side->type))) {
      const QString name = row.text("ht_name"), partner = partnerName(*side, row.text("ghs_sn"));
      QFile file(folder.filePath(asFileName(name + u'-' + partner) + u".txt"_qs));
      need(file.open(QIODevice::WriteOnly));
      file.write((name + u"\n\n"_qs + words(side->noun) + u"："_qs + partner + u"\n\n"_qs + row.text("ht_note") + u'\n')
                     .toUtf8());
      file.close();
      contracts::Draft draft;
      draft.number = row.text("ht_sn");
      draft.name = name;
      draft.date = row.text("ht_rq");
      draft.partner = row.text("ghs_sn");
      draft.employee = row.text("u_sn");
      draft.content = row.text("ht_note");
      draft.file = file.fileName();
      need(contracts::saveContract(*side, draft, prompt).has_value());
    }
  }
}

}  // namespace jxc::demo
