#include "masterdata/screens/goods_class_picker.h"

#include "core/refusal.h"

#include <QAction>
#include <QLineEdit>
#include <QTreeWidget>

namespace jxc {
namespace goods_class_picker_detail {

constexpr ui::CommandSpec kCommands[] = {
    {"btnNew", "增加下级类别", "F2"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Spxxgl_Class", .title = "选择商品类别", .commands = kCommands};

}  // namespace goods_class_picker_detail

TF_Spxxgl_Class::TF_Spxxgl_Class()
    : Screen(goods_class_picker_detail::kScreen), tree_(new GoodsClassTree(GoodsClassTree::Show::All, prompt())) {
  panel().widget(tree_, 1).buttons("btnNew | btnOK btnCancel");
  tree_->offerEditing();
  tree_->onActivated([this] { take(); });
  on(command("btnNew"), [this] { tree_->findChild<QAction*>(QStringLiteral("btnAdd"))->trigger(); });
  on(command("btnOK"), [this] { take(); });
  tree_->view().setMinimumHeight(fontMetrics().height() * 16);
}

std::optional<GoodsClass> TF_Spxxgl_Class::pick(GoodsClassTree::Show show, const QString& number) {
  tree_->setShow(show);
  number_ = number;
  return showModal() ? tree_->current() : std::nullopt;
}

void TF_Spxxgl_Class::activate() {
  tree_->search().clear();
  tree_->reload();
  tree_->select(number_);
  tree_->view().setFocus();
}

void TF_Spxxgl_Class::take() {
  if (tree_->current()) return accept();
  isRefused({u"请选择商品类别！"_qs, Subject::Class}, prompt());
}

namespace goods_class_picker_detail {
const ui::Registered<TF_Spxxgl_Class> kRegistered{"F_Spxxgl_Class"};
}

}  // namespace jxc
