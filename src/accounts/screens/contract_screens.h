// 合同的窗口: the form of a contract, and a contract as it is looked at.
#pragma once

#include "accounts/contracts.h"
#include "ui/screen.h"

namespace jxc {

/// "合同设置", of either side.
class TF_Htgl_Sele : public ui::Screen {
 public:
  TF_Htgl_Sele();
  /// A new contract (with what is known of it), or one that stands. Its number when it was saved.
  std::optional<QString> edit(const PartnerSide& side, const contracts::Draft& draft, const QString& attachment = {});

 protected:
  void activate() override;

 private:
  void chooseAttachment();
  void save();
  const PartnerSide* side_ = &supplierSide;
  contracts::Draft draft_;
  QString attachment_;  // that it has already
  QString saved_;
};

/// Its text, and its attachment to open.
class TF_Htgl_Chakan : public ui::Screen {
 public:
  TF_Htgl_Chakan();
  void look(const PartnerSide& side, const contracts::Contract& contract);

 protected:
  void activate() override;

 private:
  const PartnerSide* side_ = &supplierSide;
  contracts::Contract contract_;
};

}  // namespace jxc
