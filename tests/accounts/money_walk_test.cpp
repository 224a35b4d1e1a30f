// A long random life of three accounts, two customers and two suppliers: after each command every balance is the sum
// of its lines, counted here in another way than the program does.
#include "accounts/money.h"

#include <QDate>

#include <array>
#include <cmath>
#include <map>
#include <random>

namespace jxc::money_walk_test {

using cash::Movement;
using test::Kind;

const std::array kAccounts{QStringLiteral("现金"), QStringLiteral("工行帐号"), QStringLiteral("建行帐号")};
const std::array kPartners{QStringLiteral("100001"), QStringLiteral("100002")};

class MoneyWalk : public test::MoneyTest {
 protected:
  MoneyWalk() { asked = &meant_; }  // a day that lies far back is meant
  template <class List>
  const auto& any(const List& list) {
    return list[std::uniform_int_distribution<std::size_t>(0, list.size() - 1)(random_)];
  }
  int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(random_); }
  double amount() { return (1 + upTo(99999)) / 100.0; }
  /// Mostly today and the days around, now and then a year back.
  QString day() {
    const int back = upTo(9) == 0 ? upTo(365) : upTo(5);
    return QDate(2021, 5, 3).addDays(-back).toString(Qt::ISODate);
  }
  const PartnerSide& anySide() { return upTo(1) == 0 ? customerSide : supplierSide; }
  Kind anyKind() { return upTo(1) == 0 ? Kind::Due : Kind::Payment; }

  /// A random row of a table that fulfils a condition; empty when none does.
  QString anyOf(const char* column, const char* table, const char* condition) {
    const RowSet rows = openSelect(compose("select {} from {}", {column, table}) + " where " + condition);
    return rows.isEmpty() ? QString() : rows.text(upTo(rows.rowCount() - 1), 0);
  }

  void enterSomething() {
    const PartnerSide& side = anySide();
    const Kind kind = anyKind();
    const double sign = kind == Kind::Due && upTo(5) == 0 ? -1 : 1;
    enter(side, kind, sign * amount(), day(), upTo(3) == 0 ? amount() / 10 : 0, any(kAccounts), any(kPartners));
  }
  void moveSomething() {
    const auto movement = static_cast<Movement>(upTo(2));
    move(movement, amount(), day(), any(kAccounts), any(kAccounts));
  }
  void changeSomething() {
    const QString number = anyOf("gl_djh", "jxc_ysyfk_dj", "k_check=0");
    if (number.isEmpty()) return;
    const auto [side, kind] = kindOf(number);
    auto draft = partner_books::openDocument(*side, kind, documentOf(number), prompt);
    ASSERT_TRUE(draft);
    draft->amount = amount();
    draft->date = day();
    EXPECT_TRUE(partner_books::saveDocument(*side, kind, *draft, *asked));
  }
  void auditSomething() {
    if (upTo(2) == 0) {
      const QString line = anyOf("gl_djh", "jxc_xjyh", "xj_chk='0'");
      EXPECT_EQ(cash::checkDj(line), !line.isEmpty());
      return;
    }
    const QString number = anyOf("gl_djh", "jxc_ysyfk_dj", "k_check=0");
    if (number.isEmpty()) return;
    const auto [side, kind] = kindOf(number);
    EXPECT_TRUE(partner_books::auditDocument(*side, kind, number));
    EXPECT_FALSE(partner_books::auditDocument(*side, kind, number));
  }
  void cancelSomething() {
    if (upTo(2) == 0) {
      const QString line = anyOf("id", "jxc_xjyh", "xj_chk='1' and gl_djh like 'X%'");
      if (line.isEmpty()) return;
      EXPECT_TRUE(cash::cancelLine(line.toLongLong(), prompt.willSayYes()));
      if (!lookupValue("select gl_djh from jxc_xjyh where id=? and gl_djh like 'XZ%'", line).isEmpty()) repairCash();
      return;
    }
    const QString number = anyOf("gl_djh", "jxc_ysyfk_dj", "k_check<>0");
    if (number.isEmpty()) return;
    const auto [side, kind] = kindOf(number);
    EXPECT_TRUE(partner_books::unCheck(*side, kind, number, prompt.willSayYes()));
  }
  void deleteSomething() {
    if (upTo(1) == 0) {
      const QString line = anyOf("gl_djh", "jxc_xjyh", "xj_chk='0'");
      if (line.isEmpty()) return;
      EXPECT_TRUE(cash::deleteLine(line, prompt.willSayYes()));
      return;
    }
    const QString number = anyOf("gl_djh", "jxc_ysyfk_dj", "k_check=0");
    if (number.isEmpty()) return;
    const auto [side, kind] = kindOf(number);
    EXPECT_TRUE(partner_books::deleteDocument(*side, kind, documentOf(number), prompt.willSayYes()));
  }
  /// The one command that leaves an account behind is the cancel of a transfer: then the operator presses 重新计算.
  void repairCash() {
    prompt.willSayYes();
    cash::recomputeAccounts({}, QStringLiteral("2000-01-01"), prompt);
  }

  static std::pair<const PartnerSide*, Kind> kindOf(const QString& number) {
    const bool customer = number.startsWith(u"YS") || number.startsWith(u"SK");
    return {customer ? &customerSide : &supplierSide, number.startsWith(u'Y') ? Kind::Due : Kind::Payment};
  }

  /// Whole sums over the documents, not over the ledgers: what is audited counts, and nothing else.
  QStringList differences() {
    std::map<QString, std::int64_t> owed, cash;
    const auto thousandths = [](double yuan) { return std::llround(yuan * 1000); };
    for (const Row row : openSelect("select * from jxc_ysyfk_dj where k_check<>0")) {
      const std::int64_t paid = thousandths(row.number("k_sfje"));
      const std::int64_t moved = thousandths(row.number("k_yfje")) - paid - thousandths(row.number("k_mlje"));
      owed[row.text("k_type") + row.text("k_ghskh")] += moved;
      if (paid != 0) cash[row.text("k_fkfs")] += row.text("k_type") == u"kh" ? paid : -paid;
    }
    for (const Row row : openSelect("select xj_kmmc,xj_je from jxc_xjyh where xj_chk='1' and gl_djh like 'X%'"))
      cash[row.text("xj_kmmc")] += thousandths(row.number("xj_je"));
    QStringList wrong;
    const auto compare = [&](const QString& what, std::int64_t counted, double stored) {
      if (counted != thousandths(stored)) wrong << what + u": "_qs + QString::number(stored);
    };
    for (const QString& account : kAccounts)
      compare(account, cash[account], xjyhBalanceNow(account));
    for (const QString& partner : kPartners) {
      compare(u"kh"_qs + partner, owed[u"kh"_qs + partner], customerOwes(partner));
      compare(u"ghs"_qs + partner, owed[u"ghs"_qs + partner],
              lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn=?", partner));
    }
    return wrong;
  }

  test::WhileAsked meant_{{}};
  std::mt19937 random_{20210503};
};

TEST_F(MoneyWalk, BalancesAreSumsOfLinesAfterEachOf2000Commands) {
  int done[6] = {};
  for (int step = 0; step < 2000 && !HasFailure(); ++step) {
    const int command = upTo(19);
    if (command < 6)
      enterSomething(), ++done[0];
    else if (command < 8)
      moveSomething(), ++done[1];
    else if (command < 10)
      changeSomething(), ++done[2];
    else if (command < 16)
      auditSomething(), ++done[3];
    else if (command < 18)
      cancelSomething(), ++done[4];
    else
      deleteSomething(), ++done[5];
    ASSERT_EQ(differences(), QStringList()) << "after command " << step;
    // Line by line: every stored running balance, those on the partners, and the other rules of the books.
    if (step % 10 == 0) {
      ASSERT_EQ(test::brokenInvariants(), QStringList()) << "after command " << step;
    }
  }
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  for (const int count : done)
    EXPECT_GT(count, 100);
  EXPECT_GT(lookupNumber("select count(*) from jxc_ysyfk"), 50);
}

}  // namespace jxc::money_walk_test
