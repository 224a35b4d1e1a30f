// 客户还货: the return of a loan and its line dialog: what comes back, its rent, and what of the deposit goes back.
#include "core/clock.h"
#include "core/fillers.h"
#include "core/refusal.h"
#include "core/text.h"
#include "masterdata/partner_side.h"
#include "masterdata/partners.h"
#include "masterdata/screens/goods_columns.h"
#include "sales/loan_return.h"
#include "sales/screens/khjhgl_back.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/trading_parts.h"
#include "ui/application.h"
#include "ui/display.h"
#include "ui/joined_tables.h"
#include "ui/paragraph.h"
#include "ui/screen.h"

#include <QTimer>

namespace jxc {
namespace khjhgl_hh_detail {

using loan_return::ReturnDraft;
using loan_return::ReturnLine;
using ui::ColumnKind;
using ui::ColumnSpec;
using ui::FieldKind;

/// A line of a form in which the money stands that changes hands.
QLabel* moneyLabel(QWidget* parent) {
  QLabel* const label = ui::paragraph(parent, "lMoney");
  label->setProperty("warning", true);
  return label;
}
QString yuan(double amount) {
  return ui::displaySum(ui::ColumnKind::Money, amount);
}
QString moneyText(const loan_return::Money& money) {
  const auto told = [](const QString& what, double amount) { return amount > 0 ? what + yuan(amount) : QString(); };
  return u"租金合计 "_qs + yuan(money.rent) + u"　退回押金 "_qs + yuan(money.refund) +
         told(u"　押金不足，还须向客户收取租金 "_qs, money.toCollect) + told(u"　商品已还清，仍在押 "_qs, money.stays) +
         (money.stays > 0 ? u"（不再退回的押金，请计入租金合计）"_qs : QString());
}

// ---- one line ----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "还货数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"thhsl", "未还数量：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tts", "租借天数：", FieldKind::Integer, "", 0, ui::NoMinus},
    {"tzj", "每天租金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tqcyj", "期初押金：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tyyyj", "已用押金：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tyj", "可用押金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tzzj", "租金合计：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tthyj", "退回押金：", FieldKind::Money, "", 0, ui::NoMinus},
    {"comYhzh", "收款账户：", FieldKind::Combo},
};

class TF_Khjhgl_Hh_Sele : public ui::Screen {
 public:
  TF_Khjhgl_Hh_Sele()
      : Screen({.name = "F_Khjhgl_Hh_Sele",
                .title = "还货商品明细",
                .fields = kLineFields,
                .commands = trading_parts::okCancel,
                .focus = "tsl"}) {
    panel().widget(goods_).form({"tsl thhsl", "tts tzj", "tqcyj tyyyj", "tyj tzzj", "tthyj comYhzh"});
    panel().widget(money_).buttons("| btnOK btnCancel");
    // Only the quantity moves rent and refund; what is typed over them stays.
    tsl.onChanged([this] {
      collect();
      line_.setQuantity(tsl.number());
      field("tzzj").setNumber(line_.rentTotal);
      field("tthyj").setNumber(line_.refund);
      showMoney();
    });
    for (const char* name : {"tyj", "tzzj", "tthyj"})
      field(name).onChanged([this] {
        collect();
        showMoney();
      });
    on(command("btnOK"), [this] {
      if (!checkFields()) return;
      collect();
      line_.quantity = tsl.number();
      if (loan_return::changeLine(line_, prompt())) accept();
    });
  }

  bool edit(std::int64_t id) {
    const auto line = loan_return::line(id);
    if (!line) return false;
    line_ = *line;
    return showModal();
  }

 protected:
  void activate() override {
    const RowSet goods = openSelect("select g_name,gg_name,dw_name from jxc_goods where g_sn=?", line_.goods);
    goods_->setText(
        goods.isEmpty()
            ? line_.goods
            : QStringList{line_.goods, goods.text(0, 0), goods.text(0, 1), goods.text(0, 2)}.join(u"　"_qs));
    field("comYhzh").setItems(accountItems());
    field("comYhzh").setKey(line_.account);
    const std::pair<const char*, double> shown[] = {
        {"tsl", line_.quantity},  {"thhsl", line_.open},     {"tts", line_.days},
        {"tzj", line_.rent},      {"tqcyj", line_.deposit},  {"tyyyj", line_.rentUsed},
        {"tyj", line_.available}, {"tzzj", line_.rentTotal}, {"tthyj", line_.refund}};
    for (const auto& [name, figure] : shown)
      field(name).setNumber(figure);
    showMoney();
  }

 private:
  void collect() {
    line_.days = field("tts").integer();
    line_.rent = field("tzj").number();
    line_.available = field("tyj").number();
    line_.rentTotal = field("tzzj").number();
    line_.refund = field("tthyj").number();
    line_.account = field("comYhzh").key();
  }
  void showMoney() { money_->setText(moneyText({line_.rentTotal, line_.refund, line_.toCollect(), line_.stays()})); }

  ui::Field& tsl = field("tsl");
  QLabel* goods_ = new QLabel(this);
  QLabel* money_ = moneyLabel(this);
  ReturnLine line_;
};

// ---- the return --------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tjhdjh", "借货单号：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"gldjh", "还货单号：", FieldKind::Text, "jxc_khjh.gl_djh", 0, ui::ReadOnly},
    {"dateCg", "还货日期：", FieldKind::Date},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_khjh.jh_note", 0, ui::OffersRemarks},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
};
constexpr auto kLines =
    ui::joinedTables(goodsNames, std::array{ColumnSpec{"jh_sl", "借货数量", ColumnKind::Quantity, 8},
                                            ColumnSpec{"jh_hhsl", "还货数量", ColumnKind::Quantity, 8, {.sum = true}},
                                            ColumnSpec{"jh_ts", "租借天数", ColumnKind::Number, 8},
                                            ColumnSpec{"jh_zj", "每天租金", ColumnKind::Money, 9},
                                            ColumnSpec{"jh_zzj", "租金合计", ColumnKind::Money, 10, {.sum = true}},
                                            ColumnSpec{"jh_yj", "可用押金", ColumnKind::Money, 10, {.sum = true}},
                                            ColumnSpec{"jh_thyj", "退回押金", ColumnKind::Money, 10, {.sum = true}},
                                            ColumnSpec{"bsje", "还须收取", ColumnKind::Money, 10, {.sum = true}},
                                            ColumnSpec{"jh_kmmc", "收款账户", ColumnKind::Text, 10}, goodsBarcode});
constexpr ui::GridSpec kGrids[] = {{"gridLines", "还货商品", kLines, "没有还货的商品"}};
constexpr ui::CommandSpec kCommands[] = {{"btnAddOld", "补入未还商品", "F2", "借货单中其余未还的商品，也在本次归还"},
                                         {"btnModi", "修改", "F3"},
                                         {"btnDel", "删除", "Ctrl+D", "本次不还这一种商品"},
                                         {"btnOK", "保存", "F5"},
                                         {"btnCancel", "退出", "Esc"}};

class TF_Khjhgl_Hh : public ui::Screen {
 public:
  TF_Khjhgl_Hh()
      : Screen({.name = "F_Khjhgl_Hh",
                .title = "客户还货",
                .fields = kFields,
                .grids = kGrids,
                .commands = kCommands,
                .focus = "tSptm"}) {
    panel()
        .form({"tkh tjhdjh gldjh", "dateCg comUser tnote"})
        .row("tSptm | btnAddOld btnModi btnDel")
        .grid("gridLines")
        .widget(money_)
        .buttons("| btnOK btnCancel");
    tSptm.onEnter([this] {
      const QString code = tSptm.trimmed();
      tSptm.clear();
      if (!code.isEmpty()) add(code);
      return !code.isEmpty();
    });
    on(command("btnAddOld"), [this] { add({}); });
    dateCg.onEnter([this] {
      settleDate();
      return false;
    });
    // Not while the focus is on its way: the question would stand in the middle of it.
    dateCg.onLeft([this] {
      if (dateCg.text() != draft_.date) QTimer::singleShot(0, this, [this] { settleDate(); });
    });
    gridLines.onActivated([this] { modify(); });
    on(command("btnModi"), [this] { modify(); });
    on(command("btnDel"), [this] { remove(); });
    on(command("btnOK"), [this] { save(); });
  }
  QSize sizeHint() const override { return {1180, 560}; }

  bool bring(const QString& loan, std::int64_t line) {
    const auto draft = loan_return::open(loan, line, prompt());
    if (!draft) return false;
    draft_ = *draft;
    const bool saved = showModal();
    loan_return::discard();
    return saved;
  }

 protected:
  void activate() override {
    field("tkh").setText(partnerName(customerSide, draft_.partner));
    field("tjhdjh").setText(draft_.loan);
    comUser.setItems(fillEmployees("u_xs"));
    comUser.setKey(keyToPropose(comUser.items(), draft_.salesperson));
    tnote.clear();
    showDate();
    reload();
  }

 private:
  void showDate() {
    dateCg.setText(draft_.date);
    field("gldjh").setText(draft_.number);
  }
  /// Rents go by the days until the return.
  void settleDate() {
    const QString typed = dateCg.text();
    if (typed.isEmpty() || typed == draft_.date || draft_.loan.isEmpty()) return;
    if (!confirmDocumentDate(typed, prompt())) {
      loan_return::redate(draft_, clock::today());
    } else {
      loan_return::redate(draft_, typed);
    }
    showDate();
    reload(gridLines.currentId());
    say(u"租金和退回押金已按还货日期 %1 重新计算"_qs.arg(draft_.date));
  }
  void reload(std::int64_t current = 0) {
    gridLines.readNow(loan_return::lines());
    if (current != 0) gridLines.selectId(current);
    for (const char* name : {"btnModi", "btnDel"})
      command(name).setEnabled(!gridLines.isEmpty());
    money_->setText(moneyText(loan_return::money()));
  }
  /// The oldest line of a code, which is shown where the return has it already; without a code all that are missing.
  void add(const QString& code) {
    const std::optional<int> added = loan_return::addMissing(draft_, code, prompt());
    if (!added) return;
    reload();
    if (!code.isEmpty()) gridLines.selectWhere("g_sptm", code);
    if (*added == 0) say(u"未还的商品已在本次还货中"_qs);
  }
  void modify() {
    const std::int64_t id = gridLines.currentId();
    if (id == 0) return;
    ui::screenAs<TF_Khjhgl_Hh_Sele>("F_Khjhgl_Hh_Sele").edit(id);
    reload(id);
  }
  void remove() {
    if (gridLines.currentId() == 0 || !prompt().ask(u"您确认要删除选中的信息吗？"_qs)) return;
    loan_return::removeLine(gridLines.currentId());
    reload();
  }
  void save() {
    if (!checkFields()) return;
    settleDate();
    draft_.salesperson = comUser.key();
    draft_.note = tnote.trimmed();
    if (loan_return::save(draft_, prompt()))
      accept();
    else
      reload(gridLines.currentId());
  }

  ui::Field& dateCg = field("dateCg");
  ui::Field& comUser = field("comUser");
  ui::Field& tnote = field("tnote");
  ui::Field& tSptm = field("tSptm");
  ui::Grid& gridLines = grid("gridLines");
  QLabel* money_ = moneyLabel(this);
  ReturnDraft draft_;
};

const ui::Registered<TF_Khjhgl_Hh> kRegistered{"F_Khjhgl_Hh"};
const ui::Registered<TF_Khjhgl_Hh_Sele> kRegisteredSele{"F_Khjhgl_Hh_Sele"};

}  // namespace khjhgl_hh_detail

bool bringLoanBack(const QString& loan, std::int64_t line) {
  return ui::screenAs<khjhgl_hh_detail::TF_Khjhgl_Hh>("F_Khjhgl_Hh").bring(loan, line);
}

}  // namespace jxc
