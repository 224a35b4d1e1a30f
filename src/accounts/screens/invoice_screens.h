// 发票录入屏幕: one invoice entered by hand, and the registration of the invoice of a sale or purchase.
#pragma once

#include "accounts/invoices.h"
#include "ui/screen.h"

#include <string_view>

namespace jxc {

/// "增加发票", "修改发票".
class InvoiceEntryScreen : public ui::Screen {
 public:
  InvoiceEntryScreen(std::string_view name, std::string_view title, const PartnerSide& side);
  /// Opens on a new invoice of a partner, or on one that stands. Whether it was saved.
  bool edit(const invoices::Draft& draft);

 protected:
  void activate() override;

 private:
  void save();
  const PartnerSide& side_;
  invoices::Draft draft_;
};

/// "发票登记".
class InvoiceRegistrationScreen : public ui::Screen {
 public:
  InvoiceRegistrationScreen(std::string_view name, std::string_view title, const PartnerSide& side);
  /// Whether the invoice was registered.
  bool edit(const invoices::Registration& registration);

 protected:
  void activate() override;

 private:
  void save();
  void tellOpen();
  const PartnerSide& side_;
  invoices::Registration registration_;
};

}  // namespace jxc
