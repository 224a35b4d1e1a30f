// 修改单据: date, partner, warehouse and charges of a document that waits for audit.
#pragma once

#include "masterdata/partner_side.h"
#include "stock/document.h"
#include "ui/screen.h"

#include <optional>

namespace jxc {

/// Its fields are dateCg, comCk, comUser; where the documents have them the partner by its own name, tfpno, tfpje, tyf,
/// tbzf, chkYf. Another part is refused.
struct HeadScreenSpec {
  ui::ScreenSpec screen;
  std::optional<ListItem> (*pickPartner)() = nullptr;
  std::string_view partner = {};  // name of the input
  std::string_view employeeFlag;  // "u_cg", "u_xs"
};

class HeadScreen : public ui::Screen {
 public:
  explicit HeadScreen(const HeadScreenSpec& spec);

  /// Opens on a waiting document. Its number now; empty when nothing was changed.
  QString change(const DocumentFamily& family, const QString& number);

  ui::Field& dateCg = field("dateCg");
  ui::Field& comCk = field("comCk");
  ui::Field& comUser = field("comUser");

 protected:
  void activate() override;

 private:
  ui::Field* partner() { return description_.partner.empty() ? nullptr : &field(description_.partner); }
  void saveValue();
  const HeadScreenSpec description_;
  const DocumentFamily* family_ = nullptr;
  QString number_, result_;
};

}  // namespace jxc
