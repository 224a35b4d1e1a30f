// 往来单位屏幕: the lists and edit dialogs of customers and suppliers: one class each, two descriptions.
#pragma once

#include "masterdata/partners.h"
#include "ui/list_screen.h"

#include <QString>

#include <cstdint>
#include <optional>

class QListWidget;

namespace jxc {

/// Opens the screen that adds a partner; the number of the one that was added. A document that opens it takes the new
/// partner at once.
std::optional<QString> addPartner(const PartnerSide& side);
/// Opens the screen that changes this one; its number, when it was saved.
std::optional<QString> modifyPartner(const PartnerSide& side, std::int64_t id);

/// "客户设置" or "供货商设置".
class PartnerListScreen : public ui::ListScreen {
 public:
  PartnerListScreen(const ui::ScreenSpec& spec, const PartnerSide& side);
  ui::Field& comSx = field("comSx");

 protected:
  void activate() override;

 private:
  Sql filterData(const QString& typed);
  bool searchMore();
  const PartnerSide& side_;
  PartnerConditions conditions_;  // of the search dialog
};

/// Adding or changing one partner.
class PartnerEditScreen : public ui::Screen {
 public:
  enum class Mode : char { Add, Modify };
  PartnerEditScreen(const ui::ScreenSpec& spec, const PartnerSide& side, Mode mode);

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

  /// Opens on this partner, 0 for a new one. The number of what was saved; nothing when it was left.
  std::optional<QString> edit(std::int64_t id);

 protected:
  void activate() override;

 private:
  void fillLists(const PartnerDraft& draft);
  void saveValue();
  void readTree(PartnerDraft& draft) const;
  const PartnerSide& side_;
  const Mode mode_;
  QListWidget* treeUser_ = nullptr;  // employees of a customer, each with a box
  std::int64_t id_ = 0;
  QString saved_;
};

}  // namespace jxc
