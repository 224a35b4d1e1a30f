#include "stock/screens/partial_screen.h"

#include "accounts/partner_ledger.h"
#include "core/text.h"
#include "stock/partial_rest.h"
#include "ui/enquiry_screen.h"
#include "ui/grid_output.h"

namespace jxc {
namespace partial_screen_detail {

std::vector<std::string_view> partsOf(const PartialScreenSpec& spec) {
  return {spec.partner.name, "tOpenKey", "btnOpenSearch", "gridSources", "gridOpen",
          "btn_Zdrk4",       "btn_Qxck", "btn_Ckyd",      "btn_Jhd"};
}

}  // namespace partial_screen_detail

PartialScreen::PartialScreen(const PartialScreenSpec& spec)
    : PartnerDocumentScreen(spec.document, spec.rules(), spec.partner, partial_screen_detail::partsOf(spec)),
      make_(spec.document.make) {
  field("tOpenKey").onEnter([this] {
    showOpen();
    return true;
  });
  on(command("btnOpenSearch"), [this] { showOpen(); });
  on(command("btn_Zdrk4"), [this] { takeWhole(); });
  on(command("btn_Qxck"), [this] { closeRest(); });
  on(command("btn_Ckyd"), [this] { ui::enquiryServices().openDocument(currentSource(), *this); });
  on(command("btn_Jhd"), [this] { ui::printGrid(gridOpen); });
  gridSources.onCurrentChanged([this] { showOpenLines(); });
  gridSources.onActivated([this] { takeWhole(); });
  gridSources.setMayTakeOut([] { return true; });
  gridOpen.setMayTakeOut([] { return true; });
  gridOpen.setHeading([this] {
    const Row row = *gridSources.current();
    return ui::GridHeading{u"拣货单-"_qs + row.text("djh"), row.text("partner_name") + u"　"_qs + row.text("ck_name") +
                                                                u"　"_qs + row.text("rq").left(10)};
  });
}

// ---- the document ------------------------------------------------------------------------------------------------

/// Lines are parts of documents of one partner and one warehouse: these stay once lines stand. Whoever scans need not
/// choose them: the goods tell.
void PartialScreen::linesChanged() {
  PartnerDocumentScreen::linesChanged();
  if (!gridLines.isEmpty() && partner.key().isEmpty()) {
    rules().followLines(draft());
    showPartner();
    comCk.setKey(draft().warehouse);
  }
  partner.setReadOnly(!gridLines.isEmpty());
  comCk.setReadOnly(!gridLines.isEmpty());
}

void PartialScreen::addOld() {
  const QString noun = words(partnerOf(rules().family()).noun);
  if (refused({{partner.key().isEmpty(), u"请选择%1！"_qs.arg(noun), Subject::Partner}}, prompt())) return;
  PartnerDocumentScreen::addOld();
}

// ---- what is still open ------------------------------------------------------------------------------------------

void PartialScreen::showOpen() {
  const QString current = currentSource();
  gridSources.readNow(partial::waitingSources(rules().movement(), {.key = field("tOpenKey").trimmed()}));
  for (const Row row : gridSources.rows())
    if (row.text("djh") == current) gridSources.selectId(row.integer("id"));
  showOpenLines();
  gridSources.focusRows();
}

void PartialScreen::showOpenLines() {
  const QString source = currentSource();
  if (source.isEmpty())
    gridOpen.clearRows();
  else
    gridOpen.readNow(partial::openLines(rules().movement(), {.source = source}));
  for (const char* name : {"btn_Zdrk4", "btn_Qxck", "btn_Ckyd", "btn_Jhd"})
    command(name).setEnabled(!source.isEmpty());
}

void PartialScreen::takeWhole() {
  if (currentSource().isEmpty() || !mayDo(make_) || !settleDate()) return;
  collect();
  if (const auto whole = rules().takeWhole(currentSource(), draft(), prompt())) {
    draft() = *whole;
    showNewDraft();
  }
}

void PartialScreen::closeRest() {
  const QString source = currentSource();
  if (source.isEmpty()) return;
  const auto number = partial::closeRest(rules().movement(), source, prompt());
  showOpen();
  if (number) say(u"已生成并审核退货单 %1"_qs.arg(*number));
}

}  // namespace jxc
