// 商品小窗口: small dialogs of the catalogue: mnemonic, lower limit, deletion of marked goods, class move.
#pragma once

#include "masterdata/goods_change.h"
#include "masterdata/screens/goods_class_tree.h"
#include "masterdata/screens/marked_deletion.h"
#include "ui/screen.h"

namespace jxc {

/// The mnemonic of one article.
class TF_Spxxgl_Jm : public ui::Screen {
 public:
  TF_Spxxgl_Jm();
  ui::Field& tjm = field("tjm");
  bool edit(std::int64_t id, const QString& mnemonic);

 private:
  std::int64_t id_ = 0;
};

/// The lower limit of stock of marked goods.
class TF_Spxxgl_Zdkc : public ui::Screen {
 public:
  TF_Spxxgl_Zdkc();
  ui::Field& tzdkc = field("tzdkc");
  bool edit(GoodsIds ids);

 private:
  GoodsIds ids_;
};

/// Deletes marked goods and tells which could not go.
class TF_Spxxgl_Dele : public MarkedDeletion {
 public:
  TF_Spxxgl_Dele() : MarkedDeletion("F_Spxxgl_Dele", "批量删除商品") {}
  /// How many were deleted.
  int deleteMarked(const GoodsIds& ids);
};

/// Another place in the tree for a class.
class TF_Spxxgl_Move : public ui::Screen {
 public:
  TF_Spxxgl_Move();
  ui::Field& tname2 = field("tname2");
  ui::Field& comLb = field("comLb");
  bool move(const GoodsClass& moved);

 protected:
  void activate() override;

 private:
  GoodsClassTree* tree_;
  GoodsClass moved_;
};

}  // namespace jxc
