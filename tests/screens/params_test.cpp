// The screen of system settings: every input of the table reaches the database and the session.
#include "core/parameters.h"
#include "core/screens/command_runner.h"
#include "core/session_fields.h"
#include "core/text.h"
#include "screens/harness/screen_test.h"
#include "ui/display.h"

#include <QTabWidget>

#include <algorithm>

namespace jxc::test {

class ParamsTest : public ScreenTest {
 protected:
  static QString sessionText(std::string_view field) {
    const auto fields = parameterFields();
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f.name == field; });
    return found == fields.end() ? QString() : session().*found->member;
  }
  /// Another value than the one that stands there, keyed in as an operator does. What is shown afterwards.
  static QString changeInput(ui::Screen& s, const ParameterDefinition& p) {
    auto& input = s.field(p.input);
    switch (p.kind) {
      case ParameterKind::Flag:
        check(s, p.input, !input.isChecked());
        return input.isChecked() ? QStringLiteral("1") : QStringLiteral("0");
      case ParameterKind::Choice: {
        const auto other = static_cast<std::size_t>(input.index()) + 1 == p.choices.size() ? 0 : p.choices.size() - 1;
        choose(s, p.input, ui::qs(p.choices[other]));
        return QString::number(other);
      }
      case ParameterKind::Number:
        type(s, p.input, u"3");
        return QStringLiteral("3");
      case ParameterKind::Decimal:
        type(s, p.input, u"0.85");
        return QStringLiteral("0.85");
      default:
        type(s, p.input, p.width == 3 ? QStringLiteral("$") : ui::qs(p.input).left(4));
        return input.text();
    }
  }
  static bool isSeen(const ParameterDefinition& p) {
    return !p.input.empty() && p.group != ParameterGroup::Hidden && p.group != ParameterGroup::Mail;
  }
};

TEST_F(ParamsTest, EveryInputReachesDatabaseAndSession) {
  setParameter("cs_sprk", 1);  // on: switching it off asks nothing
  setParameter("cs_spck", 1);
  std::map<std::string, QString> shown;
  const auto changeAll = [&](ui::Screen& s) {
    // Boxes first: they let the inputs behind them be keyed in.
    for (const bool boxes : {true, false}) {
      for (const auto& p : parameterTable()) {
        if (!isSeen(p) || (p.kind == ParameterKind::Flag) != boxes) continue;
        if (p.field == "cs_shtc") continue;  // goes with its partner, in a story of its own
        if (s.field(p.input).isEnabled()) shown[std::string(p.field)] = changeInput(s, p);
      }
    }
    press(s, "F5");
    EXPECT_FALSE(s.isVisible());
  };
  open("F_Xtcs", changeAll);
  const auto seen = std::count_if(parameterTable().begin(), parameterTable().end(), isSeen);
  EXPECT_EQ(static_cast<std::ptrdiff_t>(shown.size()), seen - 1) << "every input but that of cs_shtc could be keyed in";
  for (const auto& p : parameterTable()) {
    if (p.table == "jxc_email") continue;
    const QString stored = lookupValue(compose("select {} from {}", {p.field, p.table}));
    const QString text = p.table == "jxc_xtcs" ? sessionText(p.field) : stored;
    if (const auto keyed = shown.find(std::string(p.field)); keyed == shown.end()) {
      if (p.input.empty() && p.field != "cs_employdate") {
        EXPECT_FALSE(strIsTrue(stored)) << p.field;
      }
    } else {
      EXPECT_EQ(stored, keyed->second) << p.field;
      if (p.field == "cs_cs004") {
        EXPECT_EQ(text, QStringLiteral("9600"));
      } else {
        EXPECT_EQ(text, keyed->second) << p.field;
      }
    }
  }
  EXPECT_EQ(session().xswsDigits, 3);
  EXPECT_EQ(session().jewsDigits, 3);
  EXPECT_EQ(session().transferTemplate, QStringLiteral("kcdbd.fr3"));

  // The screen shows what was saved; with the boxes off again what is behind them counts as nothing.
  open("F_Xtcs", [&](ui::Screen& s) {
    for (const auto& p : parameterTable()) {
      const auto keyed = shown.find(std::string(p.field));
      if (keyed == shown.end()) continue;
      auto& input = s.field(p.input);
      EXPECT_EQ(p.kind == ParameterKind::Choice ? QString::number(input.index()) : input.text(), keyed->second)
          << p.input;
    }
    for (const auto* box : {"chkZjews", "chkHs", "chkJhzk", "chkXsdhs", "chkCgdhs"})
      check(s, box, false);
    EXPECT_FALSE(s.field("tTax").isEnabled());
    type(s, "tXsws", u"4");
    press(s, "F5");
  });
  EXPECT_EQ(lookupNumber("select cs_jews+cs_tax+cs_zdzk+cs_cs005+cs_cs006 from jxc_xtcs"), 0);
  EXPECT_EQ(session().cs_jews, QStringLiteral("4")) << "totals keep the decimals of money";
}

TEST_F(ParamsTest, BoxesGoTogetherAndTheAdministratorAloneSeesTheMail) {
  open("F_Xtcs", [&](ui::Screen& s) {
    check(s, "chkShtc", true);
    EXPECT_TRUE(s.field("chkCgyh").isChecked());
    check(s, "chkCgyh", false);
    EXPECT_FALSE(s.field("chkShtc").isChecked());
    check(s, "chkCgyh", true);
    EXPECT_FALSE(s.field("chkShtc").isChecked());
    EXPECT_FALSE(s.findChild<QWidget*>("RzGroupBox_EMail")->isHidden());
    EXPECT_TRUE(s.findChild<QWidget*>("RzGroupBox_Wx")->isHidden());
    click(s, "btnEmail", QStringLiteral("邮箱地址必须输入！"));
    EXPECT_TRUE(s.field("temail").hasFocus()) << "on another page";
    type(s, "tjc", u"");
    press(s, "F5", QStringLiteral("公司信息必须填写！"));
    EXPECT_TRUE(s.field("tjc").hasFocus());
    EXPECT_TRUE(s.isVisible());
    press(s, "Esc", u"输入的内容还没有确定，放弃吗？"_qs, Answer::Yes);
  });
  EXPECT_EQ(session().cs_cgyh, QStringLiteral("0"));

  // Another role with the right to the settings saves them without touching keys that he does not see.
  execSql("update jxc_xtcs set cs_wxzf=1,cs_mchid='M-1',cs_key='K&1'");
  execSql("update jxc_email set e_lx=1,e_email='a@b.cn',e_smtp='m.b.cn',e_sqpwd='P',e_fj1=1");
  setRights("100002", "qtcz", QStringLiteral("1111111111111111111"));
  becomeOperator(QStringLiteral("王芳"), "100002", "100002");
  open("F_Xtcs", [&](ui::Screen& s) {
    EXPECT_TRUE(s.findChild<QWidget*>("RzGroupBox_EMail")->isHidden());
    press(s, "F5");
  });
  EXPECT_TRUE(strIsTrue(session().cs_wxzf));
  EXPECT_EQ(session().cs_key, QStringLiteral("K&1"));
  EXPECT_EQ(lookupValue("select e_email+e_sqpwd from jxc_email where e_send<>0"), QStringLiteral("a@b.cnP"));
}

TEST_F(ParamsTest, TheStandardComesBackOnThePageOfParameters) {
  setParameter("cs_xsws", 5);
  open("F_Xtcs", [&](ui::Screen& s) {
    expectQuestion(QStringLiteral("系统参数、POS参数和邮件设置将恢复为默认值，确认恢复默认系统设置吗？"), Answer::Yes);
    click(s, "btnDefault", QStringLiteral("恢复默认系统设置之前，先备份帐套吗？"), Answer::No);
    EXPECT_EQ(s.field("tXsws").text(), QStringLiteral("2"));
    EXPECT_EQ(s.findChild<QTabWidget*>()->currentWidget()->objectName(), QStringLiteral("cxTab2"));
  });
  EXPECT_EQ(session().xswsDigits, 2);
}

// ---- rights against every command of the program -----------------------------------------------------------------

class CommandRightsTest : public ScreenTest {
 protected:
  void becomeClerkWith(std::string_view group, const QString& rights) {
    setAllRights("100002", {});
    setRights("100002", group, rights);
    becomeOperator(QStringLiteral("王芳"), "100002", "100002");
  }
  void becomeClerkWithAll() {
    setAllRights("100002", QString(60, u'1'));
    becomeOperator(QStringLiteral("王芳"), "100002", "100002");
  }
  /// Runs the command and expects its screen, or the page that says it is not there yet.
  void expectOpens(const ui::CommandDefinition& command) {
    expectScreen(ui::isScreenRegistered(command.screen) ? command.screen : "F_NotYet", {});
    runCommand(command.name, prompt);
    EXPECT_EQ(expectationsLeft(), 0) << command.name;
    EXPECT_EQ(prompt.notices, QStringList()) << command.name;
  }
  void expectRefuses(const ui::CommandDefinition& command, const QString& told) {
    runCommand(command.name, prompt);
    EXPECT_EQ(prompt.notices, QStringList{told}) << command.name;
    prompt.forget();
  }
};

TEST_F(CommandRightsTest, EachRightOpensItsCommandsAndNothingElseDoes) {
  for (const auto& command : ui::commands()) {
    if (command.guard != ui::Guard::Rights) continue;
    for (const int position : command.positions) {
      if (position == 0) continue;
      becomeClerkWith(command.group, QString(position - 1, u'0') + u'1');
      EXPECT_TRUE(isAllowed(command)) << command.name << ' ' << position;
    }
    expectOpens(command);
    QString others(60, u'1');
    for (const int position : command.positions) {
      if (position > 0) others[position - 1] = u'0';
    }
    becomeClerkWith(command.group, others);
    expectRefuses(command, QStringLiteral("您没有权限进行") + ui::qs(command.refusal));
  }
}

TEST_F(CommandRightsTest, SomeAreTheAdministratorsAndSomeEverybodys) {
  becomeClerkWithAll();
  for (const auto& command : ui::commands()) {
    if (command.guard == ui::Guard::SystemRole) {
      expectRefuses(command, QStringLiteral("只有系统管理员才能使用此功能！"));
    } else if (command.guard == ui::Guard::None) {
      EXPECT_TRUE(isAllowed(command)) << command.name;
    }
  }
}

}  // namespace jxc::test
