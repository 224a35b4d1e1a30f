// Running balances of cash, partner and invoice ledgers.
#include "accounts/cash_ledger.h"
#include "accounts/partner_ledger.h"
#include "harness/account_set_fixture.h"
#include "harness/invariants.h"

namespace jxc::running_balance_test {

class RunningBalanceTest : public test::AccountSetFixture {
 protected:
  std::int64_t owe(const QString& date, double due, double paid) {
    execSql(
        "insert into jxc_ysyfk (k_type,k_ghskh,k_rq,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje) values "
        "('ghs','100001',?,?,?,0,5,12345)",  // what was let off takes no part
        date, due, paid);
    recomputeYsyfk("100001", PartnerType::Supplier, date);
    return static_cast<std::int64_t>(lookupNumber("select max(id) from jxc_ysyfk"));
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

TEST_F(RunningBalanceTest, InvoicesCountWhatIsNotExcluded) {
  const auto line = [](double due, double invoiced, bool counted) {
    execSql(
        "insert into jxc_fpdjb (fp_type,fp_ghskh,fp_rq,fp_qcje,fp_yfje,fp_kpje,fp_ljje,fp_check) values "
        "('kh','100001','2021-05-04',0,?,?,0,?)",
        due, invoiced, counted);
  };
  line(100, 0, true);
  line(1000, 0, false);
  line(0, 40, true);
  const auto last = static_cast<std::int64_t>(lookupNumber("select max(id) from jxc_fpdjb"));
  recomputeFp("100001", PartnerType::Customer, "2021-05-01");
  EXPECT_EQ(fpBalanceAt("100001", PartnerType::Customer, allDates), 60);
  EXPECT_EQ(fpBalanceAt("100001", PartnerType::Customer, allDates, last), 100);
}

}  // namespace jxc::running_balance_test
