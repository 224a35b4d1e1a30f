// 发票: what customers are still to be invoiced for, and what suppliers still owe an invoice for. Lines come from
// audited sales and purchases, where the invoice is registered, or are entered by hand.
#pragma once

#include "accounts/partner_overview.h"
#include "core/enquiry.h"
#include "core/prompt.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc::invoices {

/// Beginning of the numbers of invoices entered by hand: "XP" to customers, "CP" from suppliers.
QString handPrefix(const PartnerSide& side);

/// An invoice entered by hand: it lowers what is still to invoice, and belongs to no document.
struct Draft {
  std::int64_t id = 0;  // 0 for a new one
  QString number;       // of one that stands already
  QString partner;      // kh_sn or ghs_sn
  QString date;         // "yyyy-MM-dd"
  double amount = 0;    // yuan; below zero is an invoice in red
  QString invoice;      // number printed on the invoice
  QString employee;     // u_sn
  QString note;
  QString shown = {};  // what stood in the line when it was opened: what others wrote since is not overwritten unseen
};

/// Number that a new invoice of this date would get.
QString previewNumber(const PartnerSide& side, const QString& date);

/// A line of the list as a command finds it. Opening rows have no number.
struct Line {
  std::int64_t id = 0;
  QString number;  // gl_djh
};

/// An invoice for changing. Nothing, after telling why, when it was not entered by hand.
std::optional<Draft> openInvoice(const PartnerSide& side, const Line& line, Prompt& prompt);
/// Saves a new or changed one; with cs_shdj on a new one is audited in the same go. A change keeps the number, also on
/// another day, and whether it counts. Its number, or nothing when refused.
std::optional<QString> saveInvoice(const PartnerSide& side, const Draft& draft, Prompt& prompt);
/// Deletes one that was entered by hand, audited or not. Asks.
bool deleteInvoice(const PartnerSide& side, const Line& line, Prompt& prompt);

/// What the form of registration shows of a sale or purchase. Amounts are yuan.
struct Registration {
  Line line;
  QString partner, partnerName;
  double due = 0, invoiced = 0;  // of the document: to invoice, and invoiced so far
  double amount = 0;             // invoiced from now on: replaces what was invoiced so far
  QString invoice, date, employee, note;
  QString shown = {};  // what stood in the line, as in a draft
};
/// The form's content, with what is invoiced so far; nothing after telling why, or when the operator does not want to
/// go on with one that has an invoice.
std::optional<Registration> openRegistration(const PartnerSide& side, const Line& line, Prompt& prompt);
/// Writes it to the document's line. False when refused; what another operator has written there meanwhile is never
/// overwritten unseen. What was invoiced in locked days may grow from an open day on, and nothing else.
bool registerInvoice(const PartnerSide& side, const Registration& typed, Prompt& prompt);

/// Audits without questions: the line counts from its day on. False: it does already, or is gone.
bool checkDj(const PartnerSide& side, std::int64_t id);
/// The same after asking. A line of a locked day is asked about with today's date, from which on it counts then:
/// nothing else could ever take it back into the balance.
bool auditOne(const PartnerSide& side, const Line& line, Prompt& prompt);
/// `auditEach` of the rows that wait among those that are asked for. Whether anything may have changed.
bool auditAll(const PartnerSide& side, const Criteria& criteria, Prompt& prompt);

/// Takes a line out of the balance: it waits among the unaudited ones until it is audited again. Asks.
bool exclude(const PartnerSide& side, const Line& line, Prompt& prompt);

/// Kinds of lines that the list shows.
inline constexpr const char16_t* kAudited = u"1";
inline constexpr const char16_t* kWaiting = u"0";
/// Lines of the chosen kind (`Criteria::kind`): those that count with opening rows and balances, or those that wait.
Sql invoiceLines(const PartnerSide& side, const Criteria& criteria);

}  // namespace jxc::invoices
