// 客户管理、供货商管理: the contact books: who it is, what is owed, and what was said; one class, two descriptions.
#include "accounts/partner_documents.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/screens/command_runner.h"
#include "masterdata/partner_contacts.h"
#include "masterdata/partners.h"
#include "masterdata/screens/partner_text.h"
#include "ui/list_search.h"
#include "ui/screen.h"

namespace jxc {
namespace contact_book_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"tname", "名称：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"tlxr", "联系人：", FieldKind::Text, "", 32, ui::ReadOnly},
    {"ttele", "电话：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tzone", "地区：", FieldKind::Text, "", 32, ui::ReadOnly},
    {"taddress", "地址：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"tnote", "备注：", FieldKind::Text, "", 200, ui::ReadOnly},
    {"tlwje", "余额：", FieldKind::Money, "", 0, ui::ReadOnly},
};
constexpr ui::ColumnSpec kDiaryColumns[] = {
    {"lx_rq", "联系日期", ColumnKind::Date},
    {"lx_note", "联系内容", ColumnKind::Text, 40},
    {"u_name", "员工", ColumnKind::Text, 10},
};
constexpr ui::ColumnSpec kLedgerColumns[] = {
    {"k_rq", "日期", ColumnKind::Date},
    {"gl_djh", "单据号", ColumnKind::Text, 14},
    {"k_djtxt", "摘要"},
    {"k_yfje", "增加", ColumnKind::Money, 0, {.sum = true}},
    {"k_sfje", "减少", ColumnKind::Money, 0, {.sum = true}},
    {"k_yhje", "优惠", ColumnKind::Money, 0, {.sum = true}},
    {"k_ljje", "余额", ColumnKind::Money},
    {"k_note", "备注", ColumnKind::Text, 24},
};
template <PartnerType Side>
constexpr ui::ColumnSpec kColumns[] = {
    {partnerColumn<Side, "sn">, "编号"},
    {partnerColumn<Side, "name">, joined<PartnerText<Side>::noun, "名称">, ColumnKind::Text, 20},
    {partnerColumn<Side, "lxr">, "联系人"},
    {partnerColumn<Side, "tele">, "电话"},
};
template <PartnerType Side>
constexpr ui::GridSpec kGrids[] = {
    {Side == PartnerType::Customer ? "gridKh" : "gridGhs", PartnerText<Side>::noun.letters, kColumns<Side>,
     joined<"没有符合条件的", PartnerText<Side>::noun>},
    {"gridLx", "联系记录", kDiaryColumns, "还没有联系记录，按F2增加"},
    {"gridZw", joined<PartnerText<Side>::noun, "账务">, kLedgerColumns, "没有往来账"},
};
constexpr ui::CommandSpec kCommands[] = {{"btnAdd", "增加记录", "F2"},
                                         {"btnModi", "修改记录", "F3"},
                                         {"btnDele", "删除记录", "Ctrl+D"},
                                         {"btnZw", "往来账务", "F6"},
                                         {"btnCancel", "退出", "Esc"}};
template <PartnerType Side>
constexpr ui::ScreenSpec kBook = {.name = Side == PartnerType::Customer ? "F_Khzhgl" : "F_GhsZhgl",
                                  .title = joined<PartnerText<Side>::noun, "管理">,
                                  .fields = kFields,
                                  .grids = kGrids<Side>,
                                  .commands = kCommands,
                                  .focus = "tkey"};

constexpr ui::FieldSpec kEntryFields[] = {
    {"tname", "名称：", FieldKind::Text, "", 128, ui::ReadOnly},
    {"dateLx", "联系日期：", FieldKind::Date},
    {"comUser", "员工：", FieldKind::Combo},
    {"tnote", "联系内容：", FieldKind::Memo, "", 2000},
};
constexpr ui::CommandSpec kEntryCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec entrySpec(std::string_view name, std::string_view title) {
  return {.name = name, .title = title, .fields = kEntryFields, .commands = kEntryCommands, .focus = "tnote"};
}

/// One record of the diary, new or changed.
class EntryScreen : public ui::Screen {
 public:
  EntryScreen(const ui::ScreenSpec& spec, const PartnerSide& side) : Screen(spec), side_(side) {
    panel().form({"tname", "dateLx comUser", "tnote"}).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] { saveValue(); });
    resize(560, 340);
  }

  bool edit(const ContactRecord& draft) {
    draft_ = draft;
    const bool done = showModal();
    draft_ = {};
    return done;
  }

 protected:
  void activate() override {
    field("tname").setText(partnerName(side_, draft_.partner));
    field("comUser").setItems(fillEmployees());
    field("comUser").setKey(draft_.employee);
    field("dateLx").load(draft_.date);
    field("tnote").load(draft_.note);
  }

 private:
  void saveValue() {
    if (draft_.partner.isEmpty()) return reject();  // opened without a partner
    if (!checkFields()) return;
    draft_.date = field("dateLx").text();
    draft_.note = field("tnote").text();
    if (field("comUser").index() >= 0) draft_.employee = field("comUser").key();  // one who left stays the writer
    if (saveContact(side_, draft_, prompt())) accept();
  }

  const PartnerSide& side_;
  ContactRecord draft_;
};

class BookScreen : public ui::Screen {
 public:
  struct Description {
    const ui::ScreenSpec& spec;
    const PartnerSide& side;
    std::string_view add, modify;  // screens of one record
    std::string_view command;      // that opens the statement, guarded by its right
  };

  explicit BookScreen(const Description& description);

 protected:
  void activate() override { search_.begin(); }

 private:
  void show();
  void showDiary();
  bool edit(std::string_view screen, const ContactRecord& draft);
  QString partner() const { return list_.currentText(description_.side.sn); }

  const Description description_;
  ui::Grid& list_ = grid(spec().grids.front().name);
  ui::Grid& diary_ = grid("gridLx");
  ui::Grid& ledger_ = grid("gridZw");
  ui::ListSearch search_;
  QString shown_;
};

BookScreen::BookScreen(const Description& description)
    : Screen(description.spec), description_(description), search_(field("tkey"), list_, [this](const QString& typed) {
        return partnerListStatement(description_.side, {.key = typed});
      }) {
  const bool customers = description_.side.isCustomer();
  auto area = panel();
  auto [left, right] = area.columns(2, 3);
  left.row("tkey").grid(list_.spec().name);
  right.group(QStringLiteral("联系资料")).form({"tname", "tlxr ttele", "tzone tlwje", "taddress", "tnote"});
  field("tlwje").setLabel(customers ? QStringLiteral("应收余额：") : QStringLiteral("应付余额："));
  right.page("cxTab1", QStringLiteral("联系记录")).grid("gridLx").buttons("btnAdd btnModi btnDele |");
  right.page("cxTab2", customers ? QStringLiteral("客户账务") : QStringLiteral("供货商账务")).grid("gridZw");
  area.buttons("btnZw | btnCancel");
  list_.onCurrentChanged([this] { show(); });
  list_.onLoaded([this] { show(); });
  field("tkey").onEnter([this] {
    if (!search_.enterSearches()) list_.focusRows();
    return true;
  });
  diary_.onActivated([this] { command("btnModi").click(); });
  on(command("btnAdd"), [this] {
    if (!partner_books::isPartnerChosen(description_.side, partner(), prompt())) return;
    edit(description_.add, {.partner = partner(), .date = clock::today(), .employee = defaultEmployeeSn()});
  });
  on(command("btnModi"), [this] {
    if (diary_.currentId() != 0) edit(description_.modify, readContact(description_.side, diary_.currentId()));
  });
  on(command("btnDele"), [this] {
    if (diary_.currentId() != 0 && deleteContact(description_.side, diary_.currentId(), prompt())) diary_.reload();
  });
  on(command("btnZw"), [this] {
    if (!partner_books::isPartnerChosen(description_.side, partner(), prompt())) return;
    handOverPartner(description_.side, partner());
    runCommand(description_.command, prompt());
    handOverPartner(description_.side, {});
  });
  resize(1180, 640);
}

bool BookScreen::edit(std::string_view screen, const ContactRecord& draft) {
  if (!ui::screenAs<EntryScreen>(screen).edit(draft)) return false;
  diary_.reload();
  return true;
}

void BookScreen::show() {
  const auto& side = description_.side;
  field("tname").setText(list_.currentText(side.name));
  field("tlxr").setText(list_.currentText(side.contact));
  field("ttele").setText(list_.currentText(side.phone));
  field("tzone").setText(list_.currentText("z_name"));
  field("taddress").setText(list_.currentText(side.address));
  field("tnote").setText(list_.currentText(side.note));
  field("tlwje").setNumber(ysyfkBalanceNow(partner(), side.which));
  diary_.loadQuery(contactStatement(side, partner()));
  ledger_.load("select * from jxc_ysyfk where k_type=? and k_ghskh=? order by k_rq desc,id desc",
               partnerTypeText(side.which), partner());
}

constexpr BookScreen::Description kCustomers{kBook<PartnerType::Customer>, customerSide, "F_Khzhgl_Add",
                                             "F_Khzhgl_Modi", "btn_Menu2_Btn5"};
constexpr BookScreen::Description kSuppliers{kBook<PartnerType::Supplier>, supplierSide, "F_GhsZhgl_Add",
                                             "F_GhsZhgl_Modi", "btn_Menu1_Btn3"};

struct TF_Khzhgl : BookScreen {
  TF_Khzhgl() : BookScreen(kCustomers) {}
};
struct TF_GhsZhgl : BookScreen {
  TF_GhsZhgl() : BookScreen(kSuppliers) {}
};
struct TF_Khzhgl_Add : EntryScreen {
  TF_Khzhgl_Add() : EntryScreen(entrySpec("F_Khzhgl_Add", "增加客户联系记录"), customerSide) {}
};
struct TF_Khzhgl_Modi : EntryScreen {
  TF_Khzhgl_Modi() : EntryScreen(entrySpec("F_Khzhgl_Modi", "修改客户联系记录"), customerSide) {}
};
struct TF_GhsZhgl_Add : EntryScreen {
  TF_GhsZhgl_Add() : EntryScreen(entrySpec("F_GhsZhgl_Add", "增加供货商联系记录"), supplierSide) {}
};
struct TF_GhsZhgl_Modi : EntryScreen {
  TF_GhsZhgl_Modi() : EntryScreen(entrySpec("F_GhsZhgl_Modi", "修改供货商联系记录"), supplierSide) {}
};

const ui::Registered<TF_Khzhgl> kKhzhgl{"F_Khzhgl"};
const ui::Registered<TF_GhsZhgl> kGhsZhgl{"F_GhsZhgl"};
const ui::Registered<TF_Khzhgl_Add> kKhzhglAdd{"F_Khzhgl_Add"};
const ui::Registered<TF_Khzhgl_Modi> kKhzhglModi{"F_Khzhgl_Modi"};
const ui::Registered<TF_GhsZhgl_Add> kGhsZhglAdd{"F_GhsZhgl_Add"};
const ui::Registered<TF_GhsZhgl_Modi> kGhsZhglModi{"F_GhsZhgl_Modi"};

}  // namespace contact_book_detail
}  // namespace jxc
