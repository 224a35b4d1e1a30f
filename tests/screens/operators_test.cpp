// Operators, roles and passwords on their screens.
#include "core/password_hash.h"
#include "core/passwords.h"
#include "core/rights.h"
#include "core/roles.h"
#include "screens/harness/screen_test.h"
#include "ui/display.h"
#include "ui/message_box_prompt.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTreeWidget>

#include <algorithm>
#include <cstring>
#include <vector>

namespace jxc::test {

class OperatorScreens : public ScreenTest {};

TEST_F(OperatorScreens, AnOperatorIsAddedFoundCopiedAndDeleted) {
  open("F_Admin", [&](ui::Screen& s) {
    auto& list = s.grid("gridAdmin");
    press(s, "F2", "F_Admin_Add", [&](ui::Screen& add) {
      EXPECT_FALSE(add.field("chkJy").isVisible());
      press(add, "F5", QStringLiteral("用户名称必须填写！"));
      type(add, "tname", u"王芳");
      type(add, "tpwd", u"abc");
      type(add, "tpwd1", u"abd");
      press(add, "F5", QStringLiteral("两次密码输入不一致！"));
      type(add, "tpwd1", u"abc");
      type(add, "tzreoje", u"2.5");
      press(add, "F5", QStringLiteral("请选择角色！"));
      choose(add, "comRole", u"店长"_qs);
      EXPECT_EQ(add.findChild<QListWidget*>("treeCk")->item(0)->checkState(), Qt::Checked);
      press(add, "F5");
    });
    EXPECT_EQ(list.rowCount(), 2);
    EXPECT_EQ(list.rows().columnIndex("a_pwd"), -1) << "passwords are on no list";

    type(s, "tkey", u"王");
    ASSERT_EQ(list.rowCount(), 1);
    EXPECT_FALSE(s.command("btnRPaste").isEnabled());
    click(s, "btnRCopy");
    click(s, "btnRPaste", u"操作员“复制 王芳”没有密码，任何人都可以用这个名称登录，确认不设密码吗？"_qs, Answer::Yes);
    EXPECT_EQ(list.rowCount(), 2);
    list.selectRow(1);
    EXPECT_EQ(list.currentText("a_name"), QStringLiteral("复制 王芳"));
    press(s, "Ctrl+D", QStringLiteral("您确定要删除当前操作员吗！"), Answer::Yes);
    EXPECT_EQ(list.rowCount(), 1);

    press(s, "F3", "F_Admin_Modi", [&](ui::Screen& modi) {
      EXPECT_EQ(modi.field("tpwd").text() + modi.field("tpwd1").text(), QString()) << "nothing of it comes back";
      EXPECT_EQ(modi.field("tzreoje").number(), 2.5);
      check(modi, "chkJy", true);
      press(modi, "F5");
    });
    type(s, "tkey", u"100001");
    press(s, "F3", "F_Admin_Modi", [&](ui::Screen& modi) {
      EXPECT_FALSE(modi.field("chkJy").isEnabled());
      EXPECT_FALSE(modi.field("comRole").isEnabled());
    });
  });
  EXPECT_EQ(lookupNumber("select a_jyt from jxc_admin where a_sn='100002'"), 1);
  EXPECT_TRUE(isHisPassword(accountDb(), "100002", "abc")) << "empty inputs left it";
}

TEST_F(OperatorScreens, ARoleIsTickedInItsTree) {
  open("F_Role", [&](ui::Screen& s) {
    press(s, "F3", QStringLiteral("系统管理员不能修改！"));
    press(s, "F2", "F_Role_Add", [&](ui::Screen& add) {
      auto* tree = add.findChild<QTreeWidget*>("chkTree");
      choose(add, "comModel", u"模板：营业员"_qs);
      EXPECT_EQ(tree->topLevelItem(1)->child(0)->checkState(0), Qt::Checked);
      EXPECT_EQ(add.field("tname").text(), u"营业员"_qs);
      type(add, "tname", u"店员");
      type(add, "tkey", u"xssp");  // letters
      EXPECT_TRUE(tree->topLevelItem(0)->isHidden());
      type(add, "tkey", u"");
      check(add, "chkSele", true);
      check(add, "chkSele", false);
      tree->topLevelItem(1)->child(13)->setCheckState(0, Qt::Checked);
      tree->topLevelItem(6)->setCheckState(0, Qt::Checked);
      tree->topLevelItem(6)->child(5)->setCheckState(0, Qt::Unchecked);
      press(add, "F5");
    });
  });
  const RowSet rows = openSelect("select * from jxc_role where r_name=?", u"店员");
  ASSERT_EQ(rows.rowCount(), 1);
  EXPECT_EQ(rows.front().text("cggl"), QString(15, u'0'));
  EXPECT_EQ(rows.front().text("xsgl"), QStringLiteral("00000000000001000"));
  EXPECT_EQ(rows.front().text("kcgl").size(), 17);
  EXPECT_EQ(rows.front().text("wlzk").size(), 15);
  EXPECT_EQ(rows.front().text("tjgl").size(), 19);
  EXPECT_EQ(rows.front().text("rcgl").size(), 14);
  EXPECT_EQ(rows.front().text("qtcz"), QStringLiteral("1111101111111111111"));
  becomeOperator(QStringLiteral("王芳"), "100002", rows.front().text("r_sn"));
  EXPECT_TRUE(session().canChangeSaleCost);
  EXPECT_FALSE(session().canQtcz21);
}

TEST_F(OperatorScreens, WhoIsAnEmployeeTooIsProposedOnEachDocument) {
  insertRow("jxc_user", {{"u_sn", "100002"},
                         {"u_name", u"王芳"},
                         {"u_jy", 0},
                         {"u_cgpl", 0},
                         {"u_xspl", 0},
                         {"u_cg", 1},
                         {"u_xs", 1},
                         {"u_kc", 1}});
  becomeOperator(QStringLiteral("王芳"), "100002", "100001");
  for (const char* document :
       {"F_Cgjh", "F_Cgth", "F_Spxs", "F_Xsth", "F_Kcdb", "F_Kcpd", "F_Bsby", "F_Cfkb", "F_Xjyh_Jk"})
    open(document, [&](ui::Screen& s) { EXPECT_EQ(s.field("comUser").text(), "王芳") << document; });
}

TEST_F(OperatorScreens, OnesOwnPassword) {
  open("F_PwdModi", [&](ui::Screen& s) {
    EXPECT_EQ(s.field("tname").text(), QStringLiteral("admin"));
    type(s, "tnewpwd", u"a%b@c'-1");
    type(s, "tnewpwd2", u"a%b@c'-1");
    type(s, "toldpwd", u"x");
    press(s, "F5", QStringLiteral("当前密码错误，不能修改密码！"));
    type(s, "toldpwd", u"");
    press(s, "F5", QStringLiteral("密码修改成功！"));
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_TRUE(isHisPassword(accountDb(), "100001", "a%b@c'-1"));
}

TEST_F(OperatorScreens, ACommandAsksForAPassword) {
  ui::MessageBoxPrompt box(nullptr);
  expectScreen("F_Secret", [](ui::Screen& s) { enter(s, "tpwd", u"geheim"); });
  EXPECT_EQ(box.askSecret(u"请输入密码："_qs), u"geheim"_qs);
  expectScreen("F_Secret", filled({{"tpwd", u"geheim"}}, "Esc"));
  EXPECT_EQ(box.askSecret(u"请输入密码："_qs), std::nullopt);
}

TEST_F(OperatorScreens, ASecretInputHoldsWhatWasTypedAndShowsNothingOfIt) {
  open("F_Xtsd", [&](ui::Screen& s) {
    ui::Field& field = s.field("tpwd");
    auto& line = static_cast<QLineEdit&>(*field.widget());
    const auto secret = [&] {
      const WipedText typed = field.secret();
      const QString& shared = typed;
      return QString(shared.constData(), shared.size());
    };
    type(s, "tpwd", u"sesam");
    EXPECT_EQ(secret(), u"sesam");
    EXPECT_FALSE(line.text().contains(u's'));
    for (const auto& [keys, left] : std::initializer_list<std::pair<QStringList, const char16_t*>>{
             {{"Left", "Left", "Backspace"}, u"seam"},
             {{"Home", "Delete"}, u"eam"},
             {{"End", "Shift+Left", "Shift+Left", "Backspace"}, u"e"}}) {
      for (const QString& key : keys)
        pressIn(line, key.toUtf8().constData());
      EXPECT_EQ(secret(), QString::fromUtf16(left));
    }
    line.setCursorPosition(0);
    line.insert(u"密%"_qs);
    EXPECT_EQ(secret(), u"密%e");
    line.setSelection(1, 1);
    line.insert(u"码😀"_qs);
    EXPECT_EQ(secret(), u"密码😀e");
    field.clear();
    EXPECT_EQ(secret(), QString());
    press(s, "F5");
  });
}

/// Whether a text stands anywhere in the memory of this process that can be written to. It is told character by
/// character, so that looking for it does not put it there.
class Memory {
 public:
  using Character = char16_t (*)(int);
  static constexpr unsigned long long kSanitizers = 1ULL << 36;  // bytes; only their own notes take so much at a piece
  static bool holds(Character at, int length) {
    static std::vector<char> buffer(std::size_t{1} << 20);
    QFile maps(QStringLiteral("/proc/self/maps")), memory(QStringLiteral("/proc/self/mem"));
    if (!maps.open(QIODevice::ReadOnly) || !memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return false;
    for (const QByteArray& line : maps.readAll().split('\n')) {
      const QList<QByteArray> words = line.split(' ');
      const QList<QByteArray> ends = words.front().split('-');
      if (words.size() < 2 || !words[1].startsWith("rw") || line.endsWith("[vvar]")) continue;
      const auto begin = ends[0].toULongLong(nullptr, 16), end = ends[1].toULongLong(nullptr, 16);
      if (end - begin > kSanitizers) continue;
      for (auto from = begin; from < end; from += buffer.size() - 256) {
        const auto own = reinterpret_cast<unsigned long long>(buffer.data());
        if (from < own + buffer.size() && own < from + buffer.size()) continue;
        if (!memory.seek(static_cast<qint64>(from))) break;
        const qint64 size =
            memory.read(buffer.data(), static_cast<qint64>(std::min<unsigned long long>(buffer.size(), end - from)));
        if (isIn(buffer.data(), size, 2, at, length) || isIn(buffer.data(), size, 1, at, length)) return true;
      }
    }
    return false;
  }

 private:
  static bool isIn(const char* bytes, qint64 size, int width, Character at, int length) {
    const char first = static_cast<char>(at(0));
    const char* const end = bytes + size - qint64{width} * length;
    for (const char* from = bytes; from <= end; ++from) {
      from = static_cast<const char*>(std::memchr(from, first, static_cast<std::size_t>(end - from + 1)));
      if (!from) return false;
      int same = 0;
      while (same < length && from[width * same] == static_cast<char>(at(same)) &&
             (width == 1 || from[width * same + 1] == 0))
        ++same;
      if (same == length) return true;
    }
    return false;
  }
};

TEST_F(OperatorScreens, NoPasswordStaysInMemory) {
  constexpr int length = 14;
  const Memory::Character at = [](int i) { return static_cast<char16_t>(u'A' + (i * 11 + 5) % 26); };
  {
    QString whole(length, u' ');
    for (int i = 0; i < length; ++i)
      whole[i] = at(i);
    const WipedText wiped(whole);
    whole.clear();
    EXPECT_TRUE(Memory::holds(at, length)) << "it is found where it is";
    keepPassword("100001", passwordHash(static_cast<const QString&>(wiped)));
  }
  ASSERT_FALSE(Memory::holds(at, length));
  const auto typeOn = [&](ui::Screen& s, std::string_view name) {
    for (int i = 0; i < length; ++i) {
      const char16_t character = at(i);
      typeIn(*s.field(name).widget(), QStringView(&character, 1));
    }
  };
  open("F_Xtsd", [&](ui::Screen& s) {
    typeOn(s, "tpwd");
    press(s, "F5");
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_FALSE(Memory::holds(at, length));
  open("F_PwdModi", [&](ui::Screen& s) {
    for (const std::string_view name : {"toldpwd", "tnewpwd", "tnewpwd2"})
      typeOn(s, name);
    press(s, "F5", QStringLiteral("密码修改成功！"));
  });
  settle();
  EXPECT_FALSE(Memory::holds(at, length)) << "nor while the screen waits to be opened again";
}

}  // namespace jxc::test
