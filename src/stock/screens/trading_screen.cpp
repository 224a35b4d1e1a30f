#include "stock/screens/trading_screen.h"

#include "accounts/contracts.h"
#include "accounts/screens/contract_picker.h"
#include "core/session.h"
#include "core/text.h"
#include "stock/contract_ties.h"
#include "stock/screens/audit_screen.h"

#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace jxc {
namespace trading_screen_detail {

constexpr char16_t kAllCustomers[] = u"全部客户";

/// What the document's head keeps of an input that it may have: without its column the value would not be saved.
struct Kept {
  std::string_view input;
  std::string_view DocumentFamily::*column;
};
constexpr Kept kKept[] = {
    {"tsn2", &DocumentFamily::originalNumber}, {"tfpno", &DocumentFamily::invoiceNumber},
    {"tfpje", &DocumentFamily::invoiceAmount}, {"tyf", &DocumentFamily::freight},
    {"tbzf", &DocumentFamily::packing},        {"chkYf", &DocumentFamily::freightPayer},
};
constexpr std::string_view kParts[] = {"tyfje",    "comJsfs", "comYhzh", "chkZj", "tGhsName",
                                       "btnAllKh", "btnZdth", "tht",     "btnHt", "btnCkHt"};

std::vector<std::string_view> partsOf(const TradingScreenSpec& spec) {
  std::vector<std::string_view> parts(std::begin(kParts), std::end(kParts));
  parts.insert(parts.end(), {spec.partner, spec.paid});
  for (const Kept& each : kKept)
    parts.push_back(each.input);
  return parts;
}

QString goesQuestion(const QString& contract, const QString& doing) {
  return u"合同“%1”是为本单增加的，%2后将连同附件一起删除，确认%2吗？"_qs.arg(contract_ties::shown(contract), doing);
}

void refuse(const TradingScreenSpec& spec, const std::string& why) {
  throw std::invalid_argument(std::string(spec.document.screen.name) + ": " + why);
}

}  // namespace trading_screen_detail

TradingScreen::TradingScreen(const TradingScreenSpec& spec)
    : PartnerDocumentScreen(spec.document, spec.rules(), {spec.partner, spec.pickPartner},
                            trading_screen_detail::partsOf(spec)),
      paid(field(spec.paid)),
      trading_(spec) {
  using namespace trading_screen_detail;
  const DocumentFamily& family = rules().family();
  for (const Kept& each : kKept)
    if (hasField(each.input) && (family.*each.column).empty())
      refuse(spec, "the head does not keep " + std::string(each.input));
  if (hasField("chkZj") && !family.line.columns->movedLater) refuse(spec, "goods always move at once, without chkZj");
  if (hasField("tGhsName") != hasCommand("btnAllKh")) refuse(spec, "tGhsName goes with btnAllKh");
  if (hasCommand("btnZdth") != (spec.pickReturned != nullptr)) refuse(spec, "btnZdth goes with pickReturned");
  const bool hasContract = !family.contract.empty();
  if (hasField("tht") != hasContract || hasCommand("btnHt") != hasContract || hasCommand("btnCkHt") != hasContract)
    refuse(spec, "tht, btnHt and btnCkHt go with a head that keeps a contract");
  if (spec.document.auditScreen.empty()) refuse(spec, "the paid amount is settled in an audit dialog");

  partner.onChanged([this] { partnerTaken(); });
  bindCommand("btnHt", [this] { chooseContract(); });
  bindCommand("btnCkHt", [this] { chooseContractOfWaiting(); });
  bindCommand("btnZdth", [this] { returnWhole(); });
  bindCommand("btnAllKh", [this] { showAllWaiting(); });
  if (auto* wanted = optional("tGhsName")) {
    wanted->onPick(spec.pickPartner);
    wanted->onChanged([this] { refreshWaiting(); });
  }
}

void TradingScreen::fillLists() {
  PartnerDocumentScreen::fillLists();
  comJsfs.setItems(settlementItems(trading_.settleKind));
  comYhzh.setItems(accountItems());
}

void TradingScreen::showByParameters() {
  PartnerDocumentScreen::showByParameters();
  const auto show = [this](std::string_view name, bool on) {
    if (auto* input = optional(name)) input->setVisible(on);
  };
  const bool original = strIsTrue(session().cs_ysdh);
  show("tsn2", original);
  if (const std::string_view column = rules().family().originalNumber; !column.empty())
    gridWaiting.setColumnVisible(column, original);
  show("tfpno", strIsTrue(session().cs_kp));
  show("tfpje", strIsTrue(session().cs_kp));
  if (trading_.carriesFreight)
    for (const char* name : {"tyf", "tbzf", "chkYf"})
      show(name, trading_.carriesFreight());
  show("comYhzh", strIsTrue(session().cs_xjyh));
  show("tht", strIsTrue(session().cs_ht));
  if (hasCommand("btnCkHt")) command("btnCkHt").setVisible(strIsTrue(session().cs_ht));
  const auto movedLater = rules().family().line.columns->movedLater;
  show("chkZj", movedLater && movedLater());
}

void TradingScreen::showDraft() {
  const TradingDraft& shown = draft();
  partner.setReadOnly(!shown.returnOf.isEmpty());
  showSettlement(comJsfs, shown.settlement);
  comYhzh.setKey(shown.account);
  paid.setNumber(shown.paid);
  if (auto* input = optional("tsn2")) input->setText(shown.originalNumber);
  if (auto* input = optional("tfpno")) input->setText(shown.invoiceNumber);
  if (auto* input = optional("tfpje")) input->setNumber(shown.invoiceAmount);
  for (const char* name : {"tyf", "tbzf"})
    if (auto* input = optional(name)) input->clear();
  if (auto* box = optional("chkYf")) box->setChecked(shown.wePayFreight);
  if (auto* box = optional("chkZj")) box->setChecked(shown.straightToStock.value_or(false));
  showContract();
  PartnerDocumentScreen::showDraft();
}

void TradingScreen::collect() {
  PartnerDocumentScreen::collect();
  TradingDraft& into = draft();
  into.partner = partner.key();
  if (auto* input = optional("tsn2")) into.originalNumber = input->trimmed();
  if (auto* input = optional("tfpno")) into.invoiceNumber = input->trimmed();
  if (auto* input = optional("tfpje")) into.invoiceAmount = input->number();
  if (auto* input = optional("tyf")) into.freight = input->number();
  if (auto* input = optional("tbzf")) into.packing = input->number();
  if (auto* box = optional("chkYf")) into.wePayFreight = box->isChecked();
  into.payable = tyfje.number();
  into.paid = paid.number();
  into.settlement = chosenSettlement(comJsfs);
  into.account = comYhzh.text();
  if (auto* box = optional("chkZj"); box && box->isVisible()) into.straightToStock = box->isChecked();
}

void TradingScreen::linesChanged() {
  const double due = rules().payable(draft().number);
  tyfje.setNumber(due);
  paid.setNumber(rules().paidAfter(due, paid.number(), draft()));
  PartnerDocumentScreen::linesChanged();
}

/// What follows is a return of its own, where this one was to give back a whole document.
void TradingScreen::draftGone() {
  rules().forgetReturned(draft().number);
  draft().returnOf.clear();
  draft().settledBefore.reset();
  partner.setReadOnly(false);
}

WaitingFilter TradingScreen::waitingFilter() {
  WaitingFilter filter = PartnerDocumentScreen::waitingFilter();
  if (auto* wanted = optional("tGhsName")) filter.partner = wanted->key();
  return filter;
}

void TradingScreen::showAllWaiting() {
  if (auto* wanted = optional("tGhsName"))
    wanted->setPicked({QString::fromUtf16(trading_screen_detail::kAllCustomers), {}});
  PartnerDocumentScreen::showAllWaiting();
}

void TradingScreen::auditWaiting(const QString& number) {
  ui::screenAs<AuditScreen>(trading_.document.auditScreen).audit(number);
}

void TradingScreen::returnWhole() {
  if (!settleDate()) return;
  const QString noun = QString::fromUtf16(partnerSide(rules().family().side).noun);
  if (refused({{!gridLines.isEmpty(), u"请先保存本次的退货单据！"_qs},
               {partner.key().isEmpty(), u"请选择%1！"_qs.arg(noun)},
               {comCk.items().empty(), u"请选择仓库！"_qs},
               {comUser.items().empty(), u"请选择经办人！"_qs}},
              prompt()))
    return;
  const QString source = trading_.pickReturned();
  if (source.isEmpty()) return;
  collect();
  if (const auto whole = rules().returnWhole(source, draft(), prompt())) {
    draft() = *whole;
    showDraft();
  }
}

bool TradingScreen::returnDocument(const QString& source, Prompt& asked) {
  if (refused({{!unsavedDraft(rules().family()).isEmpty(), u"请先保存本次的退货单据！"_qs}}, asked)) return false;
  prepared_ = rules().returnWhole(source, rules().fresh({}), asked);
  if (!prepared_) return false;
  showModal();
  return true;
}

void TradingScreen::openIn(const QString& warehouse) {
  opensIn_ = warehouse;
  showModal();
}

void TradingScreen::beginDraft(const QString& lastDate) {
  const QString asked = std::exchange(opensIn_, {});
  isPrepared_ = prepared_.has_value();
  if (isPrepared_) {
    draft() = *std::exchange(prepared_, std::nullopt);
    return;
  }
  PartnerDocumentScreen::beginDraft(lastDate);
  // One that was added for a document which was never saved: the program ended in between.
  if (strIsTrue(session().cs_ht)) draft().contract = contract_ties::addedForDraft(rules().family());
  if (!asked.isEmpty()) draft().warehouse = asked;
}

/// What was made ready has its lines already: it is not one that was cut off.
QString TradingScreen::findUnsaved() const {
  return isPrepared_ ? QString() : PartnerDocumentScreen::findUnsaved();
}

// ---- the contract ------------------------------------------------------------------------------------------------

void TradingScreen::draftInSight(bool isIn) {
  PartnerDocumentScreen::draftInSight(isIn);
  if (hasCommand("btnHt")) command("btnHt").setVisible(isIn && strIsTrue(session().cs_ht));
}

void TradingScreen::showContract() {
  if (auto* input = optional("tht")) input->setText(contract_ties::shown(draft().contract));
}

void TradingScreen::takeContract(const QString& contract) {
  const QString before = std::exchange(draft().contract, contract);
  if (before != contract) contracts::dropAdded(before);
  showContract();
}

void TradingScreen::partnerTaken() {
  const QString contract = draft().contract;
  if (contract_ties::against(rules().family(), contract, partner.key())) {
    say(u"合同 %1 不是与该单位签订的，已从本单取下"_qs.arg(contract_ties::shown(contract)));
    takeContract({});
  }
  partnerChanged();
}

void TradingScreen::chooseContract() {
  const PartnerSide& side = partnerSide(rules().family().side);
  if (refused({{partner.key().isEmpty(), u"请选择%1！"_qs.arg(words(side.noun)), Subject::Partner}}, prompt())) return;
  const QString before = draft().contract;
  const auto chosen = jxc::chooseContract({.side = &side, .partner = partner.key(), .contract = before});
  if (!chosen) return showContract();
  const bool goes = *chosen != before && contract_ties::isOfOwnDraft(before);
  if (goes && !prompt().ask(trading_screen_detail::goesQuestion(before, u"换下"_qs)))
    contracts::dropAdded(*chosen);
  else
    takeContract(*chosen);
}

void TradingScreen::chooseContractOfWaiting() {
  const QString number = waitingNumber();
  if (number.isEmpty()) return;
  const DocumentFamily& family = rules().family();
  const PartnerSide& side = partnerSide(family.side);
  const QString before = gridWaiting.currentText(family.contract);
  const auto chosen = jxc::chooseContract({.side = &side,
                                           .partner = gridWaiting.currentText(family.partner),
                                           .contract = before,
                                           .mayChange = trading_.document.make.isHeld()});
  if (!chosen || *chosen == before) return;
  const bool agreed =
      !contract_ties::isAdded(before) || prompt().ask(trading_screen_detail::goesQuestion(before, u"换下"_qs));
  const Refusal stands = agreed ? contract_ties::change(family, number, before, *chosen) : Refusal();
  if (!agreed || stands) contracts::dropAdded(*chosen);
  contracts::removeLeftFiles();
  isRefused(stands, prompt());
  refreshWaiting(number);
}

/// Without lines nobody has asked yet whether the draft may go.
bool TradingScreen::leavesContract() {
  const QString contract = draft().contract;
  return contract.isEmpty() || !gridLines.isEmpty() || !contract_ties::isOfOwnDraft(contract) ||
         prompt().ask(trading_screen_detail::goesQuestion(contract, u"离开"_qs));
}

bool TradingScreen::mayLeave() {
  if (!leavesContract() || !PartnerDocumentScreen::mayLeave()) return false;
  takeContract({});
  return true;
}

void TradingScreen::waitingGone() {
  contracts::removeLeftFiles();
}

bool TradingScreen::keyPressed(QKeyEvent& event) {
  if (event.key() != Qt::Key_F8 || !partner.hasFocus() || partner.isReadOnly())
    return PartnerDocumentScreen::keyPressed(event);
  if (!mayDo(trading_.newPartner)) return true;
  if (const auto added = trading_.addPartner()) {
    partner.setPicked(*added);
    partnerTaken();
  }
  return true;
}

}  // namespace jxc
