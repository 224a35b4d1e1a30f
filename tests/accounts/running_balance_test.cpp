// Running balances of cash, partner and invoice ledgers.
#include "accounts/cash_ledger.h"
#include "accounts/partner_ledger.h"
#include "harness/account_set_fixture.h"
#include "harness/invariants.h"
#include "harness/qt_printers.h"

namespace jxc {
namespace running_balance_test {

class RunningBalanceTest : public test::AccountSetFixture {
 protected:
  std::int64_t owe(const QString& date, double due, double paid) {
    const auto id = insertRow("jxc_ysyfk", {{"k_type", u"ghs"},
                                            {"k_ghskh", u"100001"},
                                            {"k_rq", date},
                                            {"k_yfje", due},
                                            {"k_sfje", paid},
                                            {"k_qcje", 0.0},
                                            {"k_yhje", 5.0},  // takes no part
                                            {"k_ljje", 12345.0}});
    recomputeYsyfk("100001", PartnerType::Supplier, date);
    return id;
  }
  double stored(std::int64_t id) { return lookupNumber("select k_ljje from jxc_ysyfk where id=?", id); }
  double onSupplier() { return lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn='100001'"); }
};

TEST_F(RunningBalanceTest, BackDatedDebtMovesLaterLinesAndThePartner) {
  const auto first = owe("2021-05-01", 100, 0);
  const auto second = owe("2021-05-20", 0, 30);
  EXPECT_EQ(stored(second), 70);
  const auto between = owe("2021-05-10", 0.255, 0);
  EXPECT_EQ(stored(first), 100);
  EXPECT_EQ(stored(between), 100.255);
  EXPECT_EQ(stored(second), 70.255);
  EXPECT_EQ(onSupplier(), 70.255);
  const auto sameDay = owe("2021-05-10", 10, 0);
  EXPECT_EQ(ysyfkBalanceAt("100001", PartnerType::Supplier, "2021-05-10"), 110.255);
  EXPECT_EQ(ysyfkBalanceAt("100001", PartnerType::Supplier, "2021-05-10", sameDay), 100.255);
  EXPECT_EQ(ysyfkBalanceAt("100001", PartnerType::Supplier, "2021-05-20", second), 100);  // entered before it
  EXPECT_EQ(ysyfkBalanceNow("100001", PartnerType::Supplier), 80.26);                     // halves go up
  EXPECT_EQ(ysyfkBalanceAt("100001", PartnerType::Supplier, "2021-04-30"), 0);
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // A partner without lines from the date on keeps what was carried; without any line he owes nothing.
  execSql("update jxc_ghsxx set ghs_lwje=1");
  recomputeYsyfk("100001", PartnerType::Supplier, "2022-01-01");
  EXPECT_EQ(onSupplier(), 80.255);
  execSql("delete from jxc_ysyfk");
  recomputeYsyfk("100001", PartnerType::Supplier, "2021-01-01");
  EXPECT_EQ(onSupplier(), 0);
}

TEST_F(RunningBalanceTest, CashCountsAuditedLinesOnly) {
  const auto line = [](const char* date, double amount, const char* audited) {
    return insertRow("jxc_xjyh",
                     {{"xj_kmmc", u"现金"}, {"xj_rq", date}, {"xj_je", amount}, {"xj_chk", audited}, {"xj_ljje", 0.0}});
  };
  const auto waiting = line("2021-05-04", 500, "0");
  const auto in = line("2021-05-04", 80, "1");
  line("2021-05-05", -100, "1");
  recomputeXjyh("现金", "2021-05-04");
  EXPECT_EQ(xjyhBalanceNow("现金"), -20);
  EXPECT_EQ(lookupNumber("select xj_ljje from jxc_xjyh where id=?", in), 80);
  EXPECT_EQ(lookupNumber("select xj_ljje from jxc_xjyh where id=?", waiting), 0);
  EXPECT_EQ(xjyhBalanceNow("没有的账户"), 0);
}

TEST_F(RunningBalanceTest, InvoicesCountWhatIsNotExcluded) {
  const auto line = [](double due, double invoiced, bool counted) {
    return insertRow("jxc_fpdjb", {{"fp_type", u"kh"},
                                   {"fp_ghskh", u"100001"},
                                   {"fp_rq", u"2021-05-04"},
                                   {"fp_qcje", 0.0},
                                   {"fp_yfje", due},
                                   {"fp_kpje", invoiced},
                                   {"fp_ljje", 0.0},
                                   {"fp_check", counted}});
  };
  line(100, 0, true);
  line(1000, 0, false);
  const auto last = line(0, 40, true);
  recomputeFp("100001", PartnerType::Customer, "2021-05-01");
  EXPECT_EQ(fpBalanceAt("100001", PartnerType::Customer, allDates), 60);
  EXPECT_EQ(fpBalanceAt("100001", PartnerType::Customer, allDates, last), 100);
}

}  // namespace running_balance_test
}  // namespace jxc
