#include "stock/screens/trade_list_screen.h"

#include "accounts/screens/partner_overview_screens.h"
#include "accounts/settling.h"
#include "stock/screens/trading_screen.h"
#include "ui/refresh_after.h"

namespace jxc {

TradeListScreen::TradeListScreen(const ui::EnquirySpec& spec, const PartnerSide& side)
    : DocumentListScreen(spec), side_(side) {
  on(command("btn_Fukuan"), [this] { pay(); });
  on(command("btn_Zdth"), [this] { returnWhole(); });
}

void TradeListScreen::pay() {
  const QString number = currentNumber();
  if (number.isEmpty()) return;
  // Amounts may be withheld from the list: the document itself says what is open.
  if (editSettlement(side_, partner_books::openSettlement(side_, number, prompt()))) rowsChanged();
}

void TradeListScreen::returnWhole() {
  const QString number = currentNumber();
  if (number.isEmpty()) return;
  const std::string_view screen = side_.isCustomer() ? "F_Xsth" : "F_Cgth";
  ui::refreshAfter([&] { ui::screenAs<TradingScreen>(screen).returnDocument(number, prompt()); },
                   [this] { rowsChanged(); });
}

}  // namespace jxc
