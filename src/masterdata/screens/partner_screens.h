// 往来单位屏幕: the lists and edit dialogs of customers and suppliers: one class each, two descriptions.
#pragma once

#include "masterdata/partners.h"
#include "ui/list_screen.h"

#include <cstdint>

namespace jxc {

/// "客户设置" or "供货商设置".
class PartnerListScreen : public ui::ListScreen {
 public:
  PartnerListScreen(const ui::ScreenSpec& spec, const PartnerSide& side, std::string_view editScreen);
  ui::Field& chkForbid = field("chkForbid");

 private:
  ui::GridQuery query(const QString& typed) const;
  const PartnerSide& side_;
};

/// Adding or changing one partner.
class PartnerEditScreen : public ui::Screen {
 public:
  PartnerEditScreen(const ui::ScreenSpec& spec, const PartnerSide& side);

  ui::Field& tname = field("tname");
  ui::Field& tlxr = field("tlxr");
  ui::Field& ttele = field("ttele");
  ui::Field& taddress = field("taddress");
  ui::Field& tnote = field("tnote");
  ui::Field& comType = field("comType");
  ui::Field& comZone = field("comZone");
  ui::Field& comCk = field("comCk");
  ui::Field& tlwje = field("tlwje");
  ui::Field& chkDefault = field("chkDefault");
  QPushButton& btnOK = command("btnOK");

  /// Opens on a new partner (id 0) or on this one. Whether it was saved; its number then stands in `saved`.
  bool edit(std::int64_t id);
  QString saved;

 protected:
  void activate() override;

 private:
  void saveValue();
  const PartnerSide& side_;
  std::int64_t id_ = 0;
};

/// The mnemonic of a partner of either side.
class TF_Ghsgl_Jm : public ui::Screen {
 public:
  TF_Ghsgl_Jm();
  ui::Field& tname = field("tname");
  ui::Field& tjm = field("tjm");
  bool edit(const PartnerSide& side, std::int64_t id);

 private:
  const PartnerSide* side_ = nullptr;
  std::int64_t id_ = 0;
};

}  // namespace jxc
