// 数据清理: empties the account set, by hand in two steps, or by the guide for the first day in five.
#include "core/build_info.h"
#include "core/screens/main_form.h"
#include "core/screens/not_yet.h"
#include "core/session.h"
#include "maintenance/reset.h"
#include "ui/progress.h"
#include "ui/screen.h"

#include <QAbstractButton>
#include <QLabel>

#include <array>
#include <cstddef>

namespace jxc {
namespace sjql_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"rSele11", "我对软件很熟悉，直接进入数据清理界面，手动处理。", FieldKind::Radio},
    {"rSele12", "我对软件不是特别了解，打开使用向导按步骤进行。", FieldKind::Radio},
    {"rSele21", "保留基本信息", FieldKind::Radio},
    {"rSele22", "删除所有数据(admin密码为空)", FieldKind::Radio},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnOk", "确定", "F5"}, {"btnOK2", "确定", "F6"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Sjql",
                                    .title = "软件数据清理(系统初始化)",
                                    .fields = kFields,
                                    .commands = kCommands,
                                    .focus = "rSele12"};

constexpr ui::FieldSpec kGuideFields[] = {
    {"rData", "我要使用软件自带的数据来熟悉它的功能", FieldKind::Radio},
    {"rUse", "我要正式使用本系统，并进行系统初始化", FieldKind::Radio},
    {"tname", "单位名称：", FieldKind::Text, "jxc_company.c_name"},
    {"tjc", "单位简称：", FieldKind::Text, "jxc_company.c_jc"},
    {"ttele", "联系电话：", FieldKind::Text, "jxc_company.c_tele"},
    {"taddress", "单位地址：", FieldKind::Text, "jxc_company.c_address"},
    {"rClear1", "清除所有数据，只保留操作员admin（密码为空）。", FieldKind::Radio},
    {"rClear2", "保留商品信息和操作员，清除其他数据。", FieldKind::Radio},
    {"rClear3", "保留供货商、客户、操作员、员工、仓库和会员，清除其他数据。", FieldKind::Radio},
    {"rClear4", "跳出该步骤，不清除任何数据。", FieldKind::Radio},
    {"rSele51", "录入期初库存", FieldKind::Radio},
    {"rSele52", "采购进货", FieldKind::Radio},
};
constexpr ui::CommandSpec kGuideCommands[] = {
    {"btnOK1", "确定", "F5"},
    {"btnPrior2", "上一步", "F4"},
    {"btnNext2", "下一步", "F5"},
    {"btnUrl", "对数据库进行备份", "F2"},
    {"btnPrior3", "上一步", "F4"},
    {"btnNext3", "下一步", "F5"},
    {"btn41", "（1）设置操作员", "1"},
    {"btn42", "（2）设置供货商信息", "2"},
    {"btn43", "（3）设置客户信息", "3"},
    {"btn44", "（4）设置仓库信息", "4"},
    {"btn45", "（5）设置员工信息", "5"},
    {"btn46", "（6）设置商品信息", "6"},
    {"btn47", "（7）系统参数设置", "7"},
    {"btnPrior4", "上一步", "F4"},
    {"btnNext4", "下一步", "F5"},
    {"btnPrior5", "上一步", "F4"},
    {"btnOK5", "确定", "F5"},
    {"btnCancel", "退出", "Esc"},
};
constexpr ui::ScreenSpec kGuide = {
    .name = "F_Guide", .title = "使用向导", .fields = kGuideFields, .commands = kGuideCommands, .focus = "rUse"};

/// What the fourth step opens.
struct Basic {
  const char* command;
  const char* screen;
};
constexpr std::array kBasics = {Basic{"btn41", "F_Admin"}, Basic{"btn42", "F_Ghsgl"}, Basic{"btn43", "F_Khgl"},
                                Basic{"btn44", "F_Ckgl"},  Basic{"btn45", "F_User"},  Basic{"btn46", "F_Spxxgl"},
                                Basic{"btn47", "F_Xtcs"}};

/// The commands below the steps, each seen while its own stands there.
struct StepCommand {
  const char* command;
  std::size_t step;
};
constexpr std::array kStepCommands = {
    StepCommand{"btnOK1", 0},    StepCommand{"btnPrior2", 1}, StepCommand{"btnNext2", 1},  StepCommand{"btnUrl", 2},
    StepCommand{"btnPrior3", 2}, StepCommand{"btnNext3", 2},  StepCommand{"btnPrior4", 3}, StepCommand{"btnNext4", 3},
    StepCommand{"btnPrior5", 4}, StepCommand{"btnOK5", 4}};

class TF_Sjql : public ui::Screen {
 public:
  TF_Sjql() : Screen(kScreen) {
    panel().area(first_).text(QStringLiteral("请选择处理方式：")).form({"rSele11", "rSele12"}).stretch();
    panel()
        .area(second_)
        .warning(QStringLiteral("清理的数据不能恢复，请先备份。"))
        .form({"rSele21", "rSele22"})
        .stretch();
    panel().buttons("| btnOk btnOK2 btnCancel");
    on(command("btnOk"), [this] { goOn(); });
    on(command("btnOK2"), [this] { clear(); });
  }

 protected:
  void activate() override {
    field("rSele12").setChecked(true);
    field("rSele21").setChecked(true);
    showStep(first_);
  }
  bool mayLeave() override { return true; }

 private:
  void showStep(QWidget* step) {
    first_->setVisible(step == first_);
    second_->setVisible(step == second_);
    command("btnOk").setVisible(step == first_);
    command("btnOK2").setVisible(step == second_);
  }

  void goOn() {
    if (field("rSele12").isChecked()) {
      hide();
      ui::openScreen("F_Guide");
      return accept();
    }
    showStep(second_);
    field("rSele21").focus();
  }

  void clear() {
    const Clearing what = field("rSele22").isChecked() ? Clearing::All : Clearing::Business;
    switch (clearData(what, QStringLiteral("是否要删除所有营业数据？"), BackupFirst::Asked,
                      ui::progressInWords(windowTitle(), this), prompt())) {
      case Cleared::Refused:
        return;
      case Cleared::Declined:
        return reject();
      case Cleared::Done:
        break;
    }
    prompt().notice(QStringLiteral("删除完成！"));
    what == Clearing::All ? endAtLogin() : accept();
  }

  QWidget* first_ = nullptr;
  QWidget* second_ = nullptr;
};

class TF_Guide : public ui::Screen {
 public:
  /// After the login that follows when everything was deleted.
  void goOnWithBasics() {
    first_ = kBasicsStep;
    showModal();
    first_ = 0;
  }

  TF_Guide() : Screen(kGuide), title_(new QLabel(this)) {
    title_->setObjectName(QStringLiteral("step"));
    title_->setProperty("title", true);
    auto* const welcome = new QLabel(
        QStringLiteral("欢迎使用") + QString::fromUtf16(build::brand) + QStringLiteral("进销存管理系统"), this);
    welcome->setObjectName(QStringLiteral("welcome"));
    panel().widget(welcome).widget(title_);
    step(0).form({"rData", "rUse"}).stretch();
    step(1)
        .text(QStringLiteral("打印的单据上用这些信息，可以以后再填。"))
        .form({"tname", "tjc", "ttele", "taddress"})
        .stretch();
    step(2)
        .warning(QStringLiteral("清理的数据不能恢复。清理前系统会先做一份备份。"))
        .form({"rClear1", "rClear2", "rClear3", "rClear4"})
        .stretch();
    ui::Panel basics = step(3);
    basics.text(QStringLiteral("按数字键打开，设置完一项再设置下一项。"));
    for (const Basic& basic : kBasics) {
      basics.buttons(basic.command);
      on(command(basic.command), [screen = basic.screen] { ui::openScreen(screen); });
    }
    basics.stretch();
    step(4).form({"rSele51", "rSele52"}).stretch();
    seeOnly(0);  // one step at a time: all of them are higher than a small display
    panel().buttons(
        "btnUrl | btnPrior2 btnPrior3 btnPrior4 btnPrior5 btnOK1 btnNext2 btnNext3 btnNext4 btnOK5 btnCancel");
    bind();
  }

 protected:
  void activate() override {
    field("rUse").setChecked(true);
    field("rClear4").setChecked(true);
    field("rSele51").setChecked(true);
    fillShop();
    showStep(first_);
  }
  bool mayLeave() override { return true; }
  /// Room for the longest step: the window keeps its place from one to the next.
  QSize sizeHint() const override { return Screen::sizeHint().expandedTo({620, 440}); }

 private:
  ui::Panel step(std::size_t place) { return panel().area(steps_[place]); }

  void bind() {
    for (const char* each : {"rData", "rUse"})
      field(each).onChanged([this] { nameFirst(); });
    on(command("btnOK1"), [this] { field("rData").isChecked() ? accept() : showStep(1); });
    on(command("btnNext2"), [this] {
      if (!field("tname").isEmpty())
        saveShopName(field("tname").text(), field("tjc").text(), field("ttele").text(), field("taddress").text());
      showStep(2);
    });
    on(command("btnUrl"), [] { openOrTell("F_Backup2", QStringLiteral("备份当前数据库")); });
    on(command("btnNext3"), [this] { clear(); });
    on(command("btnNext4"), [this] { showStep(4); });
    on(command("btnPrior2"), [this] { showStep(0); });
    on(command("btnPrior3"), [this] { showStep(1); });
    on(command("btnPrior4"), [this] { showStep(2); });
    on(command("btnPrior5"), [this] { showStep(kBasicsStep); });
    on(command("btnOK5"), [this] {
      const bool opening = field("rSele51").isChecked();
      hide();
      ui::openScreen(opening ? "F_Qcjz" : "F_Cgjh");
      accept();
    });
  }

  void fillShop() {
    field("tname").load(session().c_name);
    field("tjc").load(session().c_jc);
    field("ttele").load(session().c_tele);
    field("taddress").load(session().c_address);
  }

  void nameFirst() {
    command("btnOK1").setText((field("rData").isChecked() ? QStringLiteral("确定") : QStringLiteral("下一步")) +
                              QStringLiteral("(F5)"));
  }

  void seeOnly(std::size_t place) {
    for (std::size_t i = 0; i < steps_.size(); ++i)
      steps_[i]->setVisible(i == place);
    for (const StepCommand& each : kStepCommands)
      command(each.command).setVisible(each.step == place);
  }

  void showStep(std::size_t place) {
    constexpr std::array titles = {u"第一步：使用方式", u"第二步：单位信息", u"第三步：清理数据", u"第四步：基本信息",
                                   u"第五步：建立库存"};
    constexpr std::array first = {"rUse", "tname", "rClear4", "", "rSele51"};
    seeOnly(place);
    title_->setText(QString::fromUtf16(titles[place]));
    nameFirst();
    if (place == 3)
      command("btn41").setFocus();
    else
      field(first[place]).focus();
  }

  void clear() {
    if (field("rClear4").isChecked()) {
      if (prompt().ask(QStringLiteral("您确定不清除任何数据，准备进行下一步吗？"))) showStep(kBasicsStep);
      return;
    }
    // What keeps partners and members empties the stock as well: a stock without the ledger behind it proves nothing.
    const Clearing what = field("rClear1").isChecked() ? Clearing::All : Clearing::Business;
    if (clearData(what, QStringLiteral("您确定要进行数据清理操做吗？"), BackupFirst::Always,
                  ui::progressInWords(windowTitle(), this), prompt()) != Cleared::Done)
      return;
    prompt().notice(QStringLiteral("删除完成！"));
    if (what != Clearing::All) return showStep(kBasicsStep);
    endAtLogin([] { ui::screenAs<TF_Guide>("F_Guide").goOnWithBasics(); });
  }

  QLabel* title_;
  static constexpr std::size_t kBasicsStep = 3;
  std::size_t first_ = 0;
  std::array<QWidget*, 5> steps_ = {};
};

const ui::Registered<TF_Sjql> kClearing{"F_Sjql"};
const ui::Registered<TF_Guide> kGuideScreen{"F_Guide"};

}  // namespace sjql_detail
}  // namespace jxc
