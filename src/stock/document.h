// 单据生命周期: the life of a document: draft lines, number, save, waiting list, audit, shared by twelve families.
#pragma once

#include "core/list_audit.h"
#include "core/refusal.h"
#include "stock/document_family.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jxc {

class Ahead;

// ---- number of a document in the making --------------------------------------------------------------------------

/// Number that a new document of this date shows.
QString newDocumentNumber(const DocumentFamily& family, const QString& date);
/// Date that a new document shows: today, or that of the last document, by parameter.
QString newDocumentDate(const QString& lastDate);
/// Asks when `date` lies behind today. False: keep the previous date.
bool confirmDocumentDate(const QString& date, Prompt& prompt);
/// A new date takes a new number: this operator's draft lines move along. Returns the new number.
QString redateDraft(const DocumentFamily& family, const QString& number, const QString& date);
/// Number under which a line may be added now: `number`, or a fresh one when another operator took it meanwhile (this
/// operator's draft lines have moved to it then), or when the draft was saved at another station.
QString usableDraftNumber(const DocumentFamily& family, const QString& number, const QString& date);

// ---- draft lines: rows of the line table under number and operator, without a head -------------------------------

/// Whether this operator has saved the draft meanwhile, at another station: what stands under the number is no draft
/// any more, and nothing that is done with drafts touches it.
bool isDraftSaved(const DocumentFamily& family, const QString& number);
/// " and …": lines are a draft's while no head of the same operator stands over them. `lines` is what the statement
/// calls the table of lines.
std::string ofDraft(const DocumentFamily& family, std::string_view lines);
std::int64_t draftLineCount(const DocumentFamily& family, const QString& number);
/// Of them those of goods: the balancing line is none.
std::int64_t draftGoodsCount(const DocumentFamily& family, const QString& number);
/// Lines of the number whoever made them (a waiting document).
std::int64_t lineCount(const DocumentFamily& family, const QString& number);
Ahead askLineCount(const DocumentFamily& family, const QString& number);
/// True when this goods stands on the document already (draft lines of this operator only when `draft`).
bool goodsOnDocument(const DocumentFamily& family, const QString& number, const QString& goods, bool draft);
/// False: the line is gone, or its draft was saved at another station.
bool deleteDraftLine(const DocumentFamily& family, std::int64_t lineId);
/// Throws this operator's draft away.
void discardDraft(const DocumentFamily& family, const QString& number);

/// Leaving a screen with unsaved lines: asks "当前单据还未保存，是否保存？" and discards the draft on no. Yes: the
/// caller saves; Cancel: it stays. Without lines the answer is No without a question.
Answer leaveDraft(const DocumentFamily& family, const QString& number, Prompt& prompt);

// ---- save --------------------------------------------------------------------------------------------------------

/// What a command tells whose document another station has saved, audited, reopened or deleted while a question stood.
QString changedMeanwhile(const QString& number);
/// The draft has no goods to save: `text`, unless that is because it was saved at another station, which is told then.
Refusal withoutGoods(const DocumentFamily& family, const QString& number, const QString& text);

struct SaveRequest {
  QString number;
  QString date;
  QString warehouse = {};  // that goods leave; empty: stock is not tested again when it is audited at once
  /// What else may have come to stand against it while the question stood, asked inside the transaction; null: nothing.
  std::function<Refusal()> standsAgainst = {};
  /// Appends the head under this (perhaps renewed) number with status 0, and does what follows it.
  std::function<void(const QString& number)> writeHead;
};
struct SaveResult {
  bool saved = false;
  bool audited = false;
  QString number;  // under which it was saved
  explicit operator bool() const { return saved; }
};
/// Asks the family's question (by `cs_shdj` it will be audited at once or wait), renews a number that was taken, writes
/// the head, and audits or logs. One transaction. Refusals of the screen come before. Stock that went while the
/// question stood leaves the document saved, and its audit asks or refuses as any other. A draft that another station
/// has saved or emptied while the question stood is not saved.
SaveResult saveDocument(const DocumentFamily& family, const SaveRequest& request, Prompt& prompt);

// ---- waiting documents -------------------------------------------------------------------------------------------

/// The operator whose document waits under this number: lines that are added to it are his, whoever adds them. Of two
/// documents the own one; the current operator where none stands.
QString ownerOf(const DocumentFamily& family, const QString& number);
/// Recomputes due and paid of a waiting trading document from its lines: due without the balancing line, paid with it.
/// A document whose rest goes on account keeps its paid amount when it was typed. A bundle takes its unit cost anew.
/// A whole return keeps within what was paid for what it returns.
void refreshWaitingTotals(const DocumentFamily& family, const QString& number);
/// What a return proposes to pay of its due amount, when so much was paid for what it returns, in yuan: the rest stood
/// on account and goes back there. Of an exchange both may be negative.
double backAtMost(double due, double settled);
/// Yuan that were paid, at once and later, for the document that this saved return gives back as a whole; nothing when
/// it is no such return.
std::optional<double> settledBefore(const DocumentFamily& family, const QString& number);
/// Deletes one line; with the last line of goods goes the head. True: the whole document is gone.
bool deleteWaitingLine(const DocumentFamily& family, const QString& number, std::int64_t lineId, Prompt& prompt);
/// Asks, deletes head and lines, logs. False: refused, the operator said no, or it is audited or gone already.
bool deleteWaitingDocument(const DocumentFamily& family, const QString& number, Prompt& prompt);
/// The same without a question, inside the caller's transaction. False: it waits no longer.
bool removeWaiting(const DocumentFamily& family, const QString& number);
/// Change of head of a waiting document (needs the right to change dates). What is not set stays as it is.
struct HeadEdit {
  QString date;  // empty: as it is
  std::optional<QString> partner, warehouse, salesperson, invoiceNumber;
  std::optional<double> invoiceAmount, freight, packing;  // as the screen shows them, also on returns
  bool wePayFreight = false;                              // looked at when freight or packing is set
};
/// Rewrites the head, and the number when it is taken by another operator: the lines of the document's operator take it
/// along, and so does whatever remembers the document. A purchase return changes its
/// warehouse only to one that knows all its goods and, by parameter, has enough of them. The number that the document
/// has now; empty: refused, or it waits no longer.
QString changeWaitingHead(const DocumentFamily& family, const QString& number, const HeadEdit& edit, Prompt& prompt);
/// Moves a waiting document to another number: this head, its operator's lines, and what remembers the number. Two
/// documents that share the number: of what is remembered only what names this one's partner goes along.
enum class SharedNumber : char { No, Yes };
void renumberDocument(const DocumentFamily& family, std::int64_t headId, const QString& from, const QString& to,
                      SharedNumber shared);
/// Who pays freight, as heads store it: empty without any.
QString freightPayerText(double freight, double packing, bool wePay);
/// What it says of freight and packing that the shop pays.
inline constexpr QStringView wePayText = u"我方付运费";

// ---- audit -------------------------------------------------------------------------------------------------------

/// Asked before every audit and every cancel: why not on a document of this date. The lock of the books
/// (`core/period_lock.h`); what audits and cancels asks it once more inside its transaction.
Refusal auditGate(const QString& number, const QString& date);
Refusal cancelGate(const QString& number, const QString& date);
/// What stands against another line, or less of it, on a waiting document: its day is locked. It may be deleted whole,
/// or moved to a day that is open, and nothing else.
Refusal linesLocked(const DocumentFamily& family, const QString& number);

/// Settles heads that share a number (two operators saved at once): the first operator keeps it, the others get fresh
/// numbers for their dates with their lines; an audited head keeps it against all.
void claimNumber(const DocumentFamily& family, const QString& number);
/// The same by prefix: "CJ", "CT", "XS" or "XT".
void claimNumber(const QString& number, QStringView kind);

enum class AuditOutcome {
  Audited,
  NoLines,         // nothing happened
  AlreadyAudited,  // by someone else meanwhile; stray heads were removed
  Refused          // the operator said no, or stock is short
};
/// What an audit dialog changes on the head with this id before it is audited, in place of what audit itself derives.
using HeadChange = std::function<void(std::int64_t headId)>;
/// The audit itself, without a question, inside the caller's transaction: number settled, head audited, effects posted.
/// Throws PeriodLocked where its day is locked.
AuditOutcome auditInside(const DocumentFamily& family, const QString& number, const HeadChange& change = {});
/// Asks about short stock where the family tests it, then audits in one transaction; refuses when the stock fell short
/// while the question stood. The gate is asked along with what it reads first.
AuditOutcome auditAsking(const DocumentFamily& family, const QString& number, Prompt& prompt, const HeadChange& change);
/// Audits one document as it stands.
AuditOutcome checkDj(const DocumentFamily& family, const QString& number, Prompt& prompt);

/// `auditEach` of documents, each of the family that its number tells.
std::optional<int> auditAll(const std::vector<ListedDocument>& documents, Prompt& prompt,
                            const AuditProgress& progress = {});

/// Whether the operator has the right to cancel documents of the family.
bool mayCancel(const DocumentFamily& family);
/// Whether he may see what goods on such a document are worth: a price where they are sold, their cost elsewhere, also
/// where they are lent.
bool seesAmounts(const DocumentFamily& family);

}  // namespace jxc
