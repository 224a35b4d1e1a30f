// 应收应付登记屏幕: the lists and entry forms of receivables, payables, receipts and payments: one class each.
#pragma once

#include "accounts/partner_documents.h"
#include "output/screens/print_outlet.h"
#include "ui/screen.h"

#include <optional>
#include <string_view>

namespace jxc {

/// What tells the four pairs of screens apart.
struct PartnerDocumentWords {
  const PartnerSide* side;
  partner_books::Kind kind;
  std::string_view entryScreen;
  int auditRight;  // of the group wlzk
  std::optional<ListItem> (*pickPartner)();
};

/// "应收登记", "收款登记", "应付登记", "付款登记".
class PartnerDocumentsScreen : public ui::Screen {
 public:
  PartnerDocumentsScreen(const ui::ScreenSpec& spec, const PartnerDocumentWords& words);

  ui::Field& tdate1 = field("tdate1");
  ui::Field& tdate2 = field("tdate2");
  ui::Field& tKhName = field("tKhName");
  ui::Field& tkey = field("tkey");
  ui::Grid& list;

 protected:
  void activate() override;

 private:
  void bindMenu();
  void refresh();
  void add();
  void modify();
  void remove();
  void auditOrCancel();
  void bringToPaper(PrintWay way);
  void printList();
  void preview();
  QString partner() const;
  bool isCurrentAudited() const;

  const PartnerDocumentWords words_;
};

/// The form of one document.
class PartnerEntryScreen : public ui::Screen {
 public:
  PartnerEntryScreen(const ui::ScreenSpec& spec, const PartnerDocumentWords& words);

  ui::Field& tdjh = field("tdjh");
  ui::Field& tname = field("tname");
  ui::Field& kh_ye = field("kh_ye");
  ui::Field& dateCg = field("dateCg");
  ui::Field& tgsj = field("tgsj");
  ui::Field& comUser = field("comUser");
  ui::Field& tnote = field("tnote");

  /// Opens on a new document of a partner, or on one that stands. Whether it was saved.
  bool edit(const partner_books::Draft& draft);

 protected:
  void activate() override;

 private:
  void save();
  const PartnerDocumentWords words_;
  partner_books::Draft draft_;
};

}  // namespace jxc
