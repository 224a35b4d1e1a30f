// Where a refusal leads: to the input that it is about, on whatever screen.
#include "screens/harness/screen_test.h"
#include "ui/display.h"
#include "ui/refused_input.h"

#include <QListWidget>
#include <QPushButton>

#include <set>

namespace jxc::test {
namespace refusal_test {

struct Refused {
  const char* screen;
  std::initializer_list<std::pair<std::string_view, QStringView>> typed;
  const char16_t* notice;
  const char* led;  // the input that has the keys then
};

class RefusalTest : public ScreenTest {
 protected:
  static QString focused(const ui::Screen& screen) {
    return screen.focusWidget() ? screen.focusWidget()->objectName() : QString();
  }
};

TEST_F(RefusalTest, OfADialogLeadsToItsInput) {
  const Refused all[] = {
      {"F_Ckgl_Add", {}, u"仓库名称必须填写！", "tname"},
      {"F_Ckgl_Add", {{"tname", u"主仓库"}}, u"仓库名称“主仓库”已经存在，请使用其他名称！", "tname"},
      {"F_User_Add", {}, u"员工姓名必须填写！", "tname"},
      {"F_User_Add", {{"tname", u"默认员工"}}, u"员工姓名不能重复！", "tname"},
      {"F_Admin_Add", {}, u"用户名称必须填写！", "tname"},
      {"F_Admin_Add", {{"tname", u"王芳"}, {"tpwd", u"1"}, {"tpwd1", u"2"}}, u"两次密码输入不一致！", "tpwd1"},
      {"F_Admin_Add", {{"tname", u"王芳"}}, u"请选择角色！", "comRole"},
      {"F_PwdModi", {{"tnewpwd", u"1"}}, u"两次密码输入不一致，不能修改密码！", "tnewpwd2"},
      {"F_PwdModi", {{"toldpwd", u"1"}}, u"当前密码错误，不能修改密码！", "toldpwd"},
      {"F_Role_Add", {}, u"角色名称必须填写！", "tname"},
      {"F_Yhzh_Add", {}, u"账户名称必须填写！", "tname"},
      {"F_Yhzh_Add", {{"tname", u"微信"}}, u"账户类型必须填写！", "ttype"},
      {"F_Xjyh_Jk", {}, u"金额必须填写！", "tfyje"},
      {"F_Xjyh_Zz", {}, u"金额必须大于0！", "tfyje"},
      {"F_Khgl_Add", {}, u"客户名称必须填写！", "tname"},
      {"F_Spxxgl_Add", {}, u"类别名称必须填写！", "gc_name"},
      {"F_Bjgl_Add", {}, u"客户名称必须填写！", "tKh"},
      {"F_Bjgl_Add2", {}, u"供货商名称必须填写！", "tGhs"},
      {"F_Bjgl_Sele", {}, u"报价必须大于0！", "tdj"},
      {"F_Zpgl2_Add", {}, u"赠品编号必须填写！", "tsn"},
      {"F_Zpgl2_Add", {{"tsn", u"Z1"}}, u"赠品名称必须填写！", "tname"},
      {"F_Zpgl2_Add", {{"tsn", u"Z1"}, {"tname", u"镜布"}, {"tsl", u"-1"}}, u"赠品数量不能为负数！", "tsl"},
      {"F_Zpgl2_Add", {{"tsn", u"Z1"}, {"tname", u"镜布"}, {"tjf", u"-1"}}, u"兑换积分不能为负数！", "tjf"},
      {"F_Zpgl2_Jh", {{"tsl", u"-1"}}, u"进货数量不能为负数！", "tsl"},
      {"F_Zpgl_Sele", {{"tjf", u"-1"}}, u"积分不能为负数！", "tjf"},
      {"F_Qcjz_Add", {}, u"请选择商品！", "tkey"},
      {"F_Cgjh", {}, u"单据中没有业务发生，不能保存！", "tSptm"},
      {"F_Cfkb", {}, u"被拆分商品不存在，请选择被拆分商品！", "tgname"},
  };
  for (const Refused& each : all) {
    open(each.screen, [&](ui::Screen& s) {
      for (const auto& [input, text] : each.typed)
        type(s, input, text);
      for (auto* button : s.findChildren<QPushButton*>())
        if (button->isVisible() && button->isEnabled()) button->setFocus();
      press(s, "F5", QString::fromUtf16(each.notice));
      EXPECT_EQ(focused(s), each.led) << each.screen << ": " << QString::fromUtf16(each.notice).toStdString();
    });
  }
  open("F_Ckgl_Add", [&](ui::Screen& s) {
    type(s, "tname", u"二号仓");
    auto* operators = s.findChild<QListWidget*>("treeAdmin");
    for (int i = 0; i < operators->count(); ++i)
      operators->item(i)->setCheckState(Qt::Unchecked);
    press(s, "F5", u"必须选择操作员！"_qs);
    EXPECT_EQ(focused(s), "treeAdmin");
  });
}

/// An input that was renamed would be led to by nobody.
TEST_F(RefusalTest, EachSubjectHasAnInputOnSomeScreen) {
  std::set<std::string_view> missing;
  for (int i = 1; i <= static_cast<int>(Subject::OldPassword); ++i) {
    const auto names = ui::inputsOf(static_cast<Subject>(i));
    EXPECT_FALSE(names.empty()) << i;
    missing.insert(names.begin(), names.end());
  }
  for (const std::string& name : ui::registeredScreens()) {
    ui::Screen& screen = ui::screenNamed(name);
    std::erase_if(missing, [&](std::string_view input) {
      return screen.hasField(input) || screen.findChild<QWidget*>(ui::qs(input)) != nullptr;
    });
  }
  EXPECT_EQ(missing, std::set<std::string_view>());
}

}  // namespace refusal_test
}  // namespace jxc::test
