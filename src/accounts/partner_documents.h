// 应收应付单据: what is owed (应收款, 应付款) and what is paid (收款, 付款), entered by hand, audited into the ledgers.
#pragma once

#include "accounts/partner_ledger.h"
#include "core/prompt.h"
#include "core/reading.h"
#include "masterdata/partner_side.h"

#include <QString>

#include <cstdint>
#include <optional>

namespace jxc::partner_books {

/// Something owed raises a partner's balance, a payment lowers it.
enum class Kind : char { Due, Payment };

/// "应收款", "应付款", "收款", "付款".
QString wordOf(const PartnerSide& side, Kind kind);
/// "YS", "YF", "SK", "FK".
QString prefixOf(const PartnerSide& side, Kind kind);

/// The log of a command on a partner's money: "增加收款，客户：张三，金额：98".
void writePartnerLog(const PartnerSide& side, const QString& what, const QString& partner, double amount);
/// A note as it is stored, in its 200 characters.
QString cleanNote(const QString& typed);

struct Draft {
  std::int64_t id = 0;  // 0 for a new one
  QString number;       // of a document that stands already
  QString partner;      // kh_sn or ghs_sn
  QString date;         // "yyyy-MM-dd"
  double amount = 0;    // yuan; negative amounts are in order
  double rounding = 0;  // 抹零 of a payment: given up beyond what is paid
  QString account;      // of a payment: cash or bank account by name
  QString employee;     // u_sn
  QString note;
  QString settles;  // gl_djh2: the sale, purchase or return that a payment is made for
};

/// The partner must be chosen before a document is entered: "请选择客户！".
bool isPartnerChosen(const PartnerSide& side, const QString& partner, Prompt& prompt);
/// Number that a new document of this date would get.
QString previewNumber(const PartnerSide& side, Kind kind, const QString& date);

/// A document for changing. Nothing, after telling why, when it is audited, or when it is gone.
std::optional<Draft> openDocument(const PartnerSide& side, Kind kind, std::int64_t id, Prompt& prompt);
/// Saves a new or changed document; with cs_shdj on a new one is audited in the same go. A change keeps the number,
/// also on another day. Its number, or nothing when refused.
std::optional<QString> saveDocument(const PartnerSide& side, Kind kind, const Draft& draft, Prompt& prompt);
/// Behind the number of a payment that was just made: " 已审核" where saving audits, otherwise " 等待审核".
QString stateAfterSaving();
/// Appends a payment's document without questions, inside the caller's transaction; audits it when cs_shdj is on.
QString addPayment(const PartnerSide& side, const Draft& draft, const QString& kindText);

/// Audits without questions. False: it is audited already, or gone; nothing happened.
bool auditDocument(const PartnerSide& side, Kind kind, const QString& number);
bool checkSkDj(const QString& number);  // a customer's receipt
bool checkFkDj(const QString& number);  // a payment to a supplier
/// The same after asking.
bool auditOne(const PartnerSide& side, Kind kind, const QString& number, Prompt& prompt);
/// `auditEach` of the rows of a list (`id`, `gl_djh`, `k_check`) that wait; tells how many. False: the operator said
/// no.
bool auditAll(const PartnerSide& side, Kind kind, const RowSet& list, Prompt& prompt);

/// Takes an audit back: ledger lines, rounding line, stock-ledger line and cash line go. Asks.
bool unCheck(const PartnerSide& side, Kind kind, const QString& number, Prompt& prompt);

/// Deletes a waiting document. Asks. What a payment had added to its sale or purchase is taken off there.
bool deleteDocument(const PartnerSide& side, Kind kind, std::int64_t id, Prompt& prompt);

struct DocumentFilter {
  QString from, to;
  QString partner;  // empty: all
  QString key;      // part of number or note
};
/// The list of a screen: documents with `u_name` and `name` (the partner's), newest first.
Sql documentList(const PartnerSide& side, Kind kind, const DocumentFilter& filter);

}  // namespace jxc::partner_books
