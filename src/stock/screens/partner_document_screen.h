// 往来单据屏幕: the screen of a document that has a partner, whatever goes with him.
#pragma once

#include "masterdata/partner_side.h"
#include "masterdata/partners.h"
#include "stock/screens/document_screen.h"

#include <optional>
#include <string_view>
#include <utility>

namespace jxc {

/// The input of the partner and the list behind it.
struct PartnerInput {
  std::string_view name;  // "tghs", "tkh"
  std::optional<ListItem> (*pick)();
};

/// Over rules whose draft has a `partner`: the input shows him, prices and lists depend on him.
template <class Draft, class Rules>
class PartnerDocumentScreen : public DocumentScreenOver<Draft, Rules> {
 public:
  ui::Field& partner;

 protected:
  using Base = DocumentScreenOver<Draft, Rules>;

  PartnerDocumentScreen(const DocumentScreenSpec& spec, const Rules& rules, const PartnerInput& input,
                        std::span<const std::string_view> known)
      : Base(spec, rules, known), partner(this->field(input.name)) {
    partner.onPick(input.pick);
  }

  void showPartner() {
    partner.setPicked(
        {partnerName(partnerSide(this->rules().family().side), this->draft().partner), this->draft().partner});
  }
  void showDraft() override {
    showPartner();
    Base::showDraft();
  }
  void collect() override {
    Base::collect();
    this->draft().partner = partner.key();
  }
  /// Behind the partner the goods follow: F2 is theirs again.
  void pickedIn(ui::Field& field) override { &field == &partner ? this->focusDraft() : Base::pickedIn(field); }
  LinePlace draftPlace() override {
    LinePlace place = Base::draftPlace();
    place.partner = partner.key();
    return place;
  }
  LinePlace waitingPlace() override {
    LinePlace place = Base::waitingPlace();
    place.partner = this->gridWaiting.currentText(this->rules().family().partner);
    return place;
  }
};

}  // namespace jxc
