// 单据合同: what ties a receipt or a sale to its contract. The contracts themselves, with their files, are in accounts.
#pragma once

#include "core/refusal.h"
#include "stock/document_family.h"

#include <QString>

namespace jxc::contract_ties {

/// A new contract, and whether it was added for a document that this operator is making: then it goes with that
/// document when it is given up, and not as those that are picked. Inside the caller's transaction.
void markNew(const QString& contract, bool ofDocument);
/// Whether a contract goes with the document that it was added for.
bool isAdded(const QString& contract);
/// Whether this operator added it for a document that was not saved yet.
bool isOfOwnDraft(const QString& contract);
/// The contract that this operator added for a document of the family which was not saved yet; empty: none.
QString addedForDraft(const DocumentFamily& family);
/// Number and name, as a document shows its contract; empty when there is none of this number.
QString shown(const QString& contract);

/// Why a document of this partner cannot have the contract: another operator has deleted it, or it was made with
/// somebody else. One that this operator added for what he is making follows its partner.
Refusal against(const DocumentFamily& family, const QString& contract, const QString& partner);
/// A document is saved with this contract: the contract tells its partner and its number from now on. Of one that was
/// picked, whoever added it, nothing goes any more. Inside the caller's transaction.
void htLink(const QString& contract, const QString& partner, const QString& document);
/// A waiting document gets another contract, or none (empty), in place of the one that the operator saw: when it was
/// added, it goes. Its own transaction. Refused: it waits no longer or has another one meanwhile, its day is locked, or
/// what `against` says.
Refusal change(const DocumentFamily& family, const QString& document, const QString& seen, const QString& contract);

/// A waiting document goes: contracts that were picked stay and are tied to another document that has them, or to none;
/// one that was added for it goes with it. Inside the caller's transaction, before the head goes.
void documentGoes(const DocumentFamily& family, const QString& document);
/// The same for a waiting document that has got another partner: an added contract follows him.
void partnerChanged(const DocumentFamily& family, const QString& document, const QString& partner);

/// The document that a contract is tied to, as far as it stands; else another one that has it, or none.
QString standingDocument(const QString& contract);

/// A contract goes: row and mark, and its file is noted to be taken off the disk once that is kept. Inside the caller's
/// transaction.
void deleteContract(const QString& contract);
/// Notes the file of such a row of a contract. Nothing for an older row, whose file stays.
void leaveFile(const Row& contract);

}  // namespace jxc::contract_ties
