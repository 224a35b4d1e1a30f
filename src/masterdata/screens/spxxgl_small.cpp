#include "masterdata/screens/spxxgl_small.h"

#include "masterdata/goods_class_move.h"
#include "masterdata/screens/goods_picture.h"
#include "ui/progress.h"

#include <QLineEdit>
#include <QTreeWidget>

namespace jxc {
namespace spxxgl_small_detail {

using ui::FieldKind;

constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::FieldSpec kJmFields[] = {{"tjm", "商品简码：", FieldKind::Text, "jxc_goods.g_jm"}};
constexpr ui::ScreenSpec kJm = {
    .name = "F_Spxxgl_Jm", .title = "修改商品简码", .fields = kJmFields, .commands = kCommands, .focus = "tjm"};

constexpr ui::FieldSpec kZdkcFields[] = {{"tzdkc", "最低库存：", FieldKind::Integer, "", 9, ui::NoMinus}};
constexpr ui::ScreenSpec kZdkc = {
    .name = "F_Spxxgl_Zdkc", .title = "修改最低库存", .fields = kZdkcFields, .commands = kCommands, .focus = "tzdkc"};

constexpr ui::FieldSpec kMoveFields[] = {{"tname2", "移动的类别：", FieldKind::Text, "", 0, ui::ReadOnly},
                                         {"comLb", "移动到目标类别的：", FieldKind::Combo}};
constexpr ui::ScreenSpec kMove = {
    .name = "F_Spxxgl_Move", .title = "商品类别移动", .fields = kMoveFields, .commands = kCommands};

}  // namespace spxxgl_small_detail

TF_Spxxgl_Jm::TF_Spxxgl_Jm() : Screen(spxxgl_small_detail::kJm) {
  on(command("btnOK"), [this] {
    changeGoodsMnemonic(id_, tjm.text());
    accept();
  });
}

bool TF_Spxxgl_Jm::edit(std::int64_t id, const QString& mnemonic) {
  id_ = id;
  tjm.setText(mnemonic);
  return showModal();
}

TF_Spxxgl_Zdkc::TF_Spxxgl_Zdkc() : Screen(spxxgl_small_detail::kZdkc) {
  on(command("btnOK"), [this] {
    if (changeLowestStock(ids_, tzdkc.integer(), prompt(),
                          ui::progressOnDemand(QStringLiteral("正在修改最低库存……"), this)))
      accept();
  });
}

bool TF_Spxxgl_Zdkc::edit(GoodsIds ids) {
  ids_ = std::move(ids);
  tzdkc.clear();
  return showModal();
}

int TF_Spxxgl_Dele::deleteMarked(const GoodsIds& ids) {
  return run(ids.size(), [ids](const GoodsProgress& progress) -> std::optional<Outcome> {
    const auto result = deleteGoodsBatch(ids, progress);
    if (!result) return {};
    for (const QString& number : result->numbers)
      removeGoodsPicture(number);
    return Outcome{result->deleted, result->refusals};
  });
}

TF_Spxxgl_Move::TF_Spxxgl_Move()
    : Screen(spxxgl_small_detail::kMove), tree_(new GoodsClassTree(GoodsClassTree::Show::All, prompt())) {
  panel()
      .form({"tname2"})
      .text(QStringLiteral("请选择目标类别："))
      .widget(tree_, 1)
      .form({"comLb"})
      .buttons("| btnOK btnCancel");
  comLb.setItems({{QStringLiteral("下级类别"), QStringLiteral("0")},
                  {QStringLiteral("同级下一行"), QStringLiteral("1")},
                  {QStringLiteral("同级上一行"), QStringLiteral("2")}});
  tree_->view().setMinimumHeight(fontMetrics().height() * 16);
  on(command("btnOK"), [this] {
    const auto target = tree_->current();
    if (target && moveGoodsClass(moved_.id, target->id, static_cast<ClassPlacement>(comLb.index()), prompt())) accept();
  });
}

bool TF_Spxxgl_Move::move(const GoodsClass& moved) {
  moved_ = moved;
  return showModal();
}

void TF_Spxxgl_Move::activate() {
  tname2.setText(moved_.name);
  comLb.setIndex(0);
  tree_->search().clear();
  tree_->reload();
  tree_->view().setFocus();
}

namespace spxxgl_small_detail {
const ui::Registered<TF_Spxxgl_Jm> kRegisteredJm{"F_Spxxgl_Jm"};
const ui::Registered<TF_Spxxgl_Zdkc> kRegisteredZdkc{"F_Spxxgl_Zdkc"};
const ui::Registered<TF_Spxxgl_Dele> kRegisteredDele{"F_Spxxgl_Dele"};
const ui::Registered<TF_Spxxgl_Move> kRegisteredMove{"F_Spxxgl_Move"};
}  // namespace spxxgl_small_detail

}  // namespace jxc
