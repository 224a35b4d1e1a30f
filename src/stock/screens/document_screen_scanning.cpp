// 单据扫码: the barcode input of the first panel: codes of a scanner, and goods that a hand looks for.
#include "core/refusal.h"
#include "core/rights.h"
#include "core/text.h"
#include "masterdata/screens/goods_columns.h"
#include "stock/screens/document_screen.h"
#include "ui/display.h"
#include "ui/scan_catcher.h"
#include "ui/search_drop.h"

#include <QLabel>
#include <QMenu>

namespace jxc {
namespace document_screen_scanning_detail {

bool isBarcode(const QString& code) {
  return !lookupValue("select top 1 g_sn from jxc_goods where g_sptm=?", sanitizeText(code)).isEmpty();
}

constexpr ui::GridSpec kFoundGoods = {
    .name = "gridFound", .caption = "找到的商品", .columns = goodsToPick, .empty = "没有符合的商品"};

}  // namespace document_screen_scanning_detail

void DocumentScreen::addScanner() {
  auto& scan = field("tSptm");
  scan.onEnter([this, &scan] {
    if (scan.isEmpty()) {
      scanDone();
    } else {
      enterTyped(scan.trimmed());
    }
    return true;
  });
  scans_ = new ui::ScanCatcher(
      *this, *scan.widget(),
      {.isKnown = document_screen_scanning_detail::isBarcode,
       .scanned = [this](const QString& code) { enterBarcode(code); },
       // While a document is saved its number is on the way out: the code belongs to the next one.
       .isFree = [this] { return !saving_; },
       .watchesToo = [this](const QWidget& window) { return window.objectName() == ui::qs(description_.lineScreen); }});
  addScanOptions();
  if (description_.findsGoods) addGoodsSearch();
}

void DocumentScreen::addGoodsSearch() {
  using namespace document_screen_scanning_detail;
  auto& input = field("tSptm");
  input.setMaxLength(64);
  input.widget()->setToolTip(u"扫描条码，或输入编号、名称、简码、光度查找商品"_qs);
  found_ = new ui::SearchDrop(input, kFoundGoods, [this](const QString& typed) {
    return draftRules().lines().goodsToPick(draftPlace(), {.key = typed});
  });
  found_->onTaken([this](const Row& goods) { takeFound(goods); });
}

void DocumentScreen::addScanOptions() {
  auto* menu = new QMenu(this);
  const auto option = [&](const char* name, const QString& text) {
    auto* action = menu->addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    action->setCheckable(true);
    return action;
  };
  onceOnly_ = option("btnPanelAdd", u"同一条码不能重复添加商品(&Y)"_qs);
  thenModify_ = option("btnPanelModi", u"添加完商品后打开修改窗口(&Z)"_qs);
  auto* hide = option("btnPanelHide", u"隐藏条码输入面板(&X)"_qs);
  connect(hide, &QAction::toggled, this, [this](bool hidden) {
    field("tSptm").setVisible(!hidden);
    focusDraft();
  });
  command("btnPanel").setMenu(menu);
}

/// As the line stands now: it may have been changed by hand since, or be gone.
void DocumentScreen::showScanned() {
  if (!scanned_) return;
  for (const Row row : gridLines.rows()) {
    if (row.integer("id") != scannedLine_) continue;
    scanned_->setText(row.text(draftFamily().line.columns->quantity) + row.text("dw_name") + u"　"_qs +
                      row.text("g_name") + u' ' + row.text("gg_name") + u' ' + row.text("color_name"));
    return scanned_->show();
  }
  scanned_->hide();
}

void DocumentScreen::enterBarcode(const QString& code) {
  field("tSptm").clear();
  if (!turnToDraft() || !settleDate()) return;
  const ScanResult scanned = draftRules().lines().enterBarcode(draftPlace(), code, onceOnly_->isChecked(), prompt());
  unknownCode_.clear();
  focusDraft();
  if (scanned.outcome == Scan::NotFound && scanned.refusal) return tellNotFound(code, scanned);
  showEntered(scanned);
}

/// A notice and no more: the focus is in the input already, and led there once more behind the notice it would mark
/// what the next code has typed meanwhile.
void DocumentScreen::showEntered(const ScanResult& entered) {
  if (entered.refusal) return prompt().notice(entered.refusal.text);
  if (entered.id == 0) return;  // the operator said no
  setNumber(entered.number);
  scannedLine_ = entered.id;
  reloadLines(entered.id);
  if (thenModify_->isChecked()) modifyLine();
}

/// Names the code: among many that come one behind the other somebody has to find the one. A notice, no question: the
/// next code waits for nobody.
void DocumentScreen::tellNotFound(const QString& code, const ScanResult& scanned) {
  QString text = scanned.refusal.text + u"\r\n\r\n条码："_qs + code;
  const Right& right = description_.newGoods.right;
  if (!scanned.unknown) {
    text += u"\r\n\r\n商品："_qs +
            lookupValue("select top 1 g_name from jxc_goods where g_sptm=? order by g_sn", sanitizeText(code));
  } else if (description_.addGoods && hasRight(right.group, right.position)) {
    unknownCode_ = code;
    text += u"\r\n\r\n按“%1”，可以用这个条码增加新商品。"_qs.arg(command("btnAddNew").text());
  }
  prompt().notice(text);
}

/// A code that was scanned, or typed as it stands on the goods, is one; whatever else a hand typed looks for goods.
void DocumentScreen::enterTyped(const QString& typed) {
  if (!found_ || scans_->isScanned() || document_screen_scanning_detail::isBarcode(typed)) {
    if (found_) found_->close();
    return scans_->take(typed);
  }
  if (const auto goods = found_->enter()) return takeFound(*goods);
  if (found_->isOpen()) return field("tSptm").focus();  // marked: the next code takes its place
  scans_->take(typed);                                  // refused as a code that nobody knows
}

void DocumentScreen::takeFound(const Row& goods) {
  const QString number = goods.text("g_sn");
  found_->close();
  field("tSptm").clear();
  if (!settleDate()) return;
  const ScanResult entered = draftRules().lines().enterGoods(draftPlace(), number, onceOnly_->isChecked(), prompt());
  focusDraft();
  showEntered(entered);
}

}  // namespace jxc
