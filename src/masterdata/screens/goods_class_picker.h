// 选择类别: the dialog in which a class is chosen: for a new article, for a change of class.
#pragma once

#include "masterdata/screens/goods_class_tree.h"
#include "ui/screen.h"

namespace jxc {

class TF_Spxxgl_Class : public ui::Screen {
 public:
  TF_Spxxgl_Class();

  /// Opens the tree on the class with this number. The class that was taken, or nothing. New ones may be made here.
  std::optional<GoodsClass> pick(GoodsClassTree::Show show, const QString& number);

 protected:
  void activate() override;

 private:
  void take();
  GoodsClassTree* tree_;
  QString number_;
};

}  // namespace jxc
