#include "core/session.h"

#include "core/build_info.h"
#include "core/clock.h"
#include "core/rights.h"
#include "core/session_fields.h"
#include "core/statements.h"
#include "core/template_names.h"
#include "core/text.h"

namespace jxc::session_detail {

/// Copies the first row; without a row all of these fields become empty, so that nothing of another set stays behind.
void copyFields(const RowSet& rows, std::span<const SessionField> fields) {
  Session& s = session();
  for (const SessionField& field : fields)
    s.*field.member = rows.isEmpty() ? QString() : rows.front().text(field.name);
}

bool areDigits(const QString& text) {
  bool isNumber = false;
  const int digits = text.toInt(&isNumber);
  return isNumber && digits >= 0 && digits <= 6;
}

/// Decimals that an account set can work with: two when the parameter is empty or beyond what a column can hold.
int digitsOf(const QString& text) {
  return areDigits(text) ? text.toInt() : 2;
}

void normaliseParameters() {
  Session& s = session();
  if (s.cs_zdzk.isEmpty()) s.cs_zdzk = QStringLiteral("0");
  s.xswsDigits = digitsOf(s.cs_xsws);
  s.cs_xsws = QString::number(s.xswsDigits);
  s.cbjsDigits = digitsOf(s.cs_cbjs);
  s.cs_cbjs = QString::number(s.cbjsDigits);
  s.jewsDigits = digitsOf(s.cs_jews);
  // Totals keep the money decimals unless decimals of their own are switched on. They take the figure after its
  // correction: a total must never have other decimals than the amounts it sums because of a spoilt parameter.
  if (!strIsTrue(s.cs_zjews)) s.jewsDigits = s.xswsDigits;
  s.cs_jews = QString::number(s.jewsDigits);
  if (s.cs_djrq.isEmpty()) s.cs_djrq = QStringLiteral("0");
  // The index of the choice becomes the speed itself: this is what the display port is opened with.
  s.cs_cs004 = s.cs_cs004 == u"0" ? QStringLiteral("2400") : QStringLiteral("9600");
}

void cacheRights() {
  Session& s = session();
  s.canSeeCost = hasRight("qtcz", 7);
  s.canChangeDocDate = hasRight("qtcz", 8);
  s.canQtcz21 = hasRight("qtcz", 21);
  s.canSeePrice = hasRight("qtcz", 9);
  s.canChangeSaleCost = hasRight("xsgl", 14);
}

QString normalisedFlag(const QString& text) {
  return text == u"True" ? QStringLiteral("1") : text;
}

void readBackupSettings() {
  Session& s = session();
  const RowSet rows = openSelect("select * from jxc_backup");
  s.back_sj = rows.isEmpty() ? 0 : static_cast<int>(rows.front().integer("back_sj"));
  s.back_auto = rows.isEmpty() ? QString() : normalisedFlag(rows.front().text("back_auto"));
  s.back_exit = rows.isEmpty() ? QString() : normalisedFlag(rows.front().text("back_exit"));
}

/// Compared as text: days of the month are kept as two digits, days as "yyyy-MM-dd".
bool isMemberDay(const PointsRules& rules) {
  if (rules.jf_hyr == u"1") {
    const QString day = clock::now().date().toString(QStringLiteral("dd"));
    return day >= rules.jf_hyrmy1 && day <= rules.jf_hyrmy2;
  }
  if (rules.jf_hyr == u"2") return clock::today() >= rules.jf_hyr1 && clock::today() <= rules.jf_hyr2;
  return false;
}

void readMailState() {
  Session& s = session();
  s.mailDue = QStringLiteral("0");
  const RowSet rows = openSelect("select e_send,e_date from jxc_email");
  if (rows.isEmpty()) return;
  if (strIsTrue(rows.front().text("e_send")) && rows.front().text("e_date") < clock::today())
    s.mailDue = QStringLiteral("1");
}

}  // namespace jxc::session_detail

namespace jxc {

Session& session() {
  static Session theSession;
  return theSession;
}

bool isAdministrator() {
  return session().r_sn == QStringView(builtInSn);
}

bool isWarehouseBound() {
  return session().cs_cgyh == u"1" && !isAdministrator();
}

bool areListsBound() {
  return strIsTrue(session().cs_shtc) && !isAdministrator();
}

void chooseTemplates(Session& s) {
  // Who may not see prices prints none, whatever else is set.
  const QString sales = !s.canSeePrice ? QStringLiteral("4") : strIsTrue(s.cs_lsj) ? QStringLiteral("2") : QString();
  const QString purchase = s.canSeeCost ? QString() : QStringLiteral("2");
  s.salesTemplate = QStringLiteral("spxs%1.fr3").arg(sales);
  s.salesReturnTemplate = QStringLiteral("xsth%1.fr3").arg(sales);
  // The amounts of a transfer go by its sale prices where they did when it was made, whatever the parameter says by
  // now.
  s.transferTemplate = !s.canSeePrice      ? QStringLiteral("kcdbd3.fr3")
                       : s.cs_dbdj == u"1" ? QStringLiteral("kcdbd2.fr3")
                                           : QStringLiteral("kcdbd.fr3");
  s.purchaseTemplate = QStringLiteral("cgjh%1.fr3").arg(purchase);
  s.purchaseReturnTemplate = QStringLiteral("cgth%1.fr3").arg(purchase);
}

void readParameters(Database& from) {
  session_detail::copyFields(from.select("select * from jxc_xtcs"), parameterFields());
  session_detail::normaliseParameters();
}

void loadSession() {
  Session& s = session();
  s.accountName = QString::fromUtf16(build::accountName);
  session_detail::copyFields(openSelect("select * from jxc_company"), companyFields());
  session_detail::copyFields(openSelect("select * from jxc_xtcs"), parameterFields());
  session_detail::normaliseParameters();
  session_detail::cacheRights();
  chooseTemplates(s);
  session_detail::readBackupSettings();
  s.memberDayActive.clear();
  session_detail::copyFields(openSelect("select * from jxc_jfsz"), pointsFields());
  if (session_detail::isMemberDay(s)) s.memberDayActive = QStringLiteral("1");
  session_detail::copyFields(openSelect("select * from jxc_smscs"), smsFields());
  session_detail::readMailState();
}

}  // namespace jxc
