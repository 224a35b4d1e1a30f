// A shop that changes its names: goods, customer, warehouse and employee are renamed on their screens, and what was
// written under the old names stands under the new ones.
#include "harness/articles.h"
#include "masterdata/goods_classes.h"
#include "screens/harness/screen_test.h"

namespace jxc::test {

class RenameStory : public ScreenTest {
 protected:
  RenameStory() {
    EXPECT_TRUE(addGoods(article(u"30000001"_qs, u"钛架"_qs, addGoodsClass(1, u"镜架"_qs, prompt)->number, 3), prompt));
    // A sale to the usual customer, its money, a spectacle order, an asset; and a namesake under another number.
    sold(u"100001", u"30000001");
    sold(u"100009", u"30000009");
    execSql(
        "insert into jxc_xjyh (gl_djh,ghs_sn,ghs_name,ck_name,u_name) values "
        "('SK21050310001','100001','普通客户','主仓库','默认员工')");
    insertRow("jxc_posxsd",
              {{"gl_djh", u"PS1"}, {"pos_ygs", u"默认员工"}, {"pos_jgy", u"别人"}, {"pos_xsy", u"默认员工"}});
    insertRow("jxc_zcmx", {{"u_name", u"默认员工"}});
  }
  static void sold(const char16_t* customer, const char16_t* goods) {
    execSql(
        "insert into jxc_goodslist (gl_flag,gl_djh,g_sn,g_name,ghs_sn,ghs_name,ck_sn,ck_name,u_name) values "
        "('xs','XS21050310001',?,'钛架',?,'普通客户','100001','主仓库','默认员工')",
        goods, customer);
  }
  /// Renames the row that a list shows first.
  void rename(std::string_view list, std::string_view dialog, std::string_view field, const char16_t* name) {
    open(list, [&](ui::Screen& s) {
      s.grids().front()->waitLoaded();
      s.grids().front()->selectRow(0);
      press(s, "F3", dialog, [&](ui::Screen& d) {
        type(d, field, QStringView(name));
        press(d, "F5");
        EXPECT_FALSE(d.isVisible());
      });
    });
  }
  static QString ledger(const char16_t* customer, std::string_view column) {
    return lookupValue(compose("select {} from jxc_goodslist where gl_flag='xs' and ghs_sn=?", {column}),
                       QString::fromUtf16(customer));
  }
};

TEST_F(RenameStory, HistoryStandsUnderTheNewNames) {
  rename("F_Spxxgl", "F_Spxxgl_Modi", "g_name", u"钛合金架");
  rename("F_Khgl", "F_Khgl_Modi", "tname", u"门市客户");
  rename("F_Ckgl", "F_Ckgl_Add", "tname", u"总店库");
  rename("F_User", "F_User_Add", "tname", u"王店长");

  EXPECT_EQ(ledger(u"100001", "g_name"), u"钛合金架"_qs);
  EXPECT_EQ(ledger(u"100001", "ghs_name"), u"门市客户"_qs);
  EXPECT_EQ(ledger(u"100009", "g_name"), u"钛架"_qs) << "another article of the same name";
  EXPECT_EQ(ledger(u"100009", "ghs_name"), u"普通客户"_qs) << "another customer of the same name";
  // One warehouse; employees stand in the ledger by their names alone.
  for (const auto* customer : {u"100001", u"100009"}) {
    EXPECT_EQ(ledger(customer, "ck_name"), u"总店库"_qs);
    EXPECT_EQ(ledger(customer, "u_name"), u"王店长"_qs);
  }
  EXPECT_EQ(lookupValue("select g_name from jxc_goodslist where gl_flag='qc'"), u"钛合金架"_qs);
  EXPECT_EQ(lookupValue("select ghs_name+'/'+ck_name+'/'+u_name from jxc_xjyh where gl_djh='SK21050310001'"),
            u"门市客户/总店库/王店长"_qs);
  EXPECT_EQ(lookupValue("select pos_ygs+'/'+pos_jgy+'/'+pos_xsy from jxc_posxsd"), u"王店长/别人/王店长"_qs);
  EXPECT_EQ(lookupValue("select u_name from jxc_zcmx"), u"王店长"_qs);
  EXPECT_EQ(lookupValue("select kh_uname from jxc_khxx"), u"王店长,"_qs);
  // The numbers never change.
  EXPECT_EQ(lookupValue("select u_sn from jxc_user where u_name=?", u"王店长"), u"100001"_qs);
}

}  // namespace jxc::test
