// The demonstration shop: right by every rule of the books, the same for the same seed, and with something of all that
// a visitor looks for.
#include "maintenance/demo_shop.h"

#include "core/data_module.h"
#include "core/rights.h"
#include "harness/account_set_fixture.h"
#include "harness/findings.h"
#include "harness/invariants.h"
#include "harness/whole_books.h"
#include "maintenance/prove.h"

namespace jxc::demo_shop_test {

class DemoShop : public test::AccountSetFixture {
 protected:
  static DemoPlan smallPlan(std::uint64_t seed) {
    DemoPlan plan;
    plan.months = 1;
    plan.seed = seed;
    plan.goods = 70;
    plan.documentsADay = 12;
    plan.lastDay = QDate(2021, 8, 31);
    return plan;
  }

  /// An empty account set in place of the one that was filled.
  static void startAnew() { dataModule().installAccountDb(openSqlite(QStringLiteral(":memory:"))); }
};

TEST_F(DemoShop, AMonthIsRightByAllRulesAndTheSameForTheSameSeed) {
  startAnew();
  const DemoOutcome made = buildDemoShop(smallPlan(6));
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  const proof::Proof proof = proof::prove(accountDb());
  EXPECT_TRUE(proof.isClean()) << proof.summary().toStdString();
  EXPECT_EQ(test::found(proof, proof::Weight::Note).filter(QStringLiteral("dated-back")), QStringList());
  EXPECT_GT(made.documents, 31 * 12 * 9 / 10);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_kcsp where kc_sl<0"), 0);

  // Something of everything: all kinds of rows, both warehouses, documents that wait, lines that were begun.
  for (const char* flag : {"qc", "cj", "ct", "xs", "xt", "db", "pd", "bs", "by", "cf", "kb"})
    EXPECT_GT(lookupNumber("select count(*) from jxc_goodslist where gl_flag=?", QString::fromLatin1(flag)), 0) << flag;
  EXPECT_EQ(lookupNumber("select count(*) from (select distinct ck_sn from jxc_goodslist where gl_flag='xs') a"), 2);
  EXPECT_GT(lookupNumber("select count(*) from jxc_lsxsd where ls_status=0"), 0);
  EXPECT_GT(lookupNumber("select count(*) from jxc_lsxssp where gl_djh not in (select gl_djh from jxc_lsxsd)"), 0);
  EXPECT_GT(lookupNumber("select count(*) from jxc_lsxsd where ls_hkje>0"), 0);
  EXPECT_GT(lookupNumber("select count(*) from jxc_jhd where j_chkrq>j_jhrq"), 0) << "a receipt dated back";
  EXPECT_GT(lookupNumber("select count(*) from jxc_lsxsd where ls_yf>0 and ls_status=1"), 0) << "a parcel";

  for (const char* kind : {"jxc_htgl a,jxc_jhd b where a.gl_djh=b.j_sn",
                           "jxc_htgl a,jxc_lsxsd b where a.gl_djh=b.gl_djh", "jxc_htgl a where a.gl_djh=''"})
    EXPECT_GT(lookupNumber("select count(*) from " + std::string(kind)), 0) << kind;

  for (const char* some : {"fp_kpje=fp_yfje and fp_djlx='XS'", "fp_kpje<>0 and fp_kpje<fp_yfje",
                           "fp_check=0 and fp_djlx='CJ'", "fp_djlx='XP' and fp_check=1", "fp_djlx='CP'"})
    EXPECT_GT(lookupNumber("select count(*) from jxc_fpdjb where " + std::string(some)), 0) << some;

  // What statistics tell apart: so many different values of each.
  const std::pair<const char*, int> kinds[] = {
      {"mid(ls_xsrq,12,2) as v from jxc_lsxsd", 8},  // hours of the day
      {"gl_flag as v from jxc_goodslist where g_name like '%(赠品)'", 1},
      {"g_tclb as v from jxc_goodslist x,jxc_goods y where x.g_sn=y.g_sn and gl_flag='xs' and g_tclb<>0", 2},
      {"u_tcfs as v from jxc_user x,jxc_lsxsd y where x.u_sn=y.u_sn and u_tc>0", 2},
      {"kt_name as v from jxc_khxx x,jxc_lsxsd y where x.kh_sn=y.kh_sn", 3},
      {"z_name as v from jxc_khxx x,jxc_lsxsd y where x.kh_sn=y.kh_sn", 4},
      {"fy_lx as v from jxc_yyfy where fy_chk='1' and gl_djh like 'FY%'", 4},
      {"fy_lx as v from jxc_yyfy where fy_chk='1' and gl_djh like 'SR%'", 2},
      {"k_djlx as v from jxc_ysyfk where k_djlx in ('YS','SK','YF','FK')", 4}};
  for (const auto& [what, least] : kinds)
    EXPECT_GE(lookupNumber("select count(*) from (select distinct " + std::string(what) + ") a"), least) << what;

  // Who sells does not audit, who buys does not see the till.
  EXPECT_TRUE(hasRightOf("xsgl", 1, QStringLiteral("林小雨")));
  EXPECT_FALSE(hasRightOf("xsgl", 7, QStringLiteral("林小雨")));
  EXPECT_TRUE(hasRightOf("xsgl", 7, QStringLiteral("周敏")));
  EXPECT_FALSE(hasRightOf("xsgl", 1, QStringLiteral("孙磊")));
  EXPECT_EQ(session().a_name, QStringLiteral("admin"));

  const test::Books first = test::readBooks(test::Reading::ToTheLetter);
  startAnew();
  buildDemoShop(smallPlan(6));
  EXPECT_TRUE(test::readBooks(test::Reading::ToTheLetter) == first);
  startAnew();
  buildDemoShop(smallPlan(8));
  EXPECT_FALSE(test::readBooks(test::Reading::ToTheLetter) == first);
}

TEST_F(DemoShop, GoodsInTransitIssuesThatWaitAndLoans) {
  startAnew();
  DemoPlan plan = smallPlan(6);
  plan.putaway = true;
  plan.goods = 40;  // few: sets, which nobody orders, are often drawn
  buildDemoShop(plan);
  EXPECT_EQ(test::brokenInvariants(), QStringList());
  const proof::Proof proof = proof::prove(accountDb());
  EXPECT_TRUE(proof.isClean()) << proof.summary().toStdString();
  for (const char* some :
       {"jxc_rkd where rk_status=1", "jxc_rkd where rk_status=0", "jxc_ckd where ck_status=1",
        "jxc_ckd where ck_status=0", "jxc_jhd where j_crk=0", "jxc_lsxsd where ls_crk=0", "jxc_jhsp where jh_qxsl>0",
        "jxc_khjh where jh_status=0", "jxc_khjhsp where jh_sl>jh_hhsl+jh_xssl and id2=id",
        "jxc_khjhsp where jh_flag='还货'", "jxc_khjhsp where jh_flag='销售'"})
    EXPECT_GT(lookupNumber("select count(*) from " + std::string(some)), 0) << some;
}

}  // namespace jxc::demo_shop_test
