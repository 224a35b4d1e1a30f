// 差额平衡: settles a paid amount that differs from the payable: balancePurchase and balanceSale of stock/posting.h.
#include "core/defaults.h"
#include "core/posting.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "engine/number_text.h"
#include "stock/document.h"
#include "stock/line_amounts.h"
#include "stock/posting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace jxc {
namespace balancing_detail {

/// A remainder up to this many yuan is accepted, and the paid amount follows the total.
constexpr double acceptedRest = 0.4;
constexpr char16_t byLine[] = u"1";  // cs_xsjgts: a line of goods "00000000" takes the difference

/// What differs between the two sides.
struct Side {
  const DocumentFamily& family;
  void (*insertBalancing)(const QString& number, double difference);

  const LineColumns& columns() const { return *family.line.columns; }
};

const Side purchaseSide = {
    .family = families::purchaseReceipt,
    .insertBalancing =
        [](const QString& number, double difference) {
          insertRow("jxc_jhsp", {{"j_sn", number},
                                 {"jh_dj", 0.0},
                                 {"jh_sl", 0.0},
                                 {"jh_zje", difference},
                                 {"g_sn", QStringLiteral("00000000")},
                                 {"a_name", ownerOf(families::purchaseReceipt, number)},
                                 {"jh_je", difference},
                                 {"jh_tax", 0.0},
                                 {"jh_taxdj", 0.0},
                                 {"jh_taxje", 0.0},
                                 {"jh_rksl", 0.0},
                                 {"jh_dzl", 1.0}});
        },
};

const Side saleSide = {
    .family = families::sale,
    .insertBalancing =
        [](const QString& number, double difference) {
          insertRow("jxc_lsxssp", {{"gl_djh", number},
                                   {"ls_dj", 0.0},
                                   {"ls_sl", 0.0},
                                   {"ls_zje", difference},
                                   {"g_sn", QStringLiteral("00000000")},
                                   {"a_name", ownerOf(families::sale, number)},
                                   {"ls_je", difference},
                                   {"ls_cbj", 0.0},
                                   {"ls_zcb", 0.0},
                                   {"ls_cbj2", 0.0},
                                   {"ls_tax", 0.0},
                                   {"ls_taxdj", 0.0},
                                   {"ls_taxje", 0.0},
                                   {"ls_lsj", 0.0},
                                   {"ls_cksl", 0.0},
                                   {"ls_qxsl", 0.0},
                                   {"ls_zhje", 0.0},
                                   {"ls_dhbz", 0},
                                   {"ls_dhdj", 0.0},
                                   {"ls_dzl", 1.0},
                                   {"t_zp", QString()},
                                   {"ghs_sn", defaultSupplierSn()}});
        },
};

/// The change of a balancing line that is there, and its removal.
std::string changeLine(const DocumentFamily& family) {
  const LineColumns& c = *family.line.columns;
  // The net amount follows the total, or the ledger would show yesterday's difference.
  return compose("update {} set {}=?,{}=? where {}=? and g_sn='00000000'", {c.table, c.total, c.net, family.number});
}
std::string dropLine(const DocumentFamily& family) {
  return compose("delete from {} where {}=? and g_sn='00000000'", {family.lines, family.number});
}

/// A line that takes part in spreading.
struct Bearer {
  std::int64_t id;
  LineFigures line;
  bool changed = false;
};

Balanced spread(const Side& side, const QString& number, double paid, double payable) {
  const AmountRules rules = AmountRules::current();
  const std::string_view gift = side.family.line.gift;  // a gift takes no share of a difference
  std::vector<Bearer> bearers;
  double total = 0;
  const RowSet rows = openSelect(
      compose("select * from {} where {}=? order by id", {side.columns().table, side.family.number}), number);
  for (const Row row : rows) {
    Bearer bearer{.id = row.integer("id"), .line = readFigures(row, side.columns())};
    total += bearer.line.total;
    if (bearer.line.quantity > 0 && (gift.empty() || row.text(gift).isEmpty())) bearers.push_back(bearer);
  }
  double settled = payable;
  while (!bearers.empty() && toSixDecimals(settled - paid) > acceptedRest) {
    const double share = roundEps((settled - paid) / static_cast<double>(bearers.size()), rules.moneyDigits);
    bool borne = false;
    for (Bearer& bearer : bearers) {
      // A share that rounds to nothing, or that no line can bear, would be asked for for ever.
      if (share <= 0 || bearer.line.discount == 0 || toSixDecimals(bearer.line.total - share) < 0) continue;
      total -= share;
      spreadTotal(bearer.line, toSixDecimals(bearer.line.total - share), rules);
      bearer.changed = borne = true;
    }
    settled = toSixDecimals(total);
    if (!borne) break;
  }
  for (const Bearer& bearer : bearers)
    if (bearer.changed) writeFigures(side.columns(), bearer.id, bearer.line);
  return {.due = settled, .paid = settled};
}

Balanced balance(const Side& side, const QString& number, double paid, double payable) {
  const Difference becomes = differenceOf(paid, payable);
  const double difference = toSixDecimals(paid - payable);
  Transaction transaction(accountDb());
  Balanced booked{.due = payable, .paid = becomes == Difference::PaidFollows ? payable : paid};
  if (becomes != Difference::BalancingLine)
    postSql(dropLine(side.family), number);
  else if (execSql(changeLine(side.family), difference, difference, number) == 0)
    side.insertBalancing(number, difference);
  if (becomes == Difference::Spread) booked = spread(side, number, paid, payable);
  transaction.commit();
  return booked;
}

}  // namespace balancing_detail

bool paysDue(double paid, double due) {
  // Half of the last digit that totals show, never more than half a fen.
  constexpr std::array<double, 7> halves = {0.005, 0.005, 0.005, 0.0005, 0.00005, 0.000005, 0.0000005};
  const auto digits = static_cast<std::size_t>(std::clamp(totalDigits(), 0, 6));
  return std::fabs(toSixDecimals(paid - due)) <= halves[digits];
}

Difference differenceOf(double paid, double payable) {
  if (paysDue(paid, payable)) return Difference::None;
  if (session().cs_xsjgts == balancing_detail::byLine) return Difference::BalancingLine;
  return toSixDecimals(payable - paid) > balancing_detail::acceptedRest ? Difference::Spread : Difference::PaidFollows;
}

Balanced balancePurchase(const QString& number, double paid, double payable) {
  return balancing_detail::balance(balancing_detail::purchaseSide, number, paid, payable);
}

Balanced balanceSale(const QString& number, double paid, double payable) {
  return balancing_detail::balance(balancing_detail::saleSide, number, paid, payable);
}

void renewBalancingLine(const DocumentFamily& family, const QString& number, double difference) {
  using namespace balancing_detail;
  if (difference == 0)
    postSql(dropLine(family), number);
  else
    postSql(changeLine(family), difference, difference, number);
}

}  // namespace jxc
