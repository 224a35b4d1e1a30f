#include "accounts/screens/contract_picker.h"

#include "accounts/screens/contract_screens.h"
#include "core/reading.h"
#include "core/text.h"
#include "masterdata/partners.h"
#include "ui/picker_screen.h"

namespace jxc {
namespace contract_picker_detail {

using ui::ColumnKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"ht_sn", "合同编号", ColumnKind::Text, 9},    {"ht_rq", "日期", ColumnKind::Date},
    {"ht_name", "合同名称", ColumnKind::Text, 28}, {"gl_djh", "关联单据", ColumnKind::Text, 15},
    {"ht_fjname", "附件", ColumnKind::Text, 24},   {"u_name", "经办人"},
};
constexpr ui::GridSpec kGrid[] = {{"gridHt", "合同", kColumns, "还没有与该单位的合同，按F3增加"}};
constexpr ui::CommandSpec kMore[] = {{"btnAdd", "增加合同", "F3", "增加一份合同，随本单保存"},
                                     {"btnChaKan", "查看合同", "F8"},
                                     {"btnNone", "不用合同", "Ctrl+D", "从本单取下合同"}};

class TF_Htgl_Xz : public ui::PickerScreen {
 public:
  TF_Htgl_Xz()
      : PickerScreen({.screen = {.name = "F_Htgl_Xz", .title = "单据合同", .grids = kGrid},
                      .query =
                          [this](const QString& typed) {
                            Criteria asked;
                            asked.partner = document_.partner;
                            asked.key = typed;
                            return contracts::contractList(*document_.side, asked);
                          },
                      .more = kMore}) {
    on(command("btnAdd"), [this] { add(); });
    on(command("btnChaKan"), [this] { look(); });
    on(command("btnNone"), [this] {
      chosen_ = QString();
      accept();
    });
  }

  std::optional<QString> choose(const ContractOfDocument& document) {
    document_ = document;
    chosen_.reset();
    const auto row = pick();
    if (chosen_) return chosen_;
    if (!document_.mayChange) return {};
    return row ? std::optional(row->text("ht_sn")) : std::nullopt;
  }

 protected:
  void activate() override {
    PickerScreen::activate();
    setWindowTitle(u"单据合同 - "_qs + partnerName(*document_.side, document_.partner));
    for (QPushButton* each : {&btnOK, &command("btnAdd")})
      each->setVisible(document_.mayChange);
    command("btnNone").setVisible(document_.mayChange && !document_.contract.isEmpty());
    list.waitLoaded();
    for (const Row row : list.rows())
      if (row.text("ht_sn") == document_.contract) list.selectId(row.integer("id"));
  }

 private:
  void add() {
    contracts::Draft draft;
    draft.partner = document_.partner;
    draft.ofDocument = true;
    const auto added = ui::screenAs<TF_Htgl_Sele>("F_Htgl_Sele").edit(*document_.side, draft);
    if (!added) return;
    chosen_ = *added;
    accept();
  }
  void look() {
    const auto row = list.current();
    if (!row) return;
    const auto opened = contracts::openContract(*document_.side, row->text("ht_sn"), prompt());
    if (opened)
      ui::screenAs<TF_Htgl_Chakan>("F_Htgl_Chakan").look(*document_.side, *opened);
    else
      search();
  }

  ContractOfDocument document_;
  std::optional<QString> chosen_;  // by another way than from the list
};

const ui::Registered<TF_Htgl_Xz> kRegistered{"F_Htgl_Xz"};

}  // namespace contract_picker_detail

std::optional<QString> chooseContract(const ContractOfDocument& document) {
  return ui::screenAs<contract_picker_detail::TF_Htgl_Xz>("F_Htgl_Xz").choose(document);
}

}  // namespace jxc
