#include "maintenance/demo_people.h"

#include "accounts/cash_accounts.h"
#include "accounts/expense_types.h"
#include "core/operators.h"
#include "core/parameters.h"
#include "core/roles.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/departments.h"
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

/// With a ready-made role, made for the first who has it.
Operator addOperatorAs(const QString& name, const QString& role, Prompt& prompt) {
  OperatorDraft person;
  person.name = name;
  person.roleKey = role;
  const QString key = required(addOperator(person, prompt), "operator");
  return {name, key, lookupValue("select r_sn from jxc_admin where a_sn=?", key)};
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

/// What the two shops spend on and earn with beside trade, and whom it is booked on.
void makeExpenseTypes(Staff& staff, Prompt& prompt) {
  using expenses::Side;
  constexpr std::pair<Word, Side> types[] = {{u"房租", Side::Expense},
                                             {u"水电费", Side::Expense},
                                             {u"日常费用", Side::Expense},
                                             {u"利息收入", Side::Income},
                                             {u"其他收入", Side::Income}};
  for (const auto& [name, side] : types)
    if (!expenses::saveType({.name = words(name), .side = side, .note = {}}, prompt))
      throw std::logic_error("demonstration: type of expense not made");
  const auto first = lookupValue("select top 1 id from jxc_dept order by id").toLongLong();
  saveNamed(departmentList, first, QStringLiteral("中山路总店"), prompt);
  saveNamed(departmentList, 0, QStringLiteral("人民路分店"), prompt);
  const RowSet departments = openSelect("select de_sn from jxc_dept order by id");
  for (std::size_t shop = 0; shop < staff.departments.size(); ++shop)
    staff.departments[shop] = departments.text(static_cast<int>(shop), 0);
}

}  // namespace demo_people_detail

Staff makeStaff(Random& random, Prompt& prompt) {
  using namespace demo_people_detail;
  Staff staff;
  staff.administrator = {session().a_name, session().a_sn, session().r_sn};
  nameCompany(prompt);
  staff.manager = addOperatorAs(QStringLiteral("周敏"), QStringLiteral("店长"), prompt);
  staff.buyer = addOperatorAs(QStringLiteral("孙磊"), QStringLiteral("采购员"), prompt);
  staff.seller = addOperatorAs(QStringLiteral("林小雨"), QStringLiteral("营业员"), prompt);
  makeWarehouses(staff, prompt);
  makeEmployees(staff, random, prompt);
  makePartners(staff, random, prompt);
  makeAccounts(prompt);
  makeExpenseTypes(staff, prompt);
  return staff;
}

}  // namespace jxc::demo
