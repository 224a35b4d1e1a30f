#include "stock/screens/audit_screen.h"

#include "core/session.h"
#include "core/text.h"
#include "stock/screens/preview_screen.h"
#include "ui/known_parts.h"

#include <QLabel>

namespace jxc {
namespace audit_screen_detail {

constexpr std::string_view kParts[] = {"jsn",     "trq",     "tpartner", "tck",        "tuser", "tadmin",   "tyfje",
                                       "comJsfs", "comYhzh", "tnote",    "btnPreview", "btnOK", "btnCancel"};

}  // namespace audit_screen_detail

std::vector<ListItem> accountItems() {
  std::vector<ListItem> items;
  for (const Row row : openSelect("select yh_name from jxc_yhzh order by id"))
    items.push_back({row.text("yh_name"), row.text("yh_name")});
  return items;
}

std::vector<ListItem> settlementItems(std::u16string_view kind) {
  if (kind == u"ct") return {fillSettleModes({}).front(), {u"余款记入应付帐款"_qs, u"2"_qs}};
  if (kind == u"xt") return {{u"余款记入应收帐款"_qs, u"2"_qs}};
  return fillSettleModes(words(kind));
}

void showSettlement(ui::Field& field, Settlement settlement) {
  field.setKey(settlement == Settlement::RestOnAccount ? u"2"_qs : u"1"_qs);
}

Settlement chosenSettlement(const ui::Field& field) {
  return field.key() == u"2" ? Settlement::RestOnAccount : Settlement::AtPaidAmount;
}

AuditScreen::AuditScreen(const AuditScreenSpec& spec)
    : Screen(spec.screen),
      paid(field(spec.paid)),
      description_(spec),
      rules_(spec.rules()),
      difference_(new QLabel(this)) {
  difference_->setObjectName(QStringLiteral("lDifference"));
  difference_->setProperty("warning", true);  // where money goes that nobody paid is never said in grey
  const std::string_view own[] = {spec.paid};
  ui::refuseUnknownParts(spec.screen, {audit_screen_detail::kParts, own});
  const std::string amounts = "tyfje " + std::string(spec.paid);
  panel()
      .form({"jsn trq tadmin", "tpartner", "tck tuser", amounts, "comJsfs comYhzh", "tnote"})
      .widget(difference_)
      .buttons("btnPreview | btnOK btnCancel");
  // A balance of the year fits with its sign and the currency before it.
  auto* due = field("tyfje").widget();
  due->setMinimumWidth(due->fontMetrics().horizontalAdvance(u"-￥9,999,999,999,999.99 "_qs));
  tnote.onEnter([this] {
    saveCheckedValueTab2();
    return true;
  });
  paid.onChanged([this] { showDifference(); });
  comJsfs.onChanged([this] { showDifference(); });
  on(btnOK, [this] { saveCheckedValueTab2(); });
  on(command("btnPreview"), [this] {
    collect();
    showWhatIf(u"审核单据"_qs + draft_.number, draft_.number,
               [this](Prompt& agreeing) { return rules_.audit(draft_, agreeing) == AuditOutcome::Audited; });
  });
}

bool AuditScreen::audit(const QString& number) {
  const std::optional<AuditDraft> waiting = rules_.loadForAudit(number);
  if (!waiting) return false;
  draft_ = *waiting;
  return showModal();
}

void AuditScreen::activate() {
  comJsfs.setItems(settlementItems(description_.settleKind));
  comYhzh.setItems(accountItems());
  field("jsn").setText(draft_.number);
  field("trq").setText(draft_.date);
  field("tpartner").setText(draft_.partnerName);
  field("tck").setText(draft_.warehouseName);
  field("tuser").setText(draft_.salespersonName);
  field("tadmin").setText(draft_.operatorName);
  field("tyfje").setNumber(draft_.payable);
  paid.setNumber(draft_.paid);
  showSettlement(comJsfs, draft_.settlement);
  comYhzh.setKey(draft_.account);
  comYhzh.setVisible(strIsTrue(session().cs_xjyh));
  tnote.setText(draft_.note);
  showDifference();
}

void AuditScreen::collect() {
  draft_.paid = paid.number();
  draft_.settlement = chosenSettlement(comJsfs);
  if (comYhzh.index() >= 0) draft_.account = comYhzh.text();
  draft_.note = tnote.text();
}

void AuditScreen::showDifference() {
  AuditDraft typed = draft_;
  typed.paid = paid.number();
  typed.settlement = chosenSettlement(comJsfs);
  difference_->setText(rules_.differenceText(typed));
}

void AuditScreen::saveCheckedValueTab2() {
  collect();
  const AuditOutcome outcome = rules_.audit(draft_, prompt());
  if (outcome != AuditOutcome::Refused) accept();
}

}  // namespace jxc
