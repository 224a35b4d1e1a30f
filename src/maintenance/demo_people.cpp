#include "maintenance/demo_people.h"

#include "accounts/cash_accounts.h"
#include "core/operators.h"
#include "core/parameters.h"
#include "core/roles.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/employees.h"
#include "masterdata/partners.h"
#include "masterdata/warehouses.h"

#include <algorithm>
#include <set>
#include <span>
#include <stdexcept>

namespace jxc::demo {
namespace demo_people_detail {

constexpr int kPeople = 90;  // customers by name

template <class T>
T required(std::optional<T> value, const char* what) {
  if (!value) throw std::logic_error(std::string("demonstration: not made: ") + what);
  return *value;
}

QString phoneOf(Random& random) {
  return QStringLiteral("1380000%1").arg(random.below(10000), 4, 10, QLatin1Char('0'));
}

QString addressOf(Random& random) {
  return words(random.oneOf(kStreets)) + QStringLiteral("%1号").arg(random.between(1, 299));
}

void nameCompany(Prompt& prompt) {
  ParameterValues values = readParameters();
  values.set("tname", QStringLiteral("明眸眼镜有限公司"));
  values.set("tjc", QStringLiteral("明眸眼镜"));
  values.set("tlxr", QStringLiteral("周敏"));
  values.set("ttele", QStringLiteral("0511-86000000"));
  values.set("taddress", QStringLiteral("中山路128号"));
  values.set("chkXstime", 1);  // which hours are busy
  if (!saveParameters(values, prompt)) throw std::logic_error("demonstration: company not named");
}

// ---- operators ---------------------------------------------------------------------------------------------------

using Grants = bool (*)(std::string_view group, std::string_view right);

bool isOneOf(std::string_view right, std::initializer_list<std::string_view> list) {
  return std::find(list.begin(), list.end(), right) != list.end();
}

/// Runs the shop; the installation is the administrator's.
bool managerMay(std::string_view group, std::string_view right) {
  return group != "qtcz" || !isOneOf(right, {"操作员设置", "系统设置", "清除日志", "帐套管理"});
}
/// Buys and moves goods; somebody else audits.
bool buyerMay(std::string_view group, std::string_view right) {
  if (right.find("审核") != std::string_view::npos) return false;
  if (group == "cggl" || group == "kcgl") return true;
  return isOneOf(right, {"商品管理", "供货商设置", "供货商管理", "显示商品成本价", "条码打印", "进货月报"});
}
/// Serves customers; sees no cost.
bool sellerMay(std::string_view group, std::string_view right) {
  if (right.find("审核") != std::string_view::npos || right == "允许修改销售成本价") return false;
  if (group == "xsgl") return true;
  return isOneOf(right, {"客户设置", "客户综合管理", "显示商品销售价", "收款登记", "商品销售统计", "会员管理"});
}

Operator addOperatorAs(const QString& name, const QString& role, Grants grants, Prompt& prompt) {
  RoleDraft draft{.id = 0, .name = role, .rights = {}};
  for (std::size_t i = 0; i < kRightsGroups; ++i)
    for (const std::string_view right : rightsGroups()[i].rights)
      draft.rights[i] += grants(rightsGroups()[i].column, right) ? u'1' : u'0';
  if (!saveRole(draft, prompt)) throw std::logic_error("demonstration: role not made");
  OperatorDraft person;
  person.name = name;
  person.roleKey = lookupValue("select r_sn from jxc_role where r_name=?", role);
  return {name, required(addOperator(person, prompt), "operator"), person.roleKey};
}

// ---- the house ---------------------------------------------------------------------------------------------------

void bindOperators(WarehouseDraft& draft, const Staff& staff) {
  draft.operatorKeys.clear();
  draft.operatorNames.clear();
  for (const Operator* each : {&staff.administrator, &staff.manager, &staff.buyer, &staff.seller}) {
    draft.operatorKeys << each->key;
    draft.operatorNames << each->name;
  }
}

void makeWarehouses(Staff& staff, Prompt& prompt) {
  WarehouseDraft first = readWarehouse(lookupValue("select top 1 id from jxc_ckxx order by id").toLongLong());
  first.name = QStringLiteral("中山路总店");
  first.inCharge = QStringLiteral("周敏");
  first.address = QStringLiteral("中山路128号");
  bindOperators(first, staff);
  staff.warehouses[0] = required(saveWarehouse(first, prompt), "warehouse");
  WarehouseDraft second;
  second.name = QStringLiteral("人民路分店");
  second.inCharge = QStringLiteral("陈静");
  second.address = QStringLiteral("人民路56号");
  bindOperators(second, staff);
  staff.warehouses[1] = required(saveWarehouse(second, prompt), "warehouse");
}

void makeEmployees(Staff& staff, Random& random, Prompt& prompt) {
  for (const Person& person : kEmployees) {
    EmployeeDraft draft;
    draft.name = words(person.name);
    draft.duty = words(person.duty);
    draft.phone = phoneOf(random);
    draft.commission = person.commission;
    draft.commissionOn = person.ofProfit ? 1 : 0;
    draft.commissionFromProfit = person.fromProfitAPiece;
    staff.employees.push_back(required(saveEmployee(draft, prompt), "employee"));
    staff.employeeNames.push_back(draft.name);
  }
}

/// One of the shares, or none of them.
const Share* drawn(std::span<const Share> shares, Random& random) {
  int left = random.below(1000);
  for (const Share& each : shares) {
    if (left < each.perMille) return &each;
    left -= each.perMille;
  }
  return nullptr;
}

void makePartners(Staff& staff, Random& random, Prompt& prompt) {
  for (const SupplierName& each : kSuppliers) {
    PartnerDraft draft;
    draft.name = words(each.name);
    draft.contact = words(each.contact);
    draft.kindName = words(each.kind);
    draft.phone = phoneOf(random);
    draft.opening = each.opening;
    staff.suppliers.push_back(required(savePartner(supplierSide, draft, prompt), "supplier"));
  }
  const auto addCustomer = [&](PartnerDraft draft) {
    draft.phone = phoneOf(random);
    draft.address = addressOf(random);
    draft.employeeNames = QStringLiteral("默认员工,");
    draft.employeeKeys = QStringLiteral("100001,");
    return required(savePartner(customerSide, draft, prompt), "customer");
  };
  for (const Institution& each : kInstitutions) {
    PartnerDraft draft;
    draft.name = words(each.name);
    draft.contact = words(each.contact);
    draft.kindName = words(each.level);
    draft.kindKey = words(each.levelKey);
    draft.zone = words(each.zone);
    draft.opening = each.opening;
    staff.institutions.push_back(addCustomer(draft));
  }
  std::set<QString> names;
  while (std::ssize(staff.people) < kPeople) {
    PartnerDraft draft;
    draft.name = draft.contact = words(random.oneOf(kSurnames)) + words(random.oneOf(kGivenNames));
    if (!names.insert(draft.name).second) continue;
    const Share* level = drawn(kLevelsOfPeople, random);
    draft.kindName = level ? words(level->name) : QStringLiteral("零售客户");
    draft.kindKey = level ? words(level->key) : QStringLiteral("1000");
    if (const Share* zone = drawn(kZonesOfPeople, random)) draft.zone = words(zone->name);
    staff.people.push_back(addCustomer(draft));
  }
}

void makeAccounts(Prompt& prompt) {
  const auto idOf = [](Word name) {
    return lookupValue("select id from jxc_yhzh where yh_name=?", words(name)).toLongLong();
  };
  const auto save = [&](const cash::AccountDraft& draft) {
    if (!cash::saveAccount(draft, prompt)) throw std::logic_error("demonstration: account not made");
  };
  cash::AccountDraft bank = cash::readAccount(idOf(u"工行帐号"));
  bank.name = QStringLiteral("工商银行");
  bank.opening = 680000;
  save(bank);
  cash::deleteAccount(idOf(u"建行帐号"), prompt);
  save({.name = QStringLiteral("微信"), .type = QStringLiteral("微信账户"), .note = {}, .opening = 5200});
  save({.name = QStringLiteral("支付宝"), .type = QStringLiteral("支付宝账户"), .note = {}, .opening = 3100});
  cash::setOpening(idOf(u"现金"), 6000);
}

}  // namespace demo_people_detail

Staff makeStaff(Random& random, Prompt& prompt) {
  using namespace demo_people_detail;
  Staff staff;
  staff.administrator = {session().a_name, session().a_sn, session().r_sn};
  nameCompany(prompt);
  staff.manager = addOperatorAs(QStringLiteral("周敏"), QStringLiteral("店长"), managerMay, prompt);
  staff.buyer = addOperatorAs(QStringLiteral("孙磊"), QStringLiteral("采购员"), buyerMay, prompt);
  staff.seller = addOperatorAs(QStringLiteral("林小雨"), QStringLiteral("营业员"), sellerMay, prompt);
  makeWarehouses(staff, prompt);
  makeEmployees(staff, random, prompt);
  makePartners(staff, random, prompt);
  makeAccounts(prompt);
  return staff;
}

}  // namespace jxc::demo
