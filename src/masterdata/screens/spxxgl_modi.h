// 修改商品: the dialog of an ordinary article that is there already.
#pragma once

#include "masterdata/screens/goods_form.h"

namespace jxc {

class TF_Spxxgl_Modi : public OrdinaryGoodsForm {
 public:
  TF_Spxxgl_Modi();
  ui::Field& chkTc = field("chkTc");
  QPushButton& btnSave = command("btnSave");

  /// Opens on this article; whether it was saved.
  bool edit(std::int64_t id);

 protected:
  void activate() override;

 private:
  void btnSaveClick();
  std::int64_t id_ = 0;
  GoodsDraft before_;
};

}  // namespace jxc
