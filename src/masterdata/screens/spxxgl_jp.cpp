#include "masterdata/screens/spxxgl_jp.h"

#include <QHBoxLayout>
#include <QRadioButton>

namespace jxc {
namespace spxxgl_jp_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {{"tkey", "商品名称或简码：", FieldKind::Text, "", 64}};
constexpr ui::ColumnSpec kColumns[] = {
    {"jp_spmc", "商品名称", ui::ColumnKind::Text, 30},   {"jp_lxmc", "品牌名称", ui::ColumnKind::Text, 16},
    {"jp_mcqc", "膜层或弧度", ui::ColumnKind::Text, 12}, {"jp_zsl", "折射率", ui::ColumnKind::Text, 8},
    {"jp_hsl", "含水量", ui::ColumnKind::Text, 8},       {"jp_jm", "简码", ui::ColumnKind::Text, 14},
    {"jp_bz", "备注", ui::ColumnKind::Text, 20}};
constexpr ui::GridSpec kGrids[] = {{"gridJp", "镜片商品名称", kColumns, "还没有商品名称，按F3增加"}};
constexpr ui::CommandSpec kCommands[] = {{"btnSearch", "查询", "F2"}, {"btnAdd", "增加", "F3"},
                                         {"btnModi", "修改", "F4"},   {"btnDele", "删除", "Ctrl+D"},
                                         {"btnOK", "确定", "F5"},     {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kList = {.name = "F_Spxxgl_Jp",
                                  .title = "编辑商品名称",
                                  .fields = kFields,
                                  .grids = kGrids,
                                  .commands = kCommands,
                                  .focus = "tkey"};

constexpr ui::FieldSpec kEditFields[] = {
    {"tlxmc", "品牌名称：", FieldKind::Text, "jxc_jplx.jp_lxmc"},
    {"item1", "膜层情况：", FieldKind::Text, "jxc_jplx.jp_mcqc"},
    {"item2", "折射率：", FieldKind::Text, "jxc_jplx.jp_zsl"},
    {"tnote", "备注：", FieldKind::Text, "jxc_jplx.jp_bz"},
};
constexpr ui::CommandSpec kEditCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kAdd = {.name = "F_Spxxgl_Jp_Add",
                                 .title = "增加商品名称",
                                 .fields = kEditFields,
                                 .commands = kEditCommands,
                                 .focus = "tlxmc"};
constexpr ui::ScreenSpec kModi = {.name = "F_Spxxgl_Jp_Modi",
                                  .title = "修改商品名称",
                                  .fields = kEditFields,
                                  .commands = kEditCommands,
                                  .focus = "tlxmc"};

class AddScreen : public LensProductScreen {
 public:
  AddScreen() : LensProductScreen(kAdd) {}
};
class ModifyScreen : public LensProductScreen {
 public:
  ModifyScreen() : LensProductScreen(kModi) {}
};

}  // namespace spxxgl_jp_detail

TF_Spxxgl_Jp::TF_Spxxgl_Jp() : ListScreen(spxxgl_jp_detail::kList, lensProductsStatement) {
  const auto edit = [](const char* name, std::int64_t id) { return ui::screenAs<LensProductScreen>(name).edit(id); };
  on(command("btnSearch"), [this] { refresh(); });
  adding("btnAdd", [edit] { return edit("F_Spxxgl_Jp_Add", 0); });
  row("btnModi", [edit](std::int64_t id) { return edit("F_Spxxgl_Jp_Modi", id); });
  row("btnDele", [this](std::int64_t id) { return deleteLensProduct(id, prompt()); });
  on(command("btnOK"), [this] {
    if (list.current()) accept();
  });
  rowActivated("btnOK");
}

QString TF_Spxxgl_Jp::pick() {
  return showModal() ? list.currentText("jp_spmc") : QString();
}

LensProductScreen::LensProductScreen(const ui::ScreenSpec& spec)
    : Screen(spec),
      rPtjp_(new QRadioButton(QStringLiteral("普通镜片"))),
      rYxjp_(new QRadioButton(QStringLiteral("隐形镜片"))) {
  rPtjp_->setObjectName(QStringLiteral("rPtjp"));
  rYxjp_->setObjectName(QStringLiteral("rYxjp"));
  auto* kinds = new QWidget;
  auto* line = new QHBoxLayout(kinds);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(rPtjp_);
  line->addWidget(rYxjp_);
  line->addStretch(1);
  panel().widget(kinds).form({"tlxmc", "item1", "item2", "tnote"}).buttons("| btnOK btnCancel");
  connect(rYxjp_, &QRadioButton::toggled, this, [this] { relabel(); });
  on(command("btnOK"), [this] {
    const LensProduct product{.id = id_,
                              .brand = tlxmc.text(),
                              .item1 = item1.text(),
                              .item2 = item2.text(),
                              .note = tnote.text(),
                              .contact = rYxjp_->isChecked()};
    if (saveLensProduct(product, prompt())) accept();
  });
}

bool LensProductScreen::edit(std::int64_t id) {
  id_ = id;
  return showModal();
}

void LensProductScreen::activate() {
  const LensProduct product = readLensProduct(id_);
  (product.contact ? rYxjp_ : rPtjp_)->setChecked(true);
  tlxmc.setText(product.brand);
  item1.setText(product.item1);
  item2.setText(product.item2);
  tnote.setText(product.note);
  relabel();
}

void LensProductScreen::relabel() {
  const bool contact = rYxjp_->isChecked();
  item1.setLabel(contact ? QStringLiteral("弧  度：") : QStringLiteral("膜层情况："));
  item2.setLabel(contact ? QStringLiteral("含水量：") : QStringLiteral("折射率："));
}

namespace spxxgl_jp_detail {
const ui::Registered<TF_Spxxgl_Jp> kRegistered{"F_Spxxgl_Jp"};
const ui::Registered<AddScreen> kRegisteredAdd{"F_Spxxgl_Jp_Add"};
const ui::Registered<ModifyScreen> kRegisteredModi{"F_Spxxgl_Jp_Modi"};
}  // namespace spxxgl_jp_detail

}  // namespace jxc
