// 分店: the branch's own code and name, and the export for the head office.
#include "core/clock.h"
#include "core/program_directory.h"
#include "maintenance/branch.h"
#include "ui/file_dialogs.h"
#include "ui/period_menu.h"
#include "ui/screen.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QRegularExpressionValidator>
#include <QScopeGuard>

namespace jxc {
namespace fd_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kNameFields[] = {
    {"tsn", "分店编号：", FieldKind::Text, "jxc_fd.fd_sn"},
    {"tname", "分店名称：", FieldKind::Text, "jxc_fd.fd_name"},
};
constexpr ui::CommandSpec kNameCommands[] = {{"btnOK2", "确定", "F5"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kNameScreen = {
    .name = "F_Fdsz", .title = "分店名设置", .fields = kNameFields, .commands = kNameCommands, .focus = "tsn"};

constexpr ui::FieldSpec kExportFields[] = {
    {"tdate1", "导出时间：", FieldKind::Date},
    {"tdate2", "至", FieldKind::Date},
    {"tpath", "导出路径：", FieldKind::Text},
};
constexpr ui::CommandSpec kExportCommands[] = {{"btnPeriod", "时间段", "F3"},
                                               {"btnBrowse", "浏览", "F4", "选择导出路径"},
                                               {"btnOK2", "确定", "F5"},
                                               {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kExportScreen = {
    .name = "F_FdExport", .title = "数据导出", .fields = kExportFields, .commands = kExportCommands, .focus = "tdate1"};

constexpr int kPathWidth = 360;
constexpr int kFillsRow = 100;  // against the empty end of its row: its button ends where that of the dates does

/// What the input shall not take is refused as it is typed.
void refuseMarks(ui::Field& field) {
  if (auto* const line = qobject_cast<QLineEdit*>(field.widget())) {
    const QString marks = QRegularExpression::escape(QStringView(refusedInBranch).toString());
    line->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[^") + marks + QStringLiteral("]*")), line));
  }
}

class TF_Fdsz : public ui::Screen {
 public:
  TF_Fdsz() : Screen(kNameScreen) {
    panel()
        .form({"tsn", "tname"})
        .text(QStringLiteral("提示：分店编号不能与其他分店编号重复"))
        .buttons("| btnOK2 btnCancel");
    for (const char* name : {"tsn", "tname"})
      refuseMarks(field(name));
    on(command("btnOK2"), [this] {
      if (saveBranch(field("tsn").text(), field("tname").text(), prompt())) accept();
    });
  }

 protected:
  void activate() override {
    const Branch branch = thisBranch().value_or(Branch{});
    field("tsn").load(branch.sn);
    field("tname").load(branch.name);
  }

  void enterPressed(ui::Field& from) override {
    if (from.spec().name == "tname") return command("btnOK2").setFocus();
    Screen::enterPressed(from);
  }
};

class TF_FdExport : public ui::Screen {
 public:
  TF_FdExport() : Screen(kExportScreen), last_(new QLabel(this)), bar_(new QProgressBar(this)) {
    last_->setObjectName(QStringLiteral("Ldcrq"));
    bar_->setObjectName(QStringLiteral("progressBar"));
    bar_->setAccessibleName(QStringLiteral("导出进度"));
    bar_->setRange(0, 100);
    panel()
        .row("tdate1 tdate2 btnPeriod |")
        .row("tpath btnBrowse")
        .widget(last_)
        .widget(bar_)
        .stretch()
        .buttons("| btnOK2 btnCancel");
    tpath_.widget()->setMinimumWidth(kPathWidth);
    QSizePolicy fills = tpath_.widget()->sizePolicy();
    fills.setHorizontalStretch(kFillsRow);
    tpath_.widget()->setSizePolicy(fills);
    ui::addPeriodMenu(command("btnPeriod"), tdate1_, tdate2_);
    on(command("btnBrowse"), [this] {
      if (const QString folder = ui::chooseFolder(this, QStringLiteral("选择导出路径")); !folder.isEmpty())
        tpath_.setText(folder);
    });
    on(command("btnOK2"), [this] { run(); });
  }

 protected:
  void activate() override {
    const std::optional<Branch> branch = thisBranch();
    command("btnOK2").setEnabled(branch.has_value());
    setWindowTitle(QStringLiteral("数据导出"));
    last_->clear();
    bar_->setValue(0);
    tdate1_.setText(clock::today());
    tdate2_.setText(clock::today());
    tpath_.setText(programDirectory());
    if (!branch) {
      prompt().notice(QStringLiteral("分店信息不存在，不能导出！"));
      return;
    }
    last_->setText(QStringLiteral("最后一次导出时间为：") +
                   (branch->lastExport.isEmpty() ? QStringLiteral("还没有导出过") : branch->lastExport));
    setWindowTitle(QStringLiteral("数据导出(分店编号:%1分店名称:%2)").arg(branch->sn, branch->name));
  }

  /// Esc while a file is written stops the writing and leaves the screen open.
  bool mayLeave() override {
    stop_ = works_;
    return !works_ && Screen::mayLeave();
  }

 private:
  void run() {
    if (works_ || !checkFields()) return;
    if (write()) return accept();
    if (stop_) say(QStringLiteral("导出已停止，没有写文件"));
  }

  /// Whether the file is there. A server that goes meanwhile leaves the screen as it was: the same days can be tried
  /// again.
  bool write() {
    works_ = true;
    stop_ = false;
    command("btnOK2").setEnabled(false);
    const auto over = qScopeGuard([this] {
      works_ = false;
      command("btnOK2").setEnabled(true);
      bar_->setValue(0);
    });
    return exportBranch(
               {.days = {tdate1_.text(), tdate2_.text()}, .folder = tpath_.text()},
               [this](int percent) {
                 bar_->setValue(percent);
                 QApplication::processEvents(QEventLoop::AllEvents, 5);
                 return !stop_;
               },
               prompt())
        .has_value();
  }

  ui::Field& tdate1_ = field("tdate1");
  ui::Field& tdate2_ = field("tdate2");
  ui::Field& tpath_ = field("tpath");
  QLabel* last_;
  QProgressBar* bar_;
  bool works_ = false, stop_ = false;
};

const ui::Registered<TF_Fdsz> kName{"F_Fdsz"};
const ui::Registered<TF_FdExport> kExport{"F_FdExport"};

}  // namespace fd_detail
}  // namespace jxc
