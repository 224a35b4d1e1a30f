// Regions, departments, levels, kinds, remarks, the employee's desk and diary.
#include "core/pinyin.h"
#include "screens/harness/screen_test.h"

#include <QLabel>
#include <QTabWidget>

namespace jxc::test {
namespace dictionary_test {

constexpr ui::FieldSpec kFields[] = {
    {"tnote", "备注：", ui::FieldKind::Text, "", 20, ui::OffersRemarks},
    {"tmemo", "说明：", ui::FieldKind::Memo, "", 0, ui::OffersRemarks},
};
constexpr ui::ScreenSpec kNoteScreen = {.name = "F_NoteTest", .title = "备注", .fields = kFields, .focus = "tnote"};

struct NoteScreen : ui::Screen {
  NoteScreen() : Screen(kNoteScreen) {}
};

}  // namespace dictionary_test

class DictionaryTest : public ScreenTest {
 protected:
  /// Opens the list, stands on the row with this text, and presses a key there.
  void onRow(ui::Screen& s, std::string_view grid, std::string_view field, const QString& text, const char* key) {
    auto& list = s.grid(grid);
    for (int row = 0; row < list.rowCount(); ++row) {
      list.selectRow(row);
      if (list.currentText(field) == text) return press(s, key);
    }
    ADD_FAILURE() << "no row " << text.toStdString();
  }
};

TEST_F(DictionaryTest, RegionsAreKeptAndFollowTheirNames) {
  execSql("update jxc_khxx set z_name=?", u"省会地区");
  open("F_Zone", [&](ui::Screen& s) {
    press(s, "F2", "F_Zone_Add", [&](ui::Screen& add) {
      press(add, "F5", QStringLiteral("地区名称必须填写！"));
      type(add, "tname", u"海外");
      check(add, "chkDefault", true);
      press(add, "F5");
    });
    expectScreen("F_Zone_Add", [&](ui::Screen& modi) {
      type(modi, "tname", u"省城");
      check(modi, "chkDefault", true);
      press(modi, "F5");
    });
    onRow(s, "gridZone", "z_name", QStringLiteral("省会地区"), "F3");
    expectNotice(
        QStringLiteral("该地区供货商在使用，不能删除！\r\n\r\n地区 100001 省城\r\n用于：客户 100001 "
                       "普通客户\r\n\r\n请先在那里选择其他的，再删除。"));
    onRow(s, "gridZone", "z_name", QStringLiteral("省城"), "Ctrl+D");
    expectQuestion(QStringLiteral("您确定要删除该地区信息吗！"), Answer::Yes);
    onRow(s, "gridZone", "z_name", QStringLiteral("地市区域"), "Ctrl+D");
  });
  EXPECT_EQ(lookupValue("select z_name from jxc_khxx"), QStringLiteral("省城"));
  EXPECT_EQ(lookupValue("select z_jm from jxc_zone where z_sn='100004'"), QStringLiteral("HW"));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_zone where z_default<>0"), 1);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_zone"), 3);
}

TEST_F(DictionaryTest, DepartmentsLevelsAndKinds) {
  open("F_Dept", [&](ui::Screen& s) {
    press(s, "F2", "F_Name", [&](ui::Screen& add) {
      EXPECT_EQ(add.windowTitle(), QStringLiteral("增加部门"));
      press(add, "F5", QStringLiteral("部门名称必须填写！"));
      enter(add, "tname", u"加工部");
    });
    expectNotice(
        QStringLiteral("该部门是系统内置部门，不能删除！\r\n\r\n部门 100001 默认部门\r\n\r\n不再使用的话，可以改名。"));
    onRow(s, "gridDept", "de_name", QStringLiteral("默认部门"), "Ctrl+D");
    expectQuestion(QStringLiteral("您确定要删除该部门信息吗！"), Answer::Yes);
    onRow(s, "gridDept", "de_name", QStringLiteral("加工部"), "Ctrl+D");
    EXPECT_EQ(s.grid("gridDept").rowCount(), 1);
  });

  open("F_User", [&](ui::Screen& s) {
    expectScreen("F_Dept", {});
    press(s, "F7");
  });

  // Letters find people and places as they are spoken, too.
  insertRow("jxc_user", {{"u_sn", "100077"}, {"u_name", "曾丽"}, {"u_jm", makeJm(u"曾丽")}});
  insertRow("jxc_ckxx", {{"ck_sn", "100077"}, {"ck_name", "重庆店"}, {"ck_jm", makeJm(u"重庆店")}});
  for (const auto& [list, grid, spoken, stored] :
       {std::tuple("F_User", "gridUser", u"cl", u"zl"), std::tuple("F_Ckgl", "gridCk", u"cq", u"ZQD")})
    open(list, [&, grid = grid, spoken = spoken, stored = stored](ui::Screen& s) {
      for (const char16_t* typed : {spoken, stored, u"100077"}) {
        type(s, "tkey", typed);
        EXPECT_EQ(s.grid(grid).rowCount(), 1) << QString::fromUtf16(typed).toStdString();
      }
      type(s, "tkey", u"cx");
      EXPECT_EQ(s.grid(grid).rowCount(), 0);
    });

  execSql("update jxc_ghsxx set gt_name=?", u"A级供货商");
  struct Rename {
    const char *list, *field;
    const char16_t *old, *refusedName, *refusal, *name;
  };
  for (const Rename& each :
       {Rename{"F_Khgl_Type", "kt_name", u"零售客户", u"", u"级别名称必须填写！", u"门市客户"},
        Rename{"F_Ghsgl_Type", "gt_name", u"A级供货商", u"B级供货商", u"类别名称已经存在，请重新输入！", u"厂家"}})
    open(each.list, [&](ui::Screen& s) {
      expectScreen("F_Name", [&](ui::Screen& modi) {
        type(modi, "tname", each.refusedName);
        press(modi, "F5", QString::fromUtf16(each.refusal));
        type(modi, "tname", each.name);
        press(modi, "F5");
      });
      onRow(s, "gridType", each.field, QString::fromUtf16(each.old), "F3");
    });
  EXPECT_EQ(lookupValue("select kt_sn+kt_name from jxc_khxx"), QStringLiteral("1000门市客户"));
  EXPECT_EQ(lookupValue("select gt_name from jxc_ghsxx"), QStringLiteral("厂家"));
}

TEST_F(DictionaryTest, RemarksAreOfferedWhereNotesAreKeyedIn) {
  dictionary_test::NoteScreen notes;
  open(notes, [&](ui::Screen& s) {
    type(s, "tnote", u"急件，");
    press(s, "F4", "F_Djbz", [&](ui::Screen& list) {
      press(list, "F2", "F_Name", filled({{"tname", u"送货上门"}}));
      press(list, "F2", "F_Name", filled({{"tname", u"款到发货"}}));
      type(list, "tkey", u"上门");
      press(list, "F5");
    });
    EXPECT_EQ(s.field("tnote").text(), QStringLiteral("急件，送货上门"));
    s.field("tmemo").focus();
    press(s, "F4", "F_Djbz", [&](ui::Screen& list) {
      EXPECT_EQ(list.grid("gridBz").currentText("dj_name"), QStringLiteral("送货上门")) << "used most: first";
      press(list, "F5");
    });
    EXPECT_EQ(s.field("tmemo").text(), QStringLiteral("送货上门"));
    press(s, "F4", "F_Djbz", [&](ui::Screen& list) { press(list, "Esc"); });
    EXPECT_EQ(s.field("tmemo").text(), QStringLiteral("送货上门"));
  });
  EXPECT_EQ(lookupNumber("select dj_pl from jxc_djbz where dj_name=?", u"送货上门"), 2);
}

TEST_F(DictionaryTest, TheDeskShowsWhatAnEmployeeDid) {
  const auto sale = [](const char* number, const char* day, int status, double due, double received) {
    execSql(
        "insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,u_sn,ls_xsrq,ls_yfje,ls_sfje,ls_yhje,ls_hkje,ls_status) values "
        "(?,'100001','100001','100001',?,?,?,0,0,?)",
        number, day, due, received, status);
  };
  sale("XS21050110001", "2021-05-01 10:00:00", 1, 100, 80);
  sale("XS21053110001", "2021-05-31 18:00:00", 1, 50, 50);
  sale("XS21050210001", "2021-05-02", 0, 999, 0);
  sale("XS21043010001", "2021-04-30", 1, 7, 7);
  execSql(
      "insert into jxc_xsthd (gl_djh,kh_sn,ck_sn,u_sn,th_xsrq,th_yfje,th_sfje,th_hkje,th_status) values "
      "('XT21050310001','100001','100001','100001','2021-05-03',-30,-30,0,1)");
  open("F_Ywygl", [&](ui::Screen& s) {
    auto& documents = s.grid("gridDj");
    ASSERT_EQ(documents.rowCount(), 3) << "audited ones of this month";
    EXPECT_EQ(documents.rows().front().text("djh"), QStringLiteral("XS21053110001")) << "the last day with its hours";
    EXPECT_EQ(documents.sum("yfje"), 120);
    EXPECT_EQ(s.findChild<QLabel*>("lTotal")->text(),
              QStringLiteral("单据数：3    采购合计：￥0.00    销售合计：￥120.00    未付未收：￥20.00"));
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    press(s, "F2", "F_Ywyrz_Add", [&](ui::Screen& add) {
      EXPECT_EQ(add.field("dateRz").text(), QStringLiteral("2021-05-03"));
      press(add, "F5", QStringLiteral("日志内容必须填写！"));
      type(add, "tnote", u"拜访客户");
      press(add, "F5");
    });
    ASSERT_EQ(s.grid("gridRz").rowCount(), 1);
    press(s, "F3", "F_Ywyrz_Modi", filled({{"tnote", u"拜访供货商"}}));
    EXPECT_EQ(lookupValue("select u_sn+rz_note from jxc_ywyrz"), QStringLiteral("100001拜访供货商"));
    press(s, "Ctrl+D", QStringLiteral("您确定要删除该日志信息吗！"), Answer::Yes);
    EXPECT_EQ(s.grid("gridRz").rowCount(), 0);
  });
}

}  // namespace jxc::test
