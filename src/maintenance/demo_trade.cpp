#include "maintenance/demo_trade.h"

#include "core/clock.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "purchasing/purchase_return.h"
#include "purchasing/receipt.h"
#include "sales/sale.h"
#include "sales/sale_return.h"
#include "stock/cancelling.h"
#include "stock/document.h"

#include <algorithm>
#include <stdexcept>

namespace jxc::demo {
namespace demo_trade_detail {

constexpr std::size_t kRemembered = 300;  // sales that a customer may still bring something back from
constexpr int kLongestReceipt = 24;       // lines
constexpr int kTries = 8;
// So many of the customers by name move away after the first weeks, and are not seen again.
constexpr std::size_t kMovedAway = 6;
constexpr int kDaysBeforeTheyMove = 40;

}  // namespace demo_trade_detail

double wholeFen(double amount) {
  return static_cast<double>(static_cast<qint64>(amount * 100 + (amount < 0 ? -0.5 : 0.5))) / 100;
}

void ShopPrompt::notice(const QString& text) {
  throw std::logic_error("demonstration refused: " + text.toStdString());
}

Trade::Trade(Catalogue catalogue, Staff staff, Random& random)
    : catalogue_(std::move(catalogue)), staff_(std::move(staff)), random_(random) {}

void Trade::workAs(const Operator& who) {
  if (session().a_sn == who.key) return;
  session().a_name = who.name;
  session().a_sn = who.key;
  session().r_sn = who.role;
  loadSession();
}

// ---- choosing ----------------------------------------------------------------------------------------------------

QString Trade::account() {
  const int part = random_.below(100);
  return part < 24   ? QStringLiteral("现金")
         : part < 68 ? QStringLiteral("微信")
         : part < 90 ? QStringLiteral("支付宝")
                     : QStringLiteral("工商银行");
}

const QString& Trade::salesperson(int warehouse) {
  const int who = random_.below(1000);
  if (warehouse == 0 && who < 180) return staff_.employees[3];
  const auto first = static_cast<std::size_t>(warehouse == 0 ? 1 : 0);
  return staff_.employees[who < 640 ? first : 4];
}

const QString& Trade::customerByName() {
  using namespace demo_trade_detail;
  auto who = static_cast<std::size_t>(random_.below(static_cast<int>(staff_.people.size())));
  if (who < kMovedAway && opened_.daysTo(day_) > kDaysBeforeTheyMove) who += kMovedAway;
  return staff_.people[who];
}

/// An article of which the warehouse has so many; -1 when a few draws find none.
int Trade::inStock(const Weighted& choice, int warehouse, int quantity) {
  if (choice.isEmpty()) return -1;
  for (int i = 0; i < demo_trade_detail::kTries; ++i) {
    const int index = choice.draw(random_);
    if (article(index).stock[static_cast<std::size_t>(warehouse)] >= quantity) return index;
    wantMore(index, warehouse);
  }
  return -1;
}

void Trade::addPick(std::vector<Pick>& lines, int index, int quantity, int discount) {
  if (index < 0) return;
  const bool there = std::any_of(lines.begin(), lines.end(), [&](const Pick& each) { return each.article == index; });
  if (!there)
    lines.push_back({.article = index,
                     .quantity = quantity,
                     .price = article(index).sell,
                     .discount = static_cast<double>(discount) / 100,
                     .gift = false});
}

std::vector<Trade::Pick> Trade::glasses(int warehouse) {
  constexpr int discounts[] = {100, 100, 100, 95, 90, 88, 85};
  const int discount = random_.oneOf(discounts);
  std::vector<Pick> lines;
  addPick(lines, inStock(catalogue_.byKind[static_cast<std::size_t>(Kind::Frame)], warehouse, 1), 1, discount);
  const auto product = static_cast<std::size_t>(catalogue_.lensProducts.draw(random_));
  const Weighted& powers = catalogue_.lensPowers[product];
  if (random_.chance(520)) {
    addPick(lines, inStock(powers, warehouse, 2), 2, discount);
  } else {
    addPick(lines, inStock(powers, warehouse, 1), 1, discount);
    addPick(lines, inStock(powers, warehouse, 1), 1, discount);
  }
  if (!catalogue_.gifts.empty() && random_.chance(450)) {
    const int gift = random_.oneOf(catalogue_.gifts);
    if (article(gift).stock[static_cast<std::size_t>(warehouse)] > 0)
      lines.push_back({.article = gift, .quantity = 1, .gift = true});
  }
  return lines;
}

std::vector<Trade::Pick> Trade::basket(int warehouse, int season) {
  const auto of = [&](Kind kind, int quantity) {
    return inStock(catalogue_.byKind[static_cast<std::size_t>(kind)], warehouse, quantity);
  };
  const int sun = 20 + season * 2;  // per mille: sunglasses go with the warm months
  const int what = random_.below(1000);
  std::vector<Pick> lines;
  if (what < sun) {
    addPick(lines, of(Kind::Sun, 1), 1, random_.chance(300) ? 90 : 100);
  } else if (what < sun + 190) {
    const int boxes = random_.between(1, 3);
    addPick(lines, of(Kind::Contact, boxes), boxes, 100);
    if (random_.chance(500)) addPick(lines, of(Kind::Sundry, 1), 1, 100);
  } else if (what < sun + 290) {
    for (int i = random_.between(1, 2); i > 0; --i)
      addPick(lines, of(Kind::Sundry, 2), random_.between(1, 2), 100);
  } else if (what < sun + 380) {  // new lenses for an old frame
    const auto product = static_cast<std::size_t>(catalogue_.lensProducts.draw(random_));
    addPick(lines, inStock(catalogue_.lensPowers[product], warehouse, 2), 2, 100);
  } else {
    lines = glasses(warehouse);
  }
  return lines;
}

/// Percent of a supplier's invoices; 0 for those who give none.
int Trade::taxOf(const QString& supplier) const {
  const auto found = std::find(staff_.suppliers.begin(), staff_.suppliers.end(), supplier);
  return found == staff_.suppliers.end() ? 0 : kSuppliers[found - staff_.suppliers.begin()].taxPercent;
}

// ---- trading documents -------------------------------------------------------------------------------------------

void Trade::addLines(const TradingRules& rules, TradingDraft& draft, const std::vector<Pick>& lines) {
  for (const Pick& pick : lines) {
    const LinePlace place{
        .number = draft.number, .date = draft.date, .partner = draft.partner, .warehouse = draft.warehouse};
    const QString& goods = article(pick.article).number;
    LineResult added;
    if (pick.gift) {
      added = sale::addGift(Lines::Draft, place, goods, pick.quantity, prompt_);
    } else {
      LineDraft line = rules.lines().newLine(goods, place, false);
      line.amounts.setQuantity(pick.quantity);
      line.amounts.setPrice(pick.price);
      if (pick.discount != 1) line.amounts.setDiscount(pick.discount);
      if (const int tax = &rules == &receipt::rules() ? taxOf(draft.partner) : 0; tax != 0) {
        line.amounts.setTax(tax);
        line.amounts.setTaxedPrice(wholeFen(line.amounts.taxedPrice()));
      }
      if (rules.lines().mayWrite(line, place, prompt_))
        added = rules.lines().addLine(Lines::Draft, place, line, prompt_);
    }
    if (!added) throw std::logic_error("demonstration: line not added");
    draft.number = added.number;
  }
  draft.payable = draft.paid = rules.payable(draft.number);
}

QString Trade::save(const TradingRules& rules, TradingDraft draft) {
  const DocumentFamily& family = rules.family();
  const auto agreed = staff_.contracts.find(words(partnerSide(family.side).type) + draft.partner);
  if (agreed != staff_.contracts.end() && !family.contract.empty()) draft.contract = agreed->second;
  const SaveResult saved = rules.save(draft, prompt_);
  if (!saved) throw std::logic_error("demonstration: document not saved");
  ++documents_;
  return saved.number;
}

bool Trade::saveSale(int warehouse, const QString& customer, const std::vector<Pick>& lines, bool institution) {
  const bool onlyGifts = std::all_of(lines.begin(), lines.end(), [](const Pick& each) { return each.gift; });
  if (onlyGifts) return false;
  const TradingRules& rules = sale::rules();
  TradingDraft draft = rules.fresh({});
  draft.partner = customer;
  draft.warehouse = staff_.warehouses[static_cast<std::size_t>(warehouse)];
  draft.salesperson = salesperson(warehouse);
  draft.account = account();
  addLines(rules, draft, lines);
  const bool known = customer != QStringView(builtInSn);
  if (institution) {
    draft.settlement = Settlement::RestOnAccount;
    draft.paid = 0;
    draft.note = QStringLiteral("月结");
    // It goes there by courier, whom they pay for small parcels.
    const auto pieces = static_cast<int>(lines.size());
    draft.freight = 5 + 2 * pieces;
    draft.packing = pieces > 8 ? 10 : 0;
    draft.wePayFreight = pieces > 5;
  } else if (known && random_.chance(550)) {  // a deposit now, the rest when the glasses are fetched
    draft.settlement = Settlement::RestOnAccount;
    draft.paid = static_cast<int>(draft.payable * random_.between(3, 7) / 100) * 10;
    draft.note = QStringLiteral("定金，取镜付余款");
  } else {
    draft.settlement = Settlement::AtPaidAmount;
    const double whole = static_cast<int>(draft.payable / 5) * 5;
    if (draft.payable > 100 && random_.chance(250)) draft.paid = whole;  // the odd yuan are let off
  }
  const double rest = draft.payable - draft.paid;
  const QString number = save(rules, draft);
  for (const Pick& pick : lines) {
    article(pick.article).stock[static_cast<std::size_t>(warehouse)] -= pick.quantity;
    wantMore(pick.article, warehouse);
  }
  if (!institution && draft.settlement == Settlement::RestOnAccount && rest > 0)
    fetches_.push_back({.day = day_.addDays(random_.between(2, 9)), .number = number, .rest = rest});
  sold_.push_back({.number = number, .customer = customer, .warehouse = warehouse, .lines = lines});
  if (sold_.size() > demo_trade_detail::kRemembered) sold_.pop_front();
  return true;
}

bool Trade::sell(int season) {
  const int warehouse = random_.chance(640) ? 0 : 1;
  workAs(warehouse == 0 ? staff_.seller : staff_.manager);
  const std::vector<Pick> lines = basket(warehouse, season);
  const QString customer =
      random_.chance(620) || staff_.people.empty() ? QString::fromUtf16(builtInSn) : customerByName();
  return !lines.empty() && saveSale(warehouse, customer, lines, false);
}

bool Trade::sellToInstitution() {
  const auto which = static_cast<std::size_t>(random_.below(static_cast<int>(staff_.institutions.size())));
  const int percent = 96 - 8 * (words(kInstitutions[which].levelKey).toInt() - 1000);
  workAs(staff_.seller);
  std::vector<Pick> lines;
  for (int i = random_.between(4, 14); i > 0; --i) {
    const Kind kind = random_.chance(500) ? Kind::Frame : random_.chance(800) ? Kind::Lens : Kind::Contact;
    const int quantity = kind == Kind::Frame ? 1 : 2;
    addPick(lines, inStock(catalogue_.byKind[static_cast<std::size_t>(kind)], 0, quantity), quantity, 100);
  }
  for (Pick& pick : lines)
    pick.price = wholeFen(static_cast<int>(pick.price * percent / 100));
  return !lines.empty() && saveSale(0, staff_.institutions[which], lines, true);
}

bool Trade::takeBack() {
  if (sold_.empty()) return false;
  const auto which = static_cast<std::ptrdiff_t>(random_.below(static_cast<int>(sold_.size())));
  const Sold sale = sold_[static_cast<std::size_t>(which)];
  const bool audited = lookupNumber("select ls_status from jxc_lsxsd where gl_djh=?", sale.number) == 1;
  if (!audited) return false;
  workAs(sale.warehouse == 0 ? staff_.seller : staff_.manager);
  const TradingRules& rules = sale_return::rules();
  TradingDraft draft = rules.fresh({});
  std::vector<Pick> back;
  if (random_.chance(150)) {
    const auto whole = rules.returnWhole(sale.number, draft, prompt_);
    if (!whole) return false;
    draft = *whole;
    back = sale.lines;
    draft.paid = draft.payable;
  } else {
    draft.partner = sale.customer;
    draft.warehouse = staff_.warehouses[static_cast<std::size_t>(sale.warehouse)];
    draft.salesperson = salesperson(sale.warehouse);
    for (const Pick& pick : sale.lines)
      if (!pick.gift && back.empty()) back.push_back(pick);
    if (back.empty()) return false;
    addLines(rules, draft, back);
  }
  draft.account = QStringLiteral("现金");
  draft.settlement = Settlement::RestOnAccount;
  draft.note = random_.chance(500) ? QStringLiteral("度数不适") : QStringLiteral("顾客不满意款式");
  const QString number = save(rules, draft);
  for (const Pick& pick : back)
    arrivals_[number].push_back({pick.article, sale.warehouse, pick.quantity});
  sold_.erase(sold_.begin() + which);
  return true;
}

bool Trade::sendBackToSupplier() {
  workAs(staff_.buyer);
  const int supplier = random_.below(static_cast<int>(staff_.suppliers.size()));
  std::vector<Pick> lines;
  for (int i = 0; i < 40 && lines.size() < 3; ++i) {
    const int index = random_.below(static_cast<int>(catalogue_.articles.size()));
    const Article& goods = article(index);
    if (goods.supplier != supplier || goods.stock[0] < 3) continue;
    addPick(lines, index, random_.between(1, 2), 100);
  }
  if (lines.empty()) return false;
  const TradingRules& rules = purchase_return::rules();
  TradingDraft draft = rules.fresh({});
  draft.partner = staff_.suppliers[static_cast<std::size_t>(supplier)];
  draft.warehouse = staff_.warehouses[0];
  draft.salesperson = staff_.employees[2];
  for (Pick& pick : lines) {
    article(pick.article).stock[0] -= pick.quantity;
    pick.price = article(pick.article).buy;
  }
  addLines(rules, draft, lines);
  draft.paid = 0;
  draft.account = QStringLiteral("工商银行");
  draft.note = QStringLiteral("镀膜瑕疵，退回厂家");
  save(rules, draft);
  return true;
}

// ---- goods in ----------------------------------------------------------------------------------------------------

void Trade::wantMore(int index, int warehouse) {
  const Article& goods = article(index);
  if (warehouse == 1) {
    if (goods.stock[1] > goods.reorder / 2) return;
    if (std::find(wantedInBranch_.begin(), wantedInBranch_.end(), index) == wantedInBranch_.end())
      wantedInBranch_.push_back(index);
    return;
  }
  if (goods.stock[0] > goods.reorder || !goods.isOrdered()) return;
  std::vector<int>& list = wanted_[{goods.supplier, 0}];
  if (std::find(list.begin(), list.end(), index) == list.end()) list.push_back(index);
}

bool Trade::receiveFrom(int supplier, int warehouse, const std::vector<int>& wanted, int daysBack) {
  workAs(staff_.buyer);
  const TradingRules& rules = receipt::rules();
  TradingDraft draft = rules.fresh({});
  if (daysBack > 0) {  // the delivery note was found later
    draft.date = day_.addDays(-daysBack).toString(Qt::ISODate);
    draft.number = newDocumentNumber(rules.family(), draft.date);
  }
  draft.partner = staff_.suppliers[static_cast<std::size_t>(supplier)];
  draft.warehouse = staff_.warehouses[static_cast<std::size_t>(warehouse)];
  draft.salesperson = staff_.employees[random_.chance(850) ? 2 : 0];
  draft.originalNumber = QStringLiteral("FH%1").arg(random_.between(10000, 99999));
  std::vector<Pick> lines;
  for (const int index : wanted) {
    const Article& goods = article(index);
    const double price = wholeFen(goods.buy * random_.between(96, 104) / 100);
    lines.push_back({.article = index, .quantity = goods.batch, .price = price});
  }
  addLines(rules, draft, lines);
  const bool paidNow = random_.chance(250);
  draft.settlement = Settlement::RestOnAccount;
  if (!paidNow) draft.paid = 0;
  draft.account = QStringLiteral("工商银行");
  if (random_.chance(120)) {
    draft.freight = random_.between(3, 12) * 5;
    draft.wePayFreight = true;
  }
  const QString number = save(rules, draft);
  for (const Pick& pick : lines)
    arrivals_[number].push_back({pick.article, warehouse, pick.quantity});
  return true;
}

bool Trade::receive(int daysBack) {
  auto most = wanted_.end();
  for (auto each = wanted_.begin(); each != wanted_.end(); ++each)
    if (!each->second.empty() && (most == wanted_.end() || each->second.size() > most->second.size())) most = each;
  if (most == wanted_.end()) return false;
  std::vector<int>& list = most->second;
  const auto count = std::min<std::ptrdiff_t>(demo_trade_detail::kLongestReceipt, std::ssize(list));
  const std::vector<int> part(list.begin(), list.begin() + count);
  list.erase(list.begin(), list.begin() + count);
  return receiveFrom(most->first.first, most->first.second, part, daysBack);
}

int Trade::stockUp() {
  // Of a catalogue of tens of thousands most articles are only ordered when somebody asks for them.
  const int stride = std::max(1, static_cast<int>(catalogue_.articles.size()) / 3000);
  int made = 0;
  for (int supplier = 0; supplier < static_cast<int>(staff_.suppliers.size()); ++supplier) {
    std::vector<int> wanted;
    for (int i = 0; i < static_cast<int>(catalogue_.articles.size()); i += stride)
      if (article(i).supplier == supplier && article(i).isOrdered() && article(i).stock[0] <= article(i).reorder)
        wanted.push_back(i);
    for (std::size_t from = 0; from < wanted.size(); from += demo_trade_detail::kLongestReceipt) {
      const std::size_t to = std::min(wanted.size(), from + demo_trade_detail::kLongestReceipt);
      made += receiveFrom(
          supplier, 0,
          {wanted.begin() + static_cast<std::ptrdiff_t>(from), wanted.begin() + static_cast<std::ptrdiff_t>(to)}, 0);
    }
  }
  auditDay(0);
  for (int i = 0; i < static_cast<int>(catalogue_.articles.size()); i += stride)
    if (article(i).stock[0] >= 2) wantedInBranch_.push_back(i);
  while (transfer())
    ++made;
  auditDay(0);
  return made;
}

// ---- evening -----------------------------------------------------------------------------------------------------

void Trade::arrive(const QString& number) {
  const auto found = arrivals_.find(number);
  if (found == arrivals_.end()) return;
  for (const auto& [index, warehouse, pieces] : found->second)
    article(index).stock[static_cast<std::size_t>(warehouse)] += pieces;
  arrivals_.erase(found);
}

int Trade::auditFamily(const DocumentFamily& family, int leave) {
  const RowSet waiting =
      openSelect(compose("select {} from {} where {}=0 order by id", {family.number, family.head, family.status}));
  int audited = 0;
  for (int row = 0; row < waiting.rowCount() - leave; ++row) {
    const QString number = waiting.text(row, 0);
    if (checkDj(family, number, prompt_) != AuditOutcome::Audited)
      throw std::logic_error("demonstration: not audited: " + number.toStdString());
    arrive(number);
    ++audited;
  }
  return audited;
}

int Trade::auditDay(int leave) {
  workAs(staff_.manager);
  // What comes in first: then nothing is short that was sold in the meantime.
  int audited = 0;
  for (const DocumentFamily* family :
       {&families::purchaseReceipt, &families::saleReturn, &families::overflow, &families::split, &families::bundle,
        &families::transfer, &families::sale, &families::purchaseReturn, &families::loss})
    audited += auditFamily(*family, leave);
  return audited + auditMoney(leave);
}

bool Trade::correctSale() {
  if (sold_.size() < 40) return false;
  const Sold& sale = sold_[sold_.size() - 1 - static_cast<std::size_t>(random_.below(20))];
  workAs(staff_.manager);
  if (lookupNumber("select ls_status from jxc_lsxsd where gl_djh=?", sale.number) != 1) return false;
  if (!cancelSale(sale.number, prompt_, CancelMode::Batch)) return false;
  return checkDj(families::sale, sale.number, prompt_) == AuditOutcome::Audited;
}

void Trade::leaveDrafts() {
  const auto begin = [&](const Operator& who, const TradingRules& rules, const QString& partner,
                         const std::vector<Pick>& lines) {
    if (lines.empty()) return;
    workAs(who);
    TradingDraft draft = rules.fresh({});
    draft.partner = partner;
    addLines(rules, draft, lines);
  };
  begin(staff_.seller, sale::rules(), QString::fromUtf16(builtInSn), glasses(0));
  begin(staff_.manager, sale::rules(), QString::fromUtf16(builtInSn), basket(0, 50));
  // What a visitor finds who opens the sales screen as the administrator.
  std::vector<Pick> shown = glasses(0);
  addPick(shown, inStock(catalogue_.byKind[static_cast<std::size_t>(Kind::Contact)], 0, 2), 2, 100);
  addPick(shown, inStock(catalogue_.byKind[static_cast<std::size_t>(Kind::Sundry)], 0, 1), 1, 100);
  begin(staff_.administrator, sale::rules(), staff_.people.front(), shown);
  std::vector<Pick> ordered;
  for (int i = 0; i < 5; ++i)
    addPick(ordered, inStock(catalogue_.byKind[static_cast<std::size_t>(Kind::Frame)], 0, 1), 4, 100);
  for (Pick& pick : ordered)
    pick.price = article(pick.article).buy;
  begin(staff_.buyer, receipt::rules(), staff_.suppliers.front(), ordered);
}

}  // namespace jxc::demo
