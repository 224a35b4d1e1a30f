// Customers and suppliers through their screens: lists, dialogs, copying and contact books.
#include "harness/row_texts.h"
#include "masterdata/employees.h"
#include "masterdata/partner_contacts.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_screens.h"
#include "screens/harness/screen_test.h"

#include <QListWidget>
#include <QTableView>

namespace jxc::test::partners_screens_test {

class PartnersScreenTest : public ScreenTest {
 protected:
  static QString shown(ui::Screen& s, std::string_view grid, std::string_view column) {
    s.grid(grid).waitLoaded();
    return textsOf(s.grid(grid).rows(), {column}).join(u' ');
  }
  void addCustomers(std::initializer_list<const char16_t*> names) {
    for (const char16_t* name : names)
      ASSERT_TRUE(savePartner(customerSide, {.name = QString::fromUtf16(name)}, prompt));
  }
  static void tick(ui::Screen& s, const QString& name, Qt::CheckState state) {
    auto* tree = s.findChild<QListWidget*>(QStringLiteral("treeUser"));
    for (auto* item : tree->findItems(name, Qt::MatchExactly))
      item->setCheckState(state);
  }
};

TEST_F(PartnersScreenTest, CustomerIsAddedChangedForbiddenAndDeleted) {
  EmployeeDraft employee;
  employee.name = QStringLiteral("李明");
  ASSERT_TRUE(saveEmployee(employee, prompt));
  open("F_Khgl", [&](ui::Screen& list) {
    EXPECT_FALSE(list.command("btnImport").isVisible());
    press(list, "F2", "F_Khgl_Add", [&](ui::Screen& s) {
      press(s, "F5", QStringLiteral("客户名称必须填写！"));
      type(s, "tname", u"普通客户");
      type(s, "ttele", u"0511-8600");
      choose(s, "comType", QStringLiteral("三级"));
      choose(s, "comZone", QStringLiteral("地市区域"));
      type(s, "tlwje", u"250.5");
      tick(s, QStringLiteral("李明"), Qt::Checked);
      check(s, "chkDefault", true);
      press(s, "F5", QStringLiteral("客户已经存在，确认可以重复吗？"), Answer::No);
      EXPECT_TRUE(s.isVisible());
      type(s, "tname", u"O'Neil 50%");
      press(s, "F5");
    });
    const RowSet rows = openSelect("select * from jxc_khxx where kh_sn='100002'");
    ASSERT_EQ(rows.rowCount(), 1);
    const Row row = rows.front();
    EXPECT_EQ(row.text("kh_name"), QStringLiteral("O‘Neil 50％"));
    EXPECT_EQ(row.text("kt_sn") + row.text("kt_name"), QStringLiteral("1003三级"));
    EXPECT_EQ(row.text("kh_uname") + row.text("kh_usn"), QStringLiteral("默认员工,李明,100001,100002,"));
    EXPECT_EQ(row.text("ck_sn") + row.text("ck_name") + row.text("z_name"), QStringLiteral("-1所有仓库地市区域"));
    EXPECT_EQ(lookupValue("select kh_sn from jxc_khxx where kh_default<>0"), QStringLiteral("100002"));
    EXPECT_EQ(lookupNumber("select k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh='100002'"), 250.5);

    EXPECT_EQ(list.grid("gridKh").currentId(), 2) << "the list stands on the new customer";
    insertRow("jxc_goodslist", {{"ghs_sn", "100002"}, {"ghs_name", "O‘Neil 50％"}});
    press(list, "F3", "F_Khgl_Modi", [&](ui::Screen& s) {
      EXPECT_FALSE(s.field("tlwje").isReadOnly());
      type(s, "tname", u"欧尼尔");
      tick(s, QStringLiteral("默认员工"), Qt::Unchecked);
      check(s, "chkDefault", false);
      press(s, "F5");
    });
    EXPECT_EQ(lookupValue("select ghs_name from jxc_goodslist"), QStringLiteral("欧尼尔"));
    EXPECT_EQ(lookupValue("select kh_usn from jxc_khxx where id=2"), QStringLiteral("100002,"));
    EXPECT_EQ(lookupNumber("select count(*) from jxc_khxx where kh_default<>0"), 0);

    press(list, "F7", "F_Ghsgl_Jm", [&](ui::Screen& s) {
      EXPECT_EQ(s.field("tname").text(), QStringLiteral("欧尼尔"));
      type(s, "tjm", u"one'x");
      press(s, "F5");
    });
    EXPECT_EQ(lookupValue("select kh_jm from jxc_khxx where id=2"), QStringLiteral("ONE‘X"));

    press(list, "F6");
    EXPECT_EQ(lookupValue("select kh_forbid from jxc_khxx where id=2"), QStringLiteral("1"));
    choose(list, "comSx", QStringLiteral("使用中"));
    EXPECT_EQ(shown(list, "gridKh", "kh_name"), QStringLiteral("普通客户"));
    choose(list, "comSx", QStringLiteral("级别：三级"));
    EXPECT_EQ(shown(list, "gridKh", "kh_name"), QStringLiteral("欧尼尔"));
    list.grid("gridKh").selectRow(0);
    press(list, "F6");
    EXPECT_EQ(lookupValue("select kh_forbid from jxc_khxx where id=2"), QStringLiteral("0"));
    press(list, "Ctrl+D", QStringLiteral("您确定要删除当前客户吗！"), Answer::Yes);
    EXPECT_EQ(shown(list, "gridKh", "kh_name"), QString());
    EXPECT_EQ(lookupNumber("select count(*) from jxc_ysyfk"), 0);
  });
}

TEST_F(PartnersScreenTest, SearchByConditionsStaysUntilCleared) {
  ASSERT_TRUE(
      savePartner(supplierSide, {.name = u"明视光学"_qs, .phone = u"0511"_qs, .kindName = u"A级供货商"_qs}, prompt));
  ASSERT_TRUE(savePartner(supplierSide, {.name = u"晶朗"_qs, .phone = u"021"_qs}, prompt));
  open("F_Ghsgl", [&](ui::Screen& list) {
    click(list, "btnSearch", "F_Ghsgl_Search", [&](ui::Screen& s) {
      type(s, "ttele", u"05");
      choose(s, "comType", QStringLiteral("A级供货商"));
      press(s, "F5");
    });
    EXPECT_EQ(shown(list, "gridGhs", "ghs_name"), QStringLiteral("明视光学"));
    type(list, "tkey", u"晶");
    EXPECT_EQ(shown(list, "gridGhs", "ghs_name"), QString());
    click(list, "btnSearch", "F_Ghsgl_Search", [&](ui::Screen& s) {
      EXPECT_EQ(s.field("ttele").text(), QStringLiteral("05"));
      click(s, "btnClear");
      press(s, "F5");
    });
    EXPECT_EQ(shown(list, "gridGhs", "ghs_name"), QStringLiteral("晶朗"));
    type(list, "tkey", u"'%_\"👓");
    EXPECT_EQ(shown(list, "gridGhs", "ghs_name"), QString());
  });
}

TEST_F(PartnersScreenTest, MarkedCustomersBecomeSuppliers) {
  addCustomers({u"青年路店", u"老街店", u"学校"});
  open("F_Ghsgl", [&](ui::Screen& list) {
    click(list, "btnCopy", "F_Ghsgl_Copy", [&](ui::Screen& s) {
      type(s, "tkey", u"店");
      EXPECT_EQ(shown(s, "gridKh", "kh_name"), QStringLiteral("青年路店 老街店"));
      s.grid("gridKh").view()->selectAll();
      press(s, "F5", QStringLiteral("成功复制：2  个客户信息。"));
    });
    EXPECT_EQ(shown(list, "gridGhs", "ghs_name"), QStringLiteral("普通供货商 青年路店 老街店"));
  });
}

TEST_F(PartnersScreenTest, PickerAndDocumentTakeTheNewPartner) {
  expectScreen("F_Ghs_Sele", [&](ui::Screen& s) {
    press(s, "F8", "F_Ghsgl_Add", filled({{"tname", u"新供货商"}}));
    press(s, "F9", "F_Ghsgl_Modi", [&](ui::Screen& change) {
      EXPECT_EQ(change.field("tname").text(), QStringLiteral("新供货商"));
      type(change, "tname", u"新光学");
      press(change, "F5");
    });
    press(s, "F5");
  });
  EXPECT_EQ(pickSupplier(), (ListItem{QStringLiteral("新光学"), QStringLiteral("100002")}));
  expectScreen("F_Khgl_Add", filled({{"tname", u"散客甲"}}));
  EXPECT_EQ(addCustomer(), (ListItem{QStringLiteral("散客甲"), QStringLiteral("100002")}));
  expectScreen("F_Khgl_Add", [&](ui::Screen& add) { press(add, "Esc"); });
  EXPECT_EQ(addCustomer(), std::nullopt);
}

TEST_F(PartnersScreenTest, ContactBookShowsBalanceAndKeepsTheDiary) {
  ASSERT_TRUE(savePartner(customerSide, {.name = u"城南诊所"_qs, .contact = u"周敏"_qs, .opening = 320}, prompt));
  open("F_Khzhgl", [&](ui::Screen& s) {
    type(s, "tkey", u"城南");
    s.grid("gridKh").waitLoaded();
    QString asked;
    expectScreen(ui::isScreenRegistered("F_WlzwKh") ? "F_WlzwKh" : "F_NotYet",
                 [&](ui::Screen&) { asked = handedOverPartner(customerSide); });
    press(s, "F6");
    EXPECT_EQ(asked, s.grid("gridKh").currentText("kh_sn")) << "the statement begins with the chosen customer";
    EXPECT_EQ(handedOverPartner(customerSide), QString());
    EXPECT_EQ(s.field("tname").text() + s.field("tlxr").text(), QStringLiteral("城南诊所周敏"));
    EXPECT_EQ(s.field("tlwje").number(), 320);
    EXPECT_EQ(shown(s, "gridZw", "k_djtxt"), QStringLiteral("期初应收款"));
    press(s, "F2", "F_Khzhgl_Add", [&](ui::Screen& entry) {
      EXPECT_EQ(entry.field("dateLx").text(), QStringLiteral("2021-05-03"));
      press(entry, "F5", QStringLiteral("联系内容必须填写！"));
      type(entry, "tnote", u"下周送样");
      press(entry, "F5");
    });
    EXPECT_EQ(shown(s, "gridLx", "lx_note"), QStringLiteral("下周送样"));
    s.grid("gridLx").selectRow(0);
    press(s, "F3", "F_Khzhgl_Modi", filled({{"tnote", u"已送样"}}));
    EXPECT_EQ(shown(s, "gridLx", "lx_note"), QStringLiteral("已送样"));
    press(s, "Ctrl+D", QStringLiteral("您确定要删除该联系信息吗！"), Answer::Yes);
    EXPECT_EQ(shown(s, "gridLx", "lx_note"), QString());

    type(s, "tkey", u"没有这个");
    s.grid("gridKh").waitLoaded();
    EXPECT_EQ(s.field("tname").text(), QString());
    press(s, "F2", QStringLiteral("请选择客户！"));
  });
}

}  // namespace jxc::test::partners_screens_test
