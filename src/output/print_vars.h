// 打印变量: what a document's paper says besides its lines: company, partner, people, amounts, balances.
#pragma once

#include "platform/report/report.h"

#include <QString>
#include <QStringView>

namespace jxc {

struct DocumentDraft;
struct DraftOfPartner;
struct TradingDraft;
struct ConversionDraft;
struct ConversionFigures;
struct DocumentFamily;

/// An amount of yuan as documents print it: "1234.50", and below one yuan without a leading zero, ".50".
QString printedMoney(double amount);
/// The same amount in capitals, cut to fen like the digits beside it.
QString printedCapitals(double amount);

/// comName, comTele, comLxr, comAddress: the company that every paper names.
void setCompanyVars(report::Report& report);

/// Sets the variables of a saved document: the company, and what the kind has: `cgjh`, `cgth`, `spxs`, `xsth`, `xshh`,
/// `kcdb`, `cgd`, `spdd`, `spcf`, `spkb`, `spbs`, `spby`, `kcpd`, `khjh`. Of another kind, and of a document that is
/// not there, only the company; templates print the rest empty. `djh` is the number. `seesCost` is 1 when the role sees
/// cost: forms that have no other one without it leave their costs out by this.
void fillPrintVars(report::Report& report, const QString& number, QStringView kind);

/// The same for a document that stands on the screen and was not saved: from its inputs.
void fillDraftVars(report::Report& report, const DocumentDraft& draft, const DocumentFamily& family);
void fillDraftVars(report::Report& report, const DraftOfPartner& draft, const DocumentFamily& family);
void fillDraftVars(report::Report& report, const TradingDraft& draft, const DocumentFamily& family);
void fillDraftVars(report::Report& report, const ConversionDraft& draft, const ConversionFigures& figures,
                   const DocumentFamily& family);

}  // namespace jxc
